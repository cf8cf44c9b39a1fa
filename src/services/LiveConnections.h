#pragma once

#include "services/Connections.h"
#include "services/Keychain.h"
#include "services/RemoteValues.h"
#include "services/WidgetLoader.h"
#include "services/oauth/OAuthTokens.h"

namespace tarnwick {

/// The connections of the running program.
class LiveConnections final : public Connections {
  Q_OBJECT
 public:
  struct Setup {
    Scheduler& scheduler;
    SessionEvents& events;
    NetworkReach& network;
    std::shared_ptr<ServiceSession> session;
    Keychain keychain;
    OAuthTokens tokens;  ///< Those of the session.
    MakeLoopbackServer loopback;
    WidgetLoader loader;
    std::shared_ptr<PerplexityUsage> perplexity;  ///< May be null.
    QString cacheFile;                            ///< Where headlines are kept from one run to the next.
  };
  /// What is referred to must outlive it.
  explicit LiveConnections(Setup setup);

  /// What the store drives.
  RemoteValues& values() { return values_; }

  std::optional<RemoteReading> reading(QUuid widget) const override { return values_.reading(widget); }
  std::optional<QDateTime> nextRefresh(QUuid widget) const override { return values_.nextRefresh(widget); }
  void setSeen(const QSet<QUuid>& widgets) override { values_.setSeen(widgets); }
  QCoro::Task<Capability> keepsCredentials() const override { return keychain_.capability(); }
  QCoro::Task<bool> hasCredential(DockWidget widget, std::stop_token stop) const override;
  QCoro::Task<> saveCredential(DockWidget widget, QString value, std::stop_token stop) override;
  QCoro::Task<> removeCredential(DockWidget widget, std::stop_token stop) override;
  QCoro::Task<> unlock(std::stop_token stop) override { return keychain_.unlock(stop); }
  QCoro::Task<std::optional<SignedIn>> signedIn(DockWidget widget, std::stop_token stop) const override;
  QCoro::Task<QString> signIn(DockWidget widget, QString clientID, std::optional<QString> secret, OAuthVisit visit,
                              std::stop_token stop) override;
  QCoro::Task<RemoteValue> attempt(DockWidget widget, std::optional<QString> credential, std::stop_token stop) override;
  QCoro::Task<QJsonValue> answer(DockWidget widget, std::optional<QString> credential, std::stop_token stop) override;
  PerplexityUsage* perplexity() const override { return perplexity_.get(); }
  QCoro::Task<QString> act(DockWidget widget, QString text, std::stop_token stop) override;
  QCoro::Task<QList<GeocodeCache::Place>> places(QString name, std::stop_token stop) override;

 private:
  std::shared_ptr<ServiceSession> sessionWith(const std::optional<QString>& credential) const;

  std::shared_ptr<ServiceSession> session_;
  Keychain keychain_;
  OAuthTokens tokens_;
  OAuthSignIn signIn_;
  WidgetLoader loader_;
  std::shared_ptr<PerplexityUsage> perplexity_;
  RemoteValues values_;
};

}  // namespace tarnwick
