#pragma once

#include <QDBusConnection>
#include <memory>

#include "platform/dbus/GSettingsKey.h"
#include "platform/dbus/PortalSetting.h"
#include "platform/dbus/toggles/ToggleSource.h"

namespace tarnwick {

/// The desktop's preference for dark windows: read from the settings portal, or from the setting itself where there is
/// no portal; changed through the setting.
class DarkModeToggle final : public ToggleSource {
  Q_OBJECT
 public:
  explicit DarkModeToggle(const QDBusConnection& session);

  ToggleState state() const override;
  void set(bool on) override;
  void start() override;

 private:
  QDBusConnection session_;
  std::unique_ptr<PortalSetting> portal_;
  std::unique_ptr<GSettingsKey> setting_;
};

}  // namespace tarnwick
