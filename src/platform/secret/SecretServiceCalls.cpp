#include "platform/secret/SecretServiceCalls.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include "base/ModuleLoader.h"
#include "base/OneShotEvent.h"
#include "services/ports/SecretStore.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using namespace secretservice;
using QCoro::Task;

namespace secretservice {

QDBusArgument& operator<<(QDBusArgument& argument, const Secret& secret) {
  argument.beginStructure();
  argument << secret.session << secret.parameters << secret.value << secret.contentType;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Secret& secret) {
  argument.beginStructure();
  argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
  argument.endStructure();
  return argument;
}

}  // namespace secretservice

namespace {

void registerSecretTypes() {
  static const bool once = [] {
    qDBusRegisterMetaType<Attributes>();
    qDBusRegisterMetaType<Secret>();
    return true;
  }();
  Q_UNUSED(once)
}

SecretFailure::Status statusOf(const QDBusMessage& error, const QDBusConnection& bus) {
  const QString name = error.errorName();
  if (name == kErrors + "IsLocked"_L1) return SecretFailure::Locked;
  switch (QDBusError(error).type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
      return SecretFailure::NoService;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
      // In the same words the bus itself says that a service ended instead of answering.
      return error.service() == "org.freedesktop.DBus"_L1 || !bus.isConnected() ? SecretFailure::NoService
                                                                                : SecretFailure::NoAnswer;
    default:
      break;
  }
  const bool isGone =
      name == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1 || name.startsWith("org.freedesktop.DBus.Error.Spawn."_L1);
  return isGone ? SecretFailure::NoService : SecretFailure::Refused;
}

QDBusMessage messageTo(const QString& path, QLatin1StringView interface, QLatin1StringView method,
                       const QVariantList& arguments) {
  registerSecretTypes();
  QDBusMessage message = QDBusMessage::createMethodCall(kName, path, interface, method);
  message.setArguments(arguments);
  return message;
}

}  // namespace

Task<QDBusMessage> secretCall(SecretTalk talk, QString path, QLatin1StringView interface, QLatin1StringView method,
                              QVariantList arguments) {
  // Without a bus Qt's pending call would never finish.
  if (!talk.bus.isConnected()) throw SecretFailure(SecretFailure::NoService);
  if (talk.deadline.hasExpired()) throw SecretFailure(SecretFailure::NoAnswer);
  const QDBusMessage question = messageTo(path, interface, method, arguments);
  const auto left = static_cast<int>(talk.deadline.remainingTime()) + 1;
  const OneShotEvent finished;
  const auto reply = std::make_shared<QDBusMessage>();
  auto* watcher = new QDBusPendingCallWatcher(talk.bus.asyncCall(question, left));
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [finished, reply](auto* call) {
    *reply = call->reply();
    call->deleteLater();
    finished.happen();
  });
  co_await finished.happened();
  if (reply->type() != QDBusMessage::ReplyMessage) throw SecretFailure(statusOf(*reply, talk.bus));
  co_return *reply;
}

Task<QDBusMessage> secretServiceCall(SecretTalk talk, QLatin1StringView method, const QVariantList& arguments) {
  return secretCall(std::move(talk), kPath, kService, method, arguments);
}

Task<QVariant> secretProperty(SecretTalk talk, QString path, QLatin1StringView interface, QLatin1StringView name) {
  const QVariantList arguments{QString(interface), QString(name)};
  const QDBusMessage reply = co_await secretCall(talk, path, "org.freedesktop.DBus.Properties"_L1, "Get"_L1, arguments);
  co_return qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant();
}

// --- Sessions -------------------------------------------------------------------------------------------------------

SecretSession::SecretSession(const QDBusConnection& bus, std::shared_ptr<SecretCipher> cipher, const QString& path)
    : bus_(bus), cipher_(std::move(cipher)), path_(path) {}

SecretSession::~SecretSession() {
  // Nobody waits for the answer.
  if (bus_.isConnected()) bus_.send(messageTo(path_, kSession, "Close"_L1, {}));
}

Task<std::shared_ptr<SecretSession>> SecretSession::open(SecretTalk talk) {
  // Loading and computing wait for the disk and take their time.
  const auto made = std::make_shared<Making>();
  const OneShotEvent keyed = OneShotEvent::ofWork([made] {
    static const auto make =
        reinterpret_cast<MakeSecretCipher>(ModuleLoader::function(QString::fromLatin1(kSecretModule), kSecretDoor));
    if (!make) return;
    made->cipher.reset(make());
    made->key = made->cipher->publicKey();
  });
  co_await keyed.happened();
  if (made->key.isEmpty()) throw SecretFailure(SecretFailure::Refused);

  const QVariantList wish{QString::fromLatin1(SecretCipher::kAlgorithm), QVariant::fromValue(QDBusVariant(made->key))};
  const QDBusMessage reply = co_await secretServiceCall(talk, "OpenSession"_L1, wish);
  const QByteArray theirs = qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant().toByteArray();
  const QString path = qvariant_cast<QDBusObjectPath>(reply.arguments().value(1)).path();
  const auto session = std::make_shared<SecretSession>(talk.bus, made->cipher, path);
  const OneShotEvent agreed = OneShotEvent::ofWork([made, theirs] { made->isAgreed = made->cipher->agree(theirs); });
  co_await agreed.happened();
  if (!made->isAgreed || isNowhere(path)) throw SecretFailure(SecretFailure::Refused);
  co_return session;
}

Secret SecretSession::closed(const SecretBytes& value) const {
  const auto encrypted = cipher_->encrypt(value);
  if (!encrypted) throw SecretFailure(SecretFailure::Refused);
  return {QDBusObjectPath(path_), encrypted->vector, encrypted->bytes, u"text/plain"_s};
}

SecretBytes SecretSession::opened(const Secret& secret) const {
  auto clear = cipher_->decrypt({secret.parameters, secret.value});
  if (!clear) throw SecretFailure(SecretFailure::Refused);
  return std::move(*clear);
}

}  // namespace tarnwick
