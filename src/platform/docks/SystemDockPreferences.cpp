#include "platform/docks/SystemDockPreferences.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <algorithm>
#include <array>

#include "base/ProgramParts.h"
#include "platform/docks/OwnPreferences.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct Kind {
  QLatin1StringView id;
  QLatin1StringView busName;
};
constexpr std::array kKinds{
    Kind{"plank"_L1, "net.launchpad.plank"_L1},
    Kind{"gnome"_L1, "org.gnome.Shell"_L1},
    Kind{"xfce"_L1, "org.xfce.Panel"_L1},
    Kind{"plasma"_L1, "org.kde.plasmashell"_L1},
};
const QString kNone = u"none"_s;

constexpr int kPatienceMs = 1000;

std::optional<DockPreference> preferenceOf(const QString& key) {
  if (key == u"autohide"_s) return DockPreference::Autohide;
  if (key == u"autohide-delay"_s) return DockPreference::AutohideDelay;
  return std::nullopt;
}

QStringList namesOnTheBus() {
  const QDBusMessage question = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                               u"org.freedesktop.DBus"_s, u"ListNames"_s);
  const QDBusMessage answer = QDBusConnection::sessionBus().call(question, QDBus::Block, kPatienceMs);
  return answer.arguments().value(0).toStringList();
}

QVariantMap toRecord(const DockSetting& setting) {
  QVariantMap record{{u"place"_s, setting.place}, {u"name"_s, setting.name}};
  if (setting.value) record.insert(u"value"_s, *setting.value);
  return record;
}

DockSetting fromRecord(const QVariantMap& record) {
  const QVariant value = record.value(u"value"_s);
  return {record.value(u"place"_s).toString(), record.value(u"name"_s).toString(),
          value.isValid() ? std::optional(value.toString()) : std::nullopt};
}

}  // namespace

SystemDockPreferences::SystemDockPreferences(const QString& directory) : directory_(directory) {}

SystemDockPreferences::~SystemDockPreferences() = default;

Capability SystemDockPreferences::capability() {
  if (found().front().id != kNone) return Capability::yes();
  return Capability::no(QCoreApplication::translate("SystemDockPreferences", "No dock that can be hidden was found."));
}

Capability SystemDockPreferences::staysAway() {
  const auto& docks = found();
  if (std::ranges::all_of(docks, [](const Found& dock) { return !dock.backend || dock.backend->staysAway(); })) {
    return Capability::yes();
  }
  return Capability::no(QCoreApplication::translate(
      "SystemDockPreferences", "Panels of this desktop can be hidden, but still come out at the edge of the screen."));
}

QVariant SystemDockPreferences::read(const QString& key) {
  const auto preference = preferenceOf(key);
  if (!preference) return {};
  // The first key begins a new record, and docks come and go between two of them.
  if (*preference == DockPreference::Autohide) look();
  QVariantList docks;
  for (Found& dock : found()) {
    QVariantList settings;
    dock.own[*preference] = dock.backend->own(*preference);
    for (const DockSetting& setting : dock.own[*preference]) settings << toRecord(setting);
    docks << QVariantMap{{u"dock"_s, dock.id}, {u"settings"_s, settings}};
  }
  return QVariantMap{{u"docks"_s, docks}};
}

void SystemDockPreferences::write(const QString& key, const QVariant& value) {
  const auto preference = preferenceOf(key);
  if (!preference) return;
  watchNames();
  switch (value.typeId()) {
    case QMetaType::QVariantMap:
      return putBack(value.toMap());
    case QMetaType::Bool:
      return value.toBool() ? wish(*preference, 0) : reset(*preference);
    case QMetaType::Double:
      return wish(*preference, value.toDouble());
    case QMetaType::UnknownType:
      return reset(*preference);
    default:
      // No record of ours: it names no dock that it could be put back into.
      undelivered_ = true;
  }
}

bool SystemDockPreferences::synchronize() {
  bool done = !std::exchange(undelivered_, false);
  for (const auto& [id, backend] : backends_) done = backend->flush() && done;
  return done;
}

std::vector<SystemDockPreferences::Found>& SystemDockPreferences::found() {
  if (!found_) look();
  return *found_;
}

void SystemDockPreferences::look() {
  watchNames();
  found_.emplace();
  const QStringList running = namesOnTheBus();
  for (const Kind& kind : kKinds) {
    if (!running.contains(kind.busName)) continue;
    DockBackend* dock = backend(kind.id);
    if (dock && !dock->own(DockPreference::Autohide).isEmpty()) found_->push_back({kind.id, dock, {}});
  }
  if (found_->empty()) found_->push_back({kNone, backend(kNone), {}});
}

void SystemDockPreferences::watchNames() {
  if (watcher_) return;
  watcher_ = std::make_unique<QDBusServiceWatcher>();
  watcher_->setConnection(QDBusConnection::sessionBus());
  watcher_->setWatchMode(QDBusServiceWatcher::WatchForRegistration);
  for (const Kind& kind : kKinds) watcher_->addWatchedService(kind.busName);
  connect(watcher_.get(), &QDBusServiceWatcher::serviceRegistered, this, &SystemDockPreferences::serviceRegistered);
}

void SystemDockPreferences::serviceRegistered(const QString& name) {
  const auto kind = std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& k) { return k.busName == name; });
  if (kind == kKinds.end()) return;
  const auto isIt = [&](const Found& dock) { return dock.id == kind->id; };
  // A dock that merely started again has its settings still.
  if (found_ && std::any_of(found_->begin(), found_->end(), isIt)) return;
  DockBackend* const dock = backend(kind->id);
  if (dock && !dock->own(DockPreference::Autohide).isEmpty()) dockAppeared();
}

DockBackend* SystemDockPreferences::backend(const QString& id) {
  const auto known = backends_.find(id);
  if (known != backends_.end()) return known->second.get();
  std::unique_ptr<DockBackend> made;
  if (id == kNone) {
    made = std::make_unique<OwnPreferences>(directory_);
  } else if (const auto make = reinterpret_cast<DockBackend* (*)(const QString&)>(
                 ProgramParts::function(u"tarnwick-docks.so"_s, "tarnwickDockBackend"))) {
    made.reset(make(id));
  }
  if (!made) return nullptr;
  return backends_.emplace(id, std::move(made)).first->second.get();
}

const SystemDockPreferences::Own& SystemDockPreferences::own(Found& dock, DockPreference preference) {
  const auto known = dock.own.find(preference);
  if (known != dock.own.end()) return known->second;
  return dock.own[preference] = dock.backend->own(preference);
}

void SystemDockPreferences::wish(DockPreference preference, double seconds) {
  for (Found& dock : found()) {
    for (const DockSetting& setting : dock.backend->hiding(preference, seconds, own(dock, preference))) {
      put(dock.backend, setting);
    }
  }
}

void SystemDockPreferences::reset(DockPreference preference) {
  for (Found& dock : found()) {
    for (DockSetting setting : own(dock, preference)) {
      setting.value.reset();
      put(dock.backend, setting);
    }
  }
}

void SystemDockPreferences::putBack(const QVariantMap& record) {
  const QVariant docks = record.value(u"docks"_s);
  if (docks.typeId() != QMetaType::QVariantList) undelivered_ = true;
  for (const QVariant& entry : docks.toList()) {
    const QVariantMap dock = entry.toMap();
    DockBackend* const there = backend(dock.value(u"dock"_s).toString());
    for (const QVariant& setting : dock.value(u"settings"_s).toList()) put(there, fromRecord(setting.toMap()));
  }
}

void SystemDockPreferences::put(DockBackend* backend, const DockSetting& setting) {
  if (!backend || !backend->put(setting)) undelivered_ = true;
}

}  // namespace tarnwick
