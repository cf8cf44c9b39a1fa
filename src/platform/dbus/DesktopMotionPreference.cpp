#include "platform/dbus/DesktopMotionPreference.h"

#include <utility>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kInterfaceSettings = "org.gnome.desktop.interface"_L1;
constexpr auto kAnimations = "enable-animations"_L1;

}  // namespace

DesktopMotionPreference::DesktopMotionPreference(const QDBusConnection& session, QObject* parent)
    : session_(session), portal_(session, kInterfaceSettings, kAnimations) {
  setParent(parent);
  connect(&portal_, &PortalSetting::answered, this, &DesktopMotionPreference::readPortal);
}

void DesktopMotionPreference::readPortal() {
  if (portal_.value().typeId() != QMetaType::Bool) return readSetting();
  setting_.reset();
  take(!portal_.value().toBool());
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
