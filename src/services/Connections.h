#pragma once

#include <QCoroTask>
#include <QDateTime>
#include <QJsonValue>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"
#include "desktop/Capability.h"
#include "services/GeocodeCache.h"
#include "services/RemoteReading.h"
#include "services/oauth/OAuthSignIn.h"

namespace tarnwick {

class PerplexityUsage;

/// What tiles, panels, forms and Settings ask about the services that widgets are connected to. By default no widget
/// has a value and no credential can be kept. What is awaited may outlive this; it throws DomainError with a finished
/// sentence, and Cancelled once its `stop` is requested. Main thread only.
class Connections : public QObject {
  Q_OBJECT
 public:
  /// Places that are offered while one is typed.
  static constexpr int kMostPlaces = 8;

  /// What is painted of a widget's value; absent where it was never fetched. To fetch it anew, ask the store.
  virtual std::optional<RemoteReading> reading(QUuid /*widget*/) const { return std::nullopt; }
  /// When it is refreshed by itself the next time, about; absent where nothing is planned.
  virtual std::optional<QDateTime> nextRefresh(QUuid /*widget*/) const { return std::nullopt; }
  /// The widgets on docks that somebody can see. Until this is told, all are.
  virtual void setSeen(const QSet<QUuid>& /*widgets*/) {}

  /// Whether credentials can be kept; otherwise a sentence that says what to install.
  virtual QCoro::Task<Capability> keepsCredentials() const;
  /// Whether one is kept for a widget at the host of its `endpoint`. Never asks the user.
  virtual QCoro::Task<bool> hasCredential(DockWidget widget, std::stop_token stop) const;
  /// Keeps one, because the user pressed a button: they may be asked to unlock the keyring. An empty one removes it.
  virtual QCoro::Task<> saveCredential(DockWidget widget, QString value, std::stop_token stop);
  /// Removes it, and then forgets what the service gave for it, because the user pressed a button: they may be asked to
  /// unlock the keyring.
  virtual QCoro::Task<> removeCredential(DockWidget widget, std::stop_token stop);
  /// Asks the user to unlock the keyring where it is locked, because they pressed a button that connects a widget.
  virtual QCoro::Task<> unlock(std::stop_token stop);

  /// The sign-in that is kept for a widget.
  struct SignedIn {
    QString clientID;
    bool hasSecret = false;
  };
  /// Absent where none is. Never asks the user.
  virtual QCoro::Task<std::optional<SignedIn>> signedIn(DockWidget widget, std::stop_token stop) const;
  /// Signs in to the service of a widget with the client of the user, and keeps that, because they pressed a button:
  /// they may be asked to unlock the keyring. Without a secret that of the same client is used which is kept. Gives the
  /// sentence of a keyring that does not take it, which then is used as long as the program runs; else nothing.
  virtual QCoro::Task<QString> signIn(DockWidget widget, QString clientID, std::optional<QString> secret,
                                      OAuthVisit visit, std::stop_token stop);

  /// What a widget would show, without keeping anything. `credential` is what is typed; absent, the one that is kept
  /// for this widget and this host is used, and none where there is none.
  virtual QCoro::Task<RemoteValue> attempt(DockWidget widget, std::optional<QString> credential, std::stop_token stop);
  /// The whole answer of an address of the user's own, to choose a field from. `credential` as above.
  virtual QCoro::Task<QJsonValue> answer(DockWidget widget, std::optional<QString> credential, std::stop_token stop);

  /// The user's own session at Perplexity; null where there is none to be had.
  virtual PerplexityUsage* perplexity() const { return nullptr; }

  /// Asks of a widget's service what its panel offers besides its values (ProviderAction), once and because the user
  /// pressed a button. `text` is what they entered for that. Gives what is to be shown of it, perhaps nothing.
  virtual QCoro::Task<QString> act(DockWidget widget, QString text, std::stop_token stop);

  /// The places whose names begin like this, the likeliest first, kMostPlaces at most.
  virtual QCoro::Task<QList<GeocodeCache::Place>> places(QString name, std::stop_token stop);

 Q_SIGNALS:
  /// What reading() gives of this widget is another.
  void changed(QUuid widget);
};

}  // namespace tarnwick
