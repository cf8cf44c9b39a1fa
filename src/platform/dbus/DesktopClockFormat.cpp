#include "platform/dbus/DesktopClockFormat.h"

#include <QStringList>
#include <algorithm>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

bool settingIsObeyed() {
  static const QStringList obeying{u"GNOME"_s, u"Unity"_s, u"Budgie"_s, u"Pantheon"_s};
  const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
  return std::ranges::any_of(desktops, [](const QString& desktop) { return obeying.contains(desktop); });
}

}  // namespace

void DesktopClockFormat::start() {
  if (setting_ || !settingIsObeyed()) return;
  setting_ = std::make_unique<GSettingsKey>(session_, u"org.gnome.desktop.interface"_s, u"clock-format"_s);
  connect(setting_.get(), &GSettingsKey::changed, this, &ClockFormat::changed);
}

std::optional<bool> DesktopClockFormat::uses24Hour() const {
  if (!setting_ || !setting_->value()) return std::nullopt;
  return *setting_->value() == "'24h'"_L1;
}

}  // namespace tarnwick
