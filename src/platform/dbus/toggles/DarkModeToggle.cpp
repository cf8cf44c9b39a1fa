#include "platform/dbus/toggles/DarkModeToggle.h"

#include <QDBusArgument>
#include <QDBusVariant>

#include "platform/dbus/BusNames.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kAppearance = "org.freedesktop.appearance"_L1;
constexpr auto kColorScheme = "color-scheme"_L1;
constexpr uint kPreferDark = 1;

// The older of the portal's two reading methods wraps its answer twice.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

// Plasma keeps its colours elsewhere: its portal tells them, but writing this setting would change nothing.
bool settingIsObeyed() { return !qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(u"KDE"_s); }

}  // namespace

DarkModeToggle::DarkModeToggle(const QDBusConnection& session) : session_(session) {}

void DarkModeToggle::start() {
  portal_ = std::make_unique<BusService>(session_, bus::kPortal);
  portal_->listen(bus::kPortalPath, bus::kPortalSettings, u"SettingChanged"_s,
                  [this](const QDBusMessage& signal) {
                    portalScheme_ = unwrapped(signal.arguments().value(2)).toUInt();
                    Q_EMIT changed();
                  },
                  {kAppearance, kColorScheme});
  connect(portal_.get(), &BusService::ownerChanged, this, &DarkModeToggle::readPortal);
  if (settingIsObeyed()) {
    setting_ = std::make_unique<GSettingsKey>(session_, u"org.gnome.desktop.interface"_s, kColorScheme);
    connect(setting_.get(), &GSettingsKey::changed, this, &DarkModeToggle::changed);
  }
}

// Asked under the well-known name, so that a portal which isn't running yet is started: early in a session it rarely
// is.
void DarkModeToggle::readPortal() {
  auto message = QDBusMessage::createMethodCall(bus::kPortal, bus::kPortalPath, bus::kPortalSettings, u"Read"_s);
  message.setArguments({QString(kAppearance), QString(kColorScheme)});
  ask(session_, message, this, [this](const QDBusMessage& reply) {
    portalScheme_.reset();
    if (reply.type() == QDBusMessage::ReplyMessage) portalScheme_ = unwrapped(reply.arguments().value(0)).toUInt();
    Q_EMIT changed();
  });
}

ToggleState DarkModeToggle::state() const {
  const bool canSet = setting_ && setting_->value();
  const bool known = portalScheme_ || canSet;
  const bool on = portalScheme_ ? *portalScheme_ == kPreferDark : canSet && *setting_->value() == "'prefer-dark'"_L1;
  if (canSet) return {on, Capability::yes()};
  return {on, Capability::no(known ? tr("This desktop does not let other programs change its appearance.")
                                   : tr("This desktop has no setting for dark mode."))};
}

void DarkModeToggle::set(bool on) {
  if (setting_ && setting_->value()) {
    setting_->set(on ? u"'prefer-dark'"_s : u"'default'"_s);
  } else {
    Q_EMIT changed();
  }
}

}  // namespace tarnwick
