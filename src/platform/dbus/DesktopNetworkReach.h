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
  bool isKnown() const override { return state_.isKnown; }
  bool isOnline() const override { return state_.isOnline; }
  bool isOnItsWay() const override { return state_.isOnItsWay; }

  /// Whether a state of NetworkManager's counts as having a network, and as one that is not there whole.
  static bool isOnlineAt(uint state);
  static bool isOnItsWayAt(uint state);

 private:
  struct State {
    bool isKnown = false;
    bool isOnline = true;
    bool isOnItsWay = false;
    bool operator==(const State&) const = default;
  };

  void decide();
  void become(const State& state);

  QDBusConnection system_;
  std::unique_ptr<BusService> manager_;  ///< Null until it begins, like what it has.
  std::unique_ptr<BusProperties> properties_;
  std::unique_ptr<KernelLinks> links_;  ///< Null while NetworkManager answers.
  State state_;
};

}  // namespace tarnwick
