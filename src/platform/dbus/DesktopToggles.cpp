#include "platform/dbus/DesktopToggles.h"

#include <utility>

#include "platform/dbus/toggles/BluetoothToggle.h"
#include "platform/dbus/toggles/DarkModeToggle.h"
#include "platform/dbus/toggles/DoNotDisturbToggle.h"
#include "platform/dbus/toggles/KeepAwakeToggle.h"
#include "platform/dbus/toggles/MuteToggle.h"
#include "platform/dbus/toggles/WiFiToggle.h"

namespace tarnwick {

DesktopToggles::DesktopToggles(const QDBusConnection& session, const QDBusConnection& system, const QString& root,
                               QObject* parent) {
  setParent(parent);
  provide(Toggle::WiFi, std::make_unique<WiFiToggle>(system, root));
  provide(Toggle::Bluetooth, std::make_unique<BluetoothToggle>(system));
  provide(Toggle::DarkMode, std::make_unique<DarkModeToggle>(session));
  provide(Toggle::DoNotDisturb, std::make_unique<DoNotDisturbToggle>(session));
  provide(Toggle::Mute, std::make_unique<MuteToggle>());
  provide(Toggle::KeepAwake, std::make_unique<KeepAwakeToggle>(session, system));
}

DesktopToggles::~DesktopToggles() = default;

void DesktopToggles::provide(Toggle toggle, std::unique_ptr<ToggleSource> source) {
  connect(source.get(), &ToggleSource::changed, this, &DesktopToggles::changed);
  sources_[toggle] = std::move(source);
}

ToggleState DesktopToggles::state(Toggle toggle) const {
  const auto source = sources_.find(toggle);
  return source == sources_.end() ? ToggleState() : source->second->state();
}

void DesktopToggles::set(Toggle toggle, bool on) {
  const auto source = sources_.find(toggle);
  if (started_ && source != sources_.end()) {
    source->second->set(on);
  } else {
    Q_EMIT changed();
  }
}

void DesktopToggles::start() {
  if (std::exchange(started_, true)) return;
  for (const auto& [toggle, source] : sources_) source->start();
}

}  // namespace tarnwick
