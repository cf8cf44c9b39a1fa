#include "platform/dbus/DBusSessionApplication.h"
#include "base/DesktopId.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>
#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kAnswerWithinMs = 1000;

const QString& name() {
  static const QString value = kDesktopId;
  return value;
}

const QString& path() {
  static const QString value = u'/' + QString(kDesktopId).replace(u'.', u'/');
  return value;
}

}  // namespace

DBusSessionApplication::DBusSessionApplication(const QDBusConnection& bus, Connect connectAgain)
    : bus_(bus), connectAgain_(std::move(connectAgain)) {
  new DBusApplicationAdaptor(this);
  nextLook_.setSingleShot(true);
  connect(&nextLook_, &QTimer::timeout, this, &DBusSessionApplication::lookForBus);
}

DBusSessionApplication::DBusSessionApplication(const QString& ownConnection)
    : DBusSessionApplication(connectToSession(ownConnection)) {
  ownConnection_ = ownConnection;
}

DBusSessionApplication::~DBusSessionApplication() {
  release();
  dropConnection();
}

QDBusConnection DBusSessionApplication::connectToSession(const QString& name) {
  return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}

bool DBusSessionApplication::own() {
  if (!bus_.isConnected()) return false;
  // The object first: a program that starts us by name calls it the moment the name is there.
  if (!listening_ && !bus_.registerObject(path(), this, QDBusConnection::ExportAdaptors)) return false;
  if (!listening_) {
    bus_.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
                 SLOT(busWentAway()));
  }
  listening_ = true;
  const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
      bus_.interface()->registerService(name(), QDBusConnectionInterface::QueueService);
  return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

void DBusSessionApplication::busWentAway() {
  if (!listening_) return;
  listening_ = false;
  nextLook_.start(kFirstPauseMs);
}

void DBusSessionApplication::lookForBus() {
  const int pause = nextLook_.interval();
  dropConnection();
  ownConnection_ = u"tarnwick-session-%1"_s.arg(++connections_);
  bus_ = connectAgain_(ownConnection_);
  // Also in line for the name counts: it comes when its holder goes.
  own();
  if (!listening_) nextLook_.start(std::min(pause * 2, kLongestPauseMs));
}

void DBusSessionApplication::dropConnection() {
  if (!ownConnection_.isEmpty()) QDBusConnection::disconnectFromBus(std::exchange(ownConnection_, {}));
}

void DBusSessionApplication::release() {
  nextLook_.stop();
  if (!listening_) return;
  listening_ = false;
  // A caller from this point on gets the answer that there is no such name, and calls again.
  bus_.unregisterObject(path());
  bus_.unregisterService(name());
}

QString DBusSessionApplication::owner() const {
  if (!bus_.isConnected()) return {};
  const QDBusReply<QString> reply = bus_.interface()->serviceOwner(name());
  return reply.isValid() ? reply.value() : QString();
}

qint64 DBusSessionApplication::otherProcess() const {
  const QString holder = owner();
  if (holder.isEmpty() || holder == bus_.baseService()) return 0;
  const QDBusReply<uint> process = bus_.interface()->servicePid(holder);
  return process.isValid() ? static_cast<qint64>(process.value()) : 0;
}

bool DBusSessionApplication::activateOther() { return call(u"Activate"_s, {QVariantMap()}); }

bool DBusSessionApplication::openInOther(const QStringList& urls) { return call(u"Open"_s, {urls, QVariantMap()}); }

bool DBusSessionApplication::actInOther(const QString& action, const QVariantList& parameter) {
  return call(u"ActivateAction"_s, {action, parameter, QVariantMap()});
}

bool DBusSessionApplication::call(const QString& method, const QVariantList& arguments) const {
  // To the copy itself and not to the name: a second program must never start a third by asking.
  const QString holder = owner();
  if (holder.isEmpty()) return false;
  auto message = QDBusMessage::createMethodCall(holder, path(), u"org.freedesktop.Application"_s, method);
  message.setArguments(arguments);
  const QDBusMessage answer = bus_.call(message, QDBus::Block, kAnswerWithinMs);
  if (answer.type() != QDBusMessage::ErrorMessage) return true;
  // No answer from a copy that is still there: it is busy and has the message before it.
  return QDBusError(answer).type() == QDBusError::NoReply && owner() == holder;
}

DBusApplicationAdaptor::DBusApplicationAdaptor(DBusSessionApplication* application)
    : QDBusAbstractAdaptor(application), application_(application) {}

void DBusApplicationAdaptor::Activate(const QVariantMap& platformData) {
  Q_UNUSED(platformData)
  Q_EMIT application_->activated();
}

void DBusApplicationAdaptor::Open(const QStringList& uris, const QVariantMap& platformData) {
  Q_UNUSED(platformData)
  Q_EMIT application_->openRequested(uris);
}

void DBusApplicationAdaptor::ActivateAction(const QString& action, const QVariantList& parameter,
                                            const QVariantMap& platformData) {
  Q_UNUSED(platformData)
  Q_EMIT application_->actionRequested(action, parameter);
}

}  // namespace tarnwick
