#include "platform/dbus/toggles/WiFiToggle.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr uint kWifiAvailable = 0x1;

}  // namespace

WiFiToggle::WiFiToggle(const QDBusConnection& system, const QString& root) : system_(system), root_(root) {}

void WiFiToggle::start() {
  radios_ = std::make_unique<RfkillSwitches>(QDir(root_).filePath(u"dev/rfkill"_s));
  manager_ = std::make_unique<BusService>(system_, u"org.freedesktop.NetworkManager"_s);
  properties_ = std::make_unique<BusProperties>(*manager_, u"/org/freedesktop/NetworkManager"_s,
                                                u"org.freedesktop.NetworkManager"_s);
  connect(radios_.get(), &RfkillSwitches::changed, this, &WiFiToggle::changed);
  connect(properties_.get(), &BusProperties::changed, this, &WiFiToggle::changed);
}

bool WiFiToggle::hasAdapter() const {
  // Newer managers report it; with older ones the kernel's list has to do.
  const auto flags = properties_->value(u"RadioFlags"_s);
  if (flags.isValid()) return (flags.toUInt() & kWifiAvailable) != 0;
  const QDir interfaces(QDir(root_).filePath(u"sys/class/net"_s));
  const auto names = interfaces.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  return std::any_of(names.begin(), names.end(), [&](const QString& name) {
    return QFileInfo::exists(interfaces.filePath(name + "/wireless"_L1)) ||
           QFileInfo::exists(interfaces.filePath(name + "/phy80211"_L1));
  });
}

ToggleState WiFiToggle::state() const {
  const auto noAdapter = Capability::no(tr("This computer has no Wi-Fi adapter."));
  if (!properties_ || !hasAdapter()) return {false, noAdapter};
  if (!properties_->has(u"WirelessEnabled"_s)) {
    return {!radios_->wifiBlocked().value_or(false),
            Capability::no(tr("Wi-Fi can only be switched through NetworkManager, which is not running."))};
  }
  const auto hardware = properties_->value(u"WirelessHardwareEnabled"_s);
  if (hardware.isValid() && !hardware.toBool()) {
    return {false, Capability::no(tr("Wi-Fi is turned off by a switch on this computer."))};
  }
  return {properties_->value(u"WirelessEnabled"_s).toBool(), Capability::yes()};
}

void WiFiToggle::set(bool on) {
  if (properties_->has(u"WirelessEnabled"_s)) {
    properties_->set(u"WirelessEnabled"_s, on);
  } else {
    Q_EMIT changed();
  }
}

}  // namespace tarnwick
