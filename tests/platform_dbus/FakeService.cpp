#include "platform_dbus/FakeService.h"

#include <gtest/gtest.h>

#include <QDBusError>
#include <QDBusVariant>

namespace tarnwick {

using namespace Qt::StringLiterals;

FakeService::FakeService(const QDBusConnection& connection, const QString& name)
    : connection_(connection), name_(name) {
  EXPECT_TRUE(connection_.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath));
  EXPECT_TRUE(connection_.registerService(name_));
}

FakeService::~FakeService() {
  connection_.unregisterService(name_);
  connection_.unregisterObject(u"/"_s, QDBusConnection::UnregisterTree);
}

void FakeService::setProperty(const QString& path, const QString& interface, const QString& name,
                              const QVariant& value) {
  properties_[path][interface].insert(name, value);
  emitSignal(path, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s,
             {interface, QVariantMap{{name, value}}, QStringList()});
}

QVariant FakeService::property(const QString& path, const QString& interface, const QString& name) const {
  return properties_.value(path).value(interface).value(name);
}

void FakeService::emitSignal(const QString& path, const QString& interface, const QString& name,
                             const QVariantList& arguments) {
  auto signal = QDBusMessage::createSignal(path, interface, name);
  signal.setArguments(arguments);
  connection_.send(signal);
}

bool FakeService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const auto reply = replyTo(message);
  connection.send(reply ? message.createReply(*reply)
                        : message.createErrorReply(QDBusError::AccessDenied, u"refused by the test"_s));
  return true;
}

std::optional<QVariantList> FakeService::replyTo(const QDBusMessage& message) {
  const auto arguments = message.arguments();
  const auto interface = arguments.value(0).toString();
  if (message.interface() == "org.freedesktop.DBus.Properties"_L1) {
    if (!properties_.value(message.path()).contains(interface)) return std::nullopt;
    if (message.member() == "Get"_L1) {
      const QVariant value = property(message.path(), interface, arguments.value(1).toString());
      return QVariantList{QVariant::fromValue(QDBusVariant(value))};
    }
    if (message.member() == "GetAll"_L1) return QVariantList{properties_[message.path()][interface]};
    if (message.member() == "Set"_L1 && !refusesWrites_) {
      setProperty(message.path(), interface, arguments[1].toString(), arguments[2].value<QDBusVariant>().variant());
      return QVariantList();
    }
    return std::nullopt;
  }
  const auto answer = answers_.constFind(message.member());
  if (answer == answers_.constEnd() || !*answer) return std::nullopt;
  return (*answer)(message);
}

QString FakeService::introspect(const QString& path) const {
  Q_UNUSED(path)
  return {};
}

}  // namespace tarnwick
