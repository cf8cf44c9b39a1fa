#include "platform/dbus/DBusSessionApplication.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kAnswerWithinMs = 1000;

const QString& name() {
  static const QString value = u"com.brindlemoor.Tarnwick"_s;
  return value;
}

const QString& path() {
  static const QString value = u"/com/brindlemoor/Tarnwick"_s;
  return value;
}

}  // namespace

DBusSessionApplication::DBusSessionApplication() { new DBusApplicationAdaptor(this); }

DBusSessionApplication::~DBusSessionApplication() { release(); }

bool DBusSessionApplication::own() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return false;
  // The object first: whoever starts us by name calls it the moment the name is there.
  if (!bus.registerObject(path(), this, QDBusConnection::ExportAdaptors)) return false;
  owned_ = bus.registerService(name());
  if (!owned_) bus.unregisterObject(path());
  return owned_;
}

void DBusSessionApplication::release() {
  if (!owned_) return;
  owned_ = false;
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.unregisterService(name());
  bus.unregisterObject(path());
}

bool DBusSessionApplication::activateOther() { return call(u"Activate"_s, {QVariantMap()}); }

bool DBusSessionApplication::openInOther(const QStringList& urls) { return call(u"Open"_s, {urls, QVariantMap()}); }

bool DBusSessionApplication::actInOther(const QString& action, const QVariantList& parameter) {
  return call(u"ActivateAction"_s, {action, parameter, QVariantMap()});
}

bool DBusSessionApplication::call(const QString& method, const QVariantList& arguments) const {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return false;
  auto message = QDBusMessage::createMethodCall(name(), path(), u"org.freedesktop.Application"_s, method);
  // No name, no call: a second program must never start a third by asking.
  message.setAutoStartService(false);
  message.setArguments(arguments);
  return bus.call(message, QDBus::Block, kAnswerWithinMs).type() != QDBusMessage::ErrorMessage;
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
