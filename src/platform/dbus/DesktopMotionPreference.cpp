#include "platform/dbus/DesktopMotionPreference.h"

#include <QDBusVariant>
#include <utility>

#include "platform/dbus/BusNames.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kInterfaceSettings = "org.gnome.desktop.interface"_L1;
constexpr auto kAnimations = "enable-animations"_L1;

// The older of the portal's two reading methods wraps its answer twice.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

DesktopMotionPreference::DesktopMotionPreference(const QDBusConnection& session, QObject* parent)
    : session_(session), portal_(session, bus::kPortal) {
  setParent(parent);
  portal_.listen(bus::kPortalPath, bus::kPortalSettings, u"SettingChanged"_s,
                 [this](const QDBusMessage& signal) { take(!unwrapped(signal.arguments().value(2)).toBool()); },
                 {kInterfaceSettings, kAnimations});
  connect(&portal_, &BusService::ownerChanged, this, &DesktopMotionPreference::readPortal);
}

// Asked under the well-known name, so that a portal which isn't running yet is started: early in a session it rarely
// is.
void DesktopMotionPreference::readPortal() {
  auto message = QDBusMessage::createMethodCall(bus::kPortal, bus::kPortalPath, bus::kPortalSettings, u"Read"_s);
  message.setArguments({QString(kInterfaceSettings), QString(kAnimations)});
  ask(session_, message, this, [this](const QDBusMessage& reply) {
    const QVariant value = unwrapped(reply.arguments().value(0));
    if (reply.type() != QDBusMessage::ReplyMessage || value.typeId() != QMetaType::Bool) return readSetting();
    setting_.reset();
    take(!value.toBool());
  });
}

void DesktopMotionPreference::readSetting() {
  if (setting_) return;
  setting_ = std::make_unique<GSettingsKey>(session_, kInterfaceSettings, kAnimations);
  connect(setting_.get(), &GSettingsKey::changed, this,
          [this] { take(setting_->value() == std::optional(u"false"_s)); });
}

void DesktopMotionPreference::take(bool reducesMotion) {
  if (std::exchange(reducesMotion_, reducesMotion) != reducesMotion) Q_EMIT changed();
}

}  // namespace tarnwick
