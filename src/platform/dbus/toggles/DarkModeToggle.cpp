#include "platform/dbus/toggles/DarkModeToggle.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kAppearance = "org.freedesktop.appearance"_L1;
constexpr auto kColorScheme = "color-scheme"_L1;
constexpr uint kPreferDark = 1;

// Plasma keeps its colours elsewhere: its portal reports them, but writing this setting would change nothing.
bool settingIsObeyed() { return !qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(u"KDE"_s); }

}  // namespace

DarkModeToggle::DarkModeToggle(const QDBusConnection& session) : session_(session) {}

void DarkModeToggle::start() {
  portal_ = std::make_unique<PortalSetting>(session_, kAppearance, kColorScheme);
  connect(portal_.get(), &PortalSetting::answered, this, &DarkModeToggle::changed);
  if (settingIsObeyed()) {
    setting_ = std::make_unique<GSettingsKey>(session_, u"org.gnome.desktop.interface"_s, kColorScheme);
    connect(setting_.get(), &GSettingsKey::changed, this, &DarkModeToggle::changed);
  }
}

ToggleState DarkModeToggle::state() const {
  const bool canSet = setting_ && setting_->value();
  const bool isTold = portal_ && portal_->value().isValid();
  const bool known = isTold || canSet;
  const bool on =
      isTold ? portal_->value().toUInt() == kPreferDark : canSet && *setting_->value() == "'prefer-dark'"_L1;
  if (canSet) return {on, Capability::yes()};
  return {on, Capability::no(known ? tr("This desktop does not let apps change its appearance.")
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
