#include "platform/dbus/DesktopNetworkReach.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

// The overall states of NetworkManager. Its documentation asks programs to take an unknown one as a network.
constexpr uint kNetworkUnknown = 0;
constexpr uint kNetworkDisconnected = 20;
constexpr uint kNetworkLocal = 50;

}  // namespace

DesktopNetworkReach::DesktopNetworkReach(const QDBusConnection& system, QObject* parent) : system_(system) {
  setParent(parent);
}

void DesktopNetworkReach::start() {
  if (manager_) return;
  const QString name = u"org.freedesktop.NetworkManager"_s;
  manager_ = std::make_unique<BusService>(system_, name);
  properties_ = std::make_unique<BusProperties>(*manager_, u"/org/freedesktop/NetworkManager"_s, name);
  connect(properties_.get(), &BusProperties::changed, this, &DesktopNetworkReach::decide);
}

bool DesktopNetworkReach::isOnlineAt(uint state) { return state == kNetworkUnknown || state > kNetworkDisconnected; }

bool DesktopNetworkReach::isOnItsWayAt(uint state) { return state > kNetworkDisconnected && state < kNetworkLocal; }

void DesktopNetworkReach::decide() {
  const QVariant state = properties_->value(u"State"_s);
  if (state.isValid()) {
    links_.reset();
    const uint number = state.toUInt();
    become({true, isOnlineAt(number), isOnItsWayAt(number)});
    return;
  }
  if (!links_) {
    links_ = std::make_unique<KernelLinks>();
    connect(links_.get(), &KernelLinks::changed, this, &DesktopNetworkReach::decide);
  }
  const std::optional<bool> isAnyUp = links_->isAnyUp();
  become({state_.isKnown || isAnyUp, isAnyUp.value_or(state_.isOnline), false});
}

void DesktopNetworkReach::become(const State& state) {
  if (std::exchange(state_, state) != state) Q_EMIT changed();
}

}  // namespace tarnwick
