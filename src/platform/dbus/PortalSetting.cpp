#include "platform/dbus/PortalSetting.h"

#include <QDBusVariant>

#include "platform/dbus/BusNames.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

PortalSetting::PortalSetting(const QDBusConnection& session, QLatin1StringView space, QLatin1StringView key)
    : session_(session), space_(space), key_(key), portal_(session, bus::kPortal) {
  portal_.listen(bus::kPortalPath, bus::kPortalSettings, u"SettingChanged"_s,
                 [this](const QDBusMessage& signal) { take(signal.arguments().value(2)); }, {space_, key_});
  connect(&portal_, &BusService::ownerChanged, this, &PortalSetting::read);
}

// Asked under the well-known name, which starts a portal that isn't running.
void PortalSetting::read() {
  auto message = QDBusMessage::createMethodCall(bus::kPortal, bus::kPortalPath, bus::kPortalSettings, u"Read"_s);
  message.setArguments({QString(space_), QString(key_)});
  ask(session_, message, this, [this](const QDBusMessage& reply) {
    take(reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant());
  });
}

void PortalSetting::take(const QVariant& value) {
  value_ = value;
  // The older of the portal's two reading methods wraps its answer twice.
  while (value_.canConvert<QDBusVariant>()) value_ = value_.value<QDBusVariant>().variant();
  Q_EMIT answered();
}

}  // namespace tarnwick
