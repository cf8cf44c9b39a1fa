#include "platform/dbus/toggles/BluetoothToggle.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <algorithm>

#include "platform/dbus/BusNames.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kAdapter = "org.bluez.Adapter1"_L1;
constexpr auto kObjectManager = "org.freedesktop.DBus.ObjectManager"_L1;

using Interfaces = QMap<QString, QVariantMap>;

bool hasPower(const QVariantMap& adapter) { return adapter.value(u"Powered"_s).toBool(); }

bool isBlocked(const QVariantMap& adapter) { return adapter.value(u"PowerState"_s).toString() == "off-blocked"_L1; }

}  // namespace

BluetoothToggle::BluetoothToggle(const QDBusConnection& system) : system_(system) {}

void BluetoothToggle::start() {
  bluez_ = std::make_unique<BusService>(system_, u"org.bluez"_s);
  bluez_->listen(u"/"_s, kObjectManager, u"InterfacesAdded"_s, [this](const QDBusMessage& signal) {
    const auto interfaces = qdbus_cast<Interfaces>(signal.arguments().value(1));
    if (!interfaces.contains(kAdapter)) return;
    adapters_.insert(signal.arguments()[0].value<QDBusObjectPath>().path(), interfaces.value(kAdapter));
    Q_EMIT changed();
  });
  bluez_->listen(u"/"_s, kObjectManager, u"InterfacesRemoved"_s, [this](const QDBusMessage& signal) {
    if (!signal.arguments().value(1).toStringList().contains(kAdapter)) return;
    adapters_.remove(signal.arguments()[0].value<QDBusObjectPath>().path());
    Q_EMIT changed();
  });
  // Matched by interface: devices in a scan announce themselves several times a second.
  bluez_->listen(QString(), bus::kProperties, u"PropertiesChanged"_s,
                 [this](const QDBusMessage& signal) { adapterChanged(signal); }, {kAdapter});
  connect(bluez_.get(), &BusService::ownerChanged, this, &BluetoothToggle::fetch);
}

void BluetoothToggle::fetch() {
  adapters_.clear();
  if (!bluez_->isRunning()) {
    Q_EMIT changed();
    return;
  }
  bluez_->call(u"/"_s, kObjectManager, u"GetManagedObjects"_s, {}, this, [this](const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ReplyMessage) {
      const auto tree = reply.arguments().value(0).value<QDBusArgument>();
      tree.beginMap();
      while (!tree.atEnd()) {
        QDBusObjectPath path;
        Interfaces interfaces;
        tree.beginMapEntry();
        tree >> path >> interfaces;
        tree.endMapEntry();
        if (interfaces.contains(kAdapter)) adapters_.insert(path.path(), interfaces.value(kAdapter));
      }
      tree.endMap();
    }
    Q_EMIT changed();
  });
}

void BluetoothToggle::adapterChanged(const QDBusMessage& signal) {
  const auto adapter = adapters_.find(signal.path());
  if (adapter == adapters_.end()) return;
  adapter->insert(qdbus_cast<QVariantMap>(signal.arguments().value(1)));
  Q_EMIT changed();
}

ToggleState BluetoothToggle::state() const {
  if (!bluez_ || !bluez_->isRunning()) return {false, Capability::no(tr("The Bluetooth service is not running."))};
  if (adapters_.isEmpty()) return {false, Capability::no(tr("This computer has no Bluetooth adapter."))};
  if (std::all_of(adapters_.begin(), adapters_.end(), isBlocked)) {
    return {false, Capability::no(tr("Bluetooth is turned off by a switch on this computer."))};
  }
  return {std::any_of(adapters_.begin(), adapters_.end(), hasPower), Capability::yes()};
}

void BluetoothToggle::set(bool on) {
  if (adapters_.isEmpty()) {
    Q_EMIT changed();
    return;
  }
  if (on) {
    const auto free = std::find_if_not(adapters_.begin(), adapters_.end(), isBlocked);
    power(free == adapters_.end() ? adapters_.firstKey() : free.key(), true);
    return;
  }
  const auto paths = adapters_.keys();
  for (const auto& path : paths) {
    if (hasPower(adapters_.value(path))) power(path, false);
  }
}

void BluetoothToggle::power(const QString& adapter, bool on) {
  bluez_->call(adapter, bus::kProperties, u"Set"_s,
               {QString(kAdapter), u"Powered"_s, QVariant::fromValue(QDBusVariant(on))}, this,
               [this](const QDBusMessage& reply) {
                 // Accepted, the new value comes as a signal.
                 if (reply.type() == QDBusMessage::ErrorMessage) Q_EMIT changed();
               });
}

}  // namespace tarnwick
