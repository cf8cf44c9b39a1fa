#pragma once

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <optional>
#include <stop_token>

#include "base/OneShotEvent.h"
#include "platform/secret/SecretServiceCalls.h"
#include "services/ports/SecretStore.h"

namespace tarnwick {

/// A question of the keyring to the user, in the keyring's own window.
class SecretPrompt final : public QObject {
  Q_OBJECT
 public:
  /// Shows what the keyring wants to ask and waits for its end, however long that takes; nothing for a path that leads
  /// nowhere. Throws SecretFailure where the user dismissed it or the keyring went, and Cancelled once `stop` is
  /// requested, which takes the question back. `owner` is the keyring's own name on the bus.
  static QCoro::Task<> show(SecretTalk talk, QString owner, QString path, std::stop_token stop);

 private Q_SLOTS:
  void completed(bool dismissed, const QDBusVariant& result);
  void ownerChanged(const QString& name, const QString& before, const QString& after);
  void busLost();

 private:
  /// The answer comes from within the object, which must outlive that.
  struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
  };
  struct Withdrawal;

  SecretPrompt(const QDBusConnection& bus, const QString& owner, const QString& path);
  void end(std::optional<SecretFailure::Status> failure);

  QDBusConnection bus_;
  QString path_;
  OneShotEvent ended_;
  std::optional<SecretFailure::Status> failure_;
};

}  // namespace tarnwick
