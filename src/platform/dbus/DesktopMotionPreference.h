#pragma once

#include <QDBusConnection>
#include <memory>
#include <optional>

#include "desktop/MotionPreference.h"
#include "platform/dbus/GSettingsKey.h"
#include "platform/dbus/PortalSetting.h"

namespace tarnwick {

/// The desktop's preference for less motion: read from the settings portal, or from the setting itself where no portal
/// tells it. Motion is not reduced where neither says so, and until one has answered.
class DesktopMotionPreference final : public MotionPreference {
  Q_OBJECT
 public:
  /// Asks at once; a portal that isn't running yet is started.
  explicit DesktopMotionPreference(const QDBusConnection& session, QObject* parent = nullptr);

  bool reducesMotion() const override { return reducesMotion_; }

 private:
  void readPortal();
  void readSetting();
  void take(bool reducesMotion);

  QDBusConnection session_;
  PortalSetting portal_;
  std::unique_ptr<GSettingsKey> setting_;
  bool reducesMotion_ = false;
};

}  // namespace tarnwick
