#include "platform/dbus/DesktopNetworkReach.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

// The overall states of NetworkManager. Its documentation asks programs to take an unknown one as a network.
constexpr uint kNetworkUnknown = 0;
constexpr uint kNetworkDisconnected = 20;

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

void DesktopNetworkReach::decide() {
  const QVariant state = properties_->value(u"State"_s);
  if (state.isValid()) {
    links_.reset();
    setOnline(isOnlineAt(state.toUInt()));
    return;
  }
  if (!links_) {
    links_ = std::make_unique<KernelLinks>();
    connect(links_.get(), &KernelLinks::changed, this, &DesktopNetworkReach::decide);
  }
  setOnline(links_->isAnyUp().value_or(isOnline_));
}

void DesktopNetworkReach::setOnline(bool online) {
  if (std::exchange(isOnline_, online) != online) Q_EMIT changed();
}

}  // namespace tarnwick
