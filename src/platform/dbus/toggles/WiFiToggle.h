#pragma once

#include <QDBusConnection>
#include <QString>
#include <memory>

#include "platform/dbus/BusService.h"
#include "platform/dbus/toggles/ToggleSource.h"
#include "platform/linux/RfkillSwitches.h"

namespace tarnwick {

/// Wi-Fi through NetworkManager. Where that isn't running, the state of the radio is shown and can't be changed.
class WiFiToggle final : public ToggleSource {
  Q_OBJECT
 public:
  /// `root` stands in for "/" where devices are looked for.
  WiFiToggle(const QDBusConnection& system, const QString& root);

  ToggleState state() const override;
  void set(bool on) override;
  void start() override;

 private:
  bool hasAdapter() const;

  QDBusConnection system_;
  QString root_;
  std::unique_ptr<BusService> manager_;
  std::unique_ptr<BusProperties> properties_;
  std::unique_ptr<RfkillSwitches> radios_;
};

}  // namespace tarnwick
