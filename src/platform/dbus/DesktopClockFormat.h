#pragma once

#include <QDBusConnection>
#include <QObject>
#include <memory>
#include <optional>

#include "platform/dbus/GSettingsKey.h"

namespace tarnwick {

/// Whether the desktop writes the hours of a day as 24 or as twice 12. The setting is installed on many desktops, but
/// counts only on those that show their own clock by it.
class DesktopClockFormat final : public QObject {
  Q_OBJECT
 public:
  /// Asks at once where the setting counts.
  explicit DesktopClockFormat(const QDBusConnection& session = QDBusConnection::sessionBus());

  /// Absent where this desktop has no such setting, and until it has answered.
  std::optional<bool> uses24Hour() const;

 Q_SIGNALS:
  void changed();

 private:
  std::unique_ptr<GSettingsKey> setting_;
};

}  // namespace tarnwick
