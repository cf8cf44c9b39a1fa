#pragma once

#include <QDBusConnection>
#include <memory>

#include "platform/dbus/BusService.h"
#include "platform/dbus/GSettingsKey.h"
#include "platform/dbus/toggles/CookieInhibition.h"
#include "platform/dbus/toggles/ToggleSource.h"
#include "platform/dbus/toggles/XfconfSwitch.h"

namespace tarnwick {

/// Silence from the notification service, in whichever of its dialects the one that runs here speaks: dunst's pause,
/// Plasma's inhibition, a setting of Xfce, GNOME's banners.
class DoNotDisturbToggle final : public ToggleSource {
  Q_OBJECT
 public:
  explicit DoNotDisturbToggle(const QDBusConnection& session);

  ToggleState state() const override;
  void set(bool on) override;
  void start() override;

 private:
  enum class Dialect { None, Pause, Setting, Inhibition, Banners };

  Dialect dialect() const;
  void serviceChanged();

  QDBusConnection session_;
  std::unique_ptr<BusService> service_;
  std::unique_ptr<BusProperties> pause_;
  std::unique_ptr<BusProperties> inhibition_;  ///< Anybody's.
  std::unique_ptr<CookieInhibition> ownInhibition_;
  std::unique_ptr<XfconfSwitch> setting_;
  std::unique_ptr<GSettingsKey> banners_;
};

}  // namespace tarnwick
