#pragma once

#include <memory>

#include "platform/dbus/BusService.h"
#include "platform/linux/KernelLinks.h"
#include "services/ports/NetworkReach.h"

namespace tarnwick {

/// The network as NetworkManager has it or, where that does not run, as the kernel's interfaces are. Both are followed
/// by what they announce.
class DesktopNetworkReach final : public NetworkReach {
  Q_OBJECT
 public:
  /// `system`: the system bus.
  explicit DesktopNetworkReach(const QDBusConnection& system, QObject* parent = nullptr);

  void start() override;
  bool isOnline() const override { return isOnline_; }

  /// Whether a state of NetworkManager's counts as having a network.
  static bool isOnlineAt(uint state);

 private:
  void decide();
  void setOnline(bool online);

  QDBusConnection system_;
  std::unique_ptr<BusService> manager_;  ///< Null until it begins, like what it has.
  std::unique_ptr<BusProperties> properties_;
  std::unique_ptr<KernelLinks> links_;  ///< Null while NetworkManager answers.
  bool isOnline_ = true;
};

}  // namespace tarnwick
