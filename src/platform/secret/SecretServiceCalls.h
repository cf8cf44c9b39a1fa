#pragma once

#include <QCoroTask>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDeadlineTimer>
#include <QMap>
#include <QString>
#include <QVariantList>
#include <chrono>
#include <memory>

#include "platform/secret/SecretCipher.h"

namespace tarnwick {

/// The names of the interface that all keyrings of the free desktops have.
namespace secretservice {
inline constexpr QLatin1StringView kName{"org.freedesktop.secrets"};
inline constexpr QLatin1StringView kPath{"/org/freedesktop/secrets"};
inline constexpr QLatin1StringView kService{"org.freedesktop.Secret.Service"};
inline constexpr QLatin1StringView kCollection{"org.freedesktop.Secret.Collection"};
inline constexpr QLatin1StringView kItem{"org.freedesktop.Secret.Item"};
inline constexpr QLatin1StringView kSession{"org.freedesktop.Secret.Session"};
inline constexpr QLatin1StringView kPrompt{"org.freedesktop.Secret.Prompt"};
inline constexpr QLatin1StringView kErrors{"org.freedesktop.Secret.Error."};

using Attributes = QMap<QString, QString>;
using Paths = QList<QDBusObjectPath>;

/// A secret as it is sent.
struct Secret {
  QDBusObjectPath session;
  QByteArray parameters;
  QByteArray value;
  QString contentType;
};

/// Where an interface has a path that leads nowhere.
inline bool isNowhere(const QString& path) { return path.isEmpty() || path == QLatin1StringView("/"); }

QDBusArgument& operator<<(QDBusArgument& argument, const Secret& secret);
const QDBusArgument& operator>>(const QDBusArgument& argument, Secret& secret);
}  // namespace secretservice

/// One conversation with the keyring, which has so long to end. Copies are the same conversation.
struct SecretTalk {
  QDBusConnection bus;
  std::chrono::milliseconds patience;
  QDeadlineTimer deadline{patience};

  /// Starts the time anew, after the user was waited for.
  void goOn() { deadline.setRemainingTime(patience); }
};

/// Calls the keyring, which is started where it can be. Gives its answer, never an error: those are thrown.
QCoro::Task<QDBusMessage> secretCall(SecretTalk talk, QString path, QLatin1StringView interface,
                                     QLatin1StringView method, QVariantList arguments);
/// The same of the service itself.
QCoro::Task<QDBusMessage> secretServiceCall(SecretTalk talk, QLatin1StringView method, const QVariantList& arguments);
QCoro::Task<QVariant> secretProperty(SecretTalk talk, QString path, QLatin1StringView interface,
                                     QLatin1StringView name);

/// A session with the keyring in which secrets are sent encrypted. It ends with this object.
class SecretSession {
 public:
  SecretSession(const QDBusConnection& bus, std::shared_ptr<SecretCipher> cipher, const QString& path);
  Q_DISABLE_COPY_MOVE(SecretSession)
  ~SecretSession();

  static QCoro::Task<std::shared_ptr<SecretSession>> open(SecretTalk talk);

  /// Both throw SecretFailure where the other end does something else.
  secretservice::Secret closed(const SecretBytes& value) const;
  SecretBytes opened(const secretservice::Secret& secret) const;
  const QString& path() const { return path_; }

 private:
  struct Making {
    std::shared_ptr<SecretCipher> cipher;
    QByteArray key;
    bool isAgreed = false;
  };

  QDBusConnection bus_;
  std::shared_ptr<SecretCipher> cipher_;
  QString path_;
};

}  // namespace tarnwick

Q_DECLARE_METATYPE(tarnwick::secretservice::Secret)
