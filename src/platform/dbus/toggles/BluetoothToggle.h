#pragma once

#include <QDBusConnection>
#include <QMap>
#include <QVariantMap>
#include <memory>

#include "platform/dbus/BusService.h"
#include "platform/dbus/toggles/ToggleSource.h"

namespace tarnwick {

/// Bluetooth through BlueZ: on when any adapter has power. Switching on powers the first one, switching off all.
class BluetoothToggle final : public ToggleSource {
  Q_OBJECT
 public:
  explicit BluetoothToggle(const QDBusConnection& system);

  ToggleState state() const override;
  void set(bool on) override;
  void start() override;

 private:
  void fetch();
  void adapterChanged(const QDBusMessage& signal);
  void power(const QString& adapter, bool on);

  QDBusConnection system_;
  std::unique_ptr<BusService> bluez_;
  QMap<QString, QVariantMap> adapters_;  ///< properties by object path
};

}  // namespace tarnwick
