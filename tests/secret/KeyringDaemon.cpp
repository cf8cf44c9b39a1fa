#include "secret/KeyringDaemon.h"

#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <csignal>

#include "platform/secret/SecretServiceCalls.h"

namespace tarnwick::test {

using namespace Qt::StringLiterals;
using namespace secretservice;

namespace {

constexpr auto kPassword = "open sesame";
const QString kLogin = u"/org/freedesktop/secrets/collection/login"_s;

}  // namespace

void KeyringDaemon::run(const QStringList& options) {
  qDBusRegisterMetaType<Attributes>();
  qDBusRegisterMetaType<Secret>();
  // One that the bus started by itself, for whoever asked for it before, has the name.
  const QDBusReply<uint> before = connection_.interface()->servicePid(kName);
  if (before.isValid()) {
    ::kill(static_cast<pid_t>(before.value()), SIGKILL);
    ASSERT_TRUE(waitFor([this] { return !connection_.interface()->isServiceRegistered(kName).value(); }));
  }
  daemon_.setStandardOutputFile(QProcess::nullDevice());
  daemon_.setStandardErrorFile(QProcess::nullDevice());
  daemon_.start(
      u"gnome-keyring-daemon"_s,
      QStringList{u"--foreground"_s, u"--components=secrets"_s, u"--control-directory"_s, control_.path()} + options);
  ASSERT_TRUE(daemon_.waitForStarted()) << "gnome-keyring-daemon is missing";
  if (!options.isEmpty()) daemon_.write(kPassword);
  daemon_.closeWriteChannel();
  ASSERT_TRUE(waitFor([this] { return connection_.interface()->isServiceRegistered(kName).value(); }));
}

void KeyringDaemon::start() { run({}); }

void KeyringDaemon::startUnlocked() { run({u"--unlock"_s}); }

void KeyringDaemon::kill() {
  if (daemon_.state() == QProcess::NotRunning) return;
  daemon_.kill();
  daemon_.waitForFinished();
  EXPECT_TRUE(waitFor([this] { return !connection_.interface()->isServiceRegistered(kName).value(); }));
}

void KeyringDaemon::hang() { ::kill(static_cast<pid_t>(daemon_.processId()), SIGSTOP); }

QDBusMessage KeyringDaemon::call(const QString& path, const QString& interface, const QString& method,
                                 const QVariantList& arguments) {
  auto message = QDBusMessage::createMethodCall(kName, path, interface, method);
  message.setArguments(arguments);
  QDBusMessage reply = connection_.call(message);
  EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
  return reply;
}

void KeyringDaemon::lock() { call(kPath, kService, u"Lock"_s, {QVariant::fromValue(Paths{QDBusObjectPath(kLogin)})}); }

void KeyringDaemon::unlock() {
  const QDBusMessage session =
      call(kPath, kService, u"OpenSession"_s, {u"plain"_s, QVariant::fromValue(QDBusVariant(QString()))});
  const Secret password{session.arguments().value(1).value<QDBusObjectPath>(), {}, kPassword, u"text/plain"_s};
  call(kPath, u"org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"_s, u"UnlockWithMasterPassword"_s,
       {QVariant::fromValue(QDBusObjectPath(kLogin)), QVariant::fromValue(password)});
}

QList<QVariantMap> KeyringDaemon::itemsOf(const QString& account) {
  const QDBusMessage found =
      call(kPath, kService, u"SearchItems"_s, {QVariant::fromValue(Attributes{{u"account"_s, account}})});
  QList<QVariantMap> items;
  for (const QDBusObjectPath& item : qdbus_cast<Paths>(found.arguments().value(0))) {
    const QDBusMessage all = call(item.path(), u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s, {QString(kItem)});
    items << qdbus_cast<QVariantMap>(all.arguments().value(0));
  }
  return items;
}

}  // namespace tarnwick::test
