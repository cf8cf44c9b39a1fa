#pragma once

#include <QDBusConnection>
#include <memory>

#include "desktop/ClockFormat.h"
#include "platform/dbus/GSettingsKey.h"

namespace tarnwick {

/// The desktop's setting for it. It is installed on many desktops, but counts only on those that show their own clock
/// by it.
class DesktopClockFormat final : public ClockFormat {
  Q_OBJECT
 public:
  explicit DesktopClockFormat(const QDBusConnection& session) : session_(session) {}

  std::optional<bool> uses24Hour() const override;
  void start() override;

 private:
  QDBusConnection session_;
  std::unique_ptr<GSettingsKey> setting_;
};

}  // namespace tarnwick
