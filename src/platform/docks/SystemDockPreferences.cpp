#include "platform/docks/SystemDockPreferences.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QTimer>
#include <algorithm>
#include <array>

#include "base/ModuleLoader.h"
#include "platform/docks/OwnPreferences.h"

namespace tarnwick {
namespace {

struct SystemDockPreferencesWords {
  Q_DECLARE_TR_FUNCTIONS(SystemDockPreferences)
};

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
const QString kPlasma = u"plasma"_s;

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

bool isKind(const QString& id) {
  return id == kNone || std::ranges::any_of(kKinds, [&](const Kind& kind) { return kind.id == id; });
}

/// What the user has. An endless delay of ours is not, whatever left it there.
QList<DockSetting> usersOwn(DockBackend& dock, DockPreference preference) {
  QList<DockSetting> own = dock.own(preference);
  QList<DockSetting> unset = own;
  for (DockSetting& setting : unset) setting.value.reset();
  const auto soon = dock.hiding(preference, DockPreferenceAccess::kNoDelay, unset);
  const auto never = dock.hiding(preference, DockPreferenceAccess::kEndlessDelay, unset);
  for (qsizetype i = 0; i < own.size(); ++i) {
    if (never[i].value != soon[i].value && own[i].value == never[i].value) own[i].value.reset();
  }
  return own;
}

}  // namespace

SystemDockPreferences::SystemDockPreferences(const QString& directory) : directory_(directory) {}

SystemDockPreferences::~SystemDockPreferences() = default;

Capability SystemDockPreferences::capability() {
  if (found().front().id != kNone) return Capability::yes();
  return Capability::no(SystemDockPreferencesWords::tr("No dock that can be hidden was found."));
}

Capability SystemDockPreferences::staysAway() {
  const auto& docks = found();
  if (std::ranges::all_of(docks, [](const Found& dock) { return !dock.backend || dock.backend->staysAway(); })) {
    return Capability::yes();
  }
  return Capability::no(SystemDockPreferencesWords::tr(
      "This desktop’s panels can be hidden, but they still appear when the pointer reaches the edge of the screen."));
}

QVariant SystemDockPreferences::read(const QString& key) {
  const auto preference = preferenceOf(key);
  if (!preference) return {};
  // The first key begins a new record, and docks come and go between two of them.
  if (*preference == DockPreference::Autohide) look();
  DockRecord record;
  for (Found& dock : found()) {
    dock.own[*preference] = usersOwn(*dock.backend, *preference);
    record.docks << describe(dock, *preference);
  }
  return record.toValue(key);
}

/// What the user has, each with what our layouts may put there.
DockRecord::Dock SystemDockPreferences::describe(const Found& found, DockPreference preference) const {
  DockRecord::Dock dock{found.id, {}};
  const Own& own = found.own.at(preference);
  const Own soon = found.backend->hiding(preference, kNoDelay, own);
  const Own never = found.backend->hiding(preference, kEndlessDelay, own);
  for (qsizetype i = 0; i < own.size(); ++i) {
    DockRecord::Entry entry{own[i], {soon[i].value}};
    if (never[i].value != soon[i].value) entry.ours << never[i].value;
    dock.entries << entry;
  }
  return dock;
}

bool SystemDockPreferences::isOwnRecord(const QString& key, const QVariant& value) const {
  const auto preference = preferenceOf(key);
  const auto record = DockRecord::fromValue(key, value);
  if (!preference || !record) return false;
  return std::ranges::all_of(record->docks, [&](const DockRecord::Dock& dock) {
    if (!isKind(dock.id)) return false;
    // Where the part is missing that knows the kind, nothing can be put back either.
    const DockBackend* const known = backend(dock.id);
    return std::ranges::all_of(dock.entries, [&](const DockRecord::Entry& entry) {
      return !known || known->knows(*preference, entry.setting);
    });
  });
}

void SystemDockPreferences::write(const QString& key, const QVariant& value) {
  const auto preference = preferenceOf(key);
  if (!preference) return;
  watchNames();
  switch (value.typeId()) {
    case QMetaType::QVariantMap:
      return putBack(key, value);
    case QMetaType::Bool:
      return value.toBool() ? setTo(*preference, 0) : reset(*preference);
    case QMetaType::Double:
      return setTo(*preference, value.toDouble());
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
  const bool gaveBack = std::exchange(gaveBack_, false);
  if (!done) return false;
  if (gaveBack) {
    written_.clear();
  } else {
    for (auto& [key, values] : written_) values = {values.last()};
  }
  return true;
}

/// Only Plasma's shell is asked for its settings itself; those of the others lie with services of the desktop.
void SystemDockPreferences::askWhetherTheyAnswer(const QVariantMap& values,
                                                 const std::function<void(bool theyAnswer)>& answer) {
  const auto namesPlasma = [&](const QString& key) {
    const auto record = DockRecord::fromValue(key, values.value(key));
    return record && std::ranges::any_of(record->docks, [](const DockRecord::Dock& dock) {
             return dock.id == kPlasma && !dock.entries.isEmpty();
           });
  };
  watchNames();
  DockBackend* const plasma = std::ranges::any_of(values.keys(), namesPlasma) ? backend(kPlasma) : nullptr;
  if (!plasma || !namesOnTheBus().contains(kKinds.back().busName)) return answer(true);
  plasma->askWhetherItAnswers([this, answer](bool answers) {
    if (!answers) askAgain(kPlasma);
    answer(answers);
  });
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
    if (dock && !dock->own(DockPreference::Autohide).isEmpty()) {
      found_->push_back({kind.id, dock, {}});
    } else {
      askAgain(kind.id);
    }
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
  questions_.erase(kind->id);
  DockBackend* const dock = backend(kind->id);
  if (dock && !dock->own(DockPreference::Autohide).isEmpty()) {
    dockAppeared();
  } else {
    askAgain(kind->id);
  }
}

/// For a kind whose docks may still come, or could not be reached.
void SystemDockPreferences::askAgain(const QString& id) {
  const DockBackend* const kind = backend(id);
  if (!kind || !kind->comesAfterItsName()) return;
  Questions& questions = questions_[id];
  if (questions.waiting || questions.asked >= kMostQuestions) return;
  questions.waiting = true;
  int pause = kFirstPauseMs;
  for (int i = 0; i < questions.asked && pause < kLongestPauseMs; ++i) pause *= 2;
  ++questions.asked;
  QTimer::singleShot(pause, this, [this, id] { ask(id); });
}

void SystemDockPreferences::ask(const QString& id) {
  backend(id)->askWhetherThere([this, id](bool isThere) {
    questions_[id].waiting = false;
    if (isThere) {
      dockAppeared();
    } else {
      askAgain(id);
    }
  });
}

DockBackend* SystemDockPreferences::backend(const QString& id) const {
  const auto known = backends_.find(id);
  if (known != backends_.end()) return known->second.get();
  std::unique_ptr<DockBackend> made;
  if (id == kNone) {
    made = std::make_unique<OwnPreferences>(directory_);
  } else if (const auto make = reinterpret_cast<DockBackend* (*)(const QString&)>(
                 ModuleLoader::function(u"tarnwick-docks.so"_s, "tarnwickDockBackend"))) {
    made.reset(make(id));
  }
  if (!made) return nullptr;
  return backends_.emplace(id, std::move(made)).first->second.get();
}

const SystemDockPreferences::Own& SystemDockPreferences::own(Found& dock, DockPreference preference) {
  const auto known = dock.own.find(preference);
  if (known != dock.own.end()) return known->second;
  return dock.own[preference] = usersOwn(*dock.backend, preference);
}

void SystemDockPreferences::setTo(DockPreference preference, double seconds) {
  for (Found& dock : found()) {
    const Own& users = own(dock, preference);
    for (const DockSetting& setting : dock.backend->hiding(preference, seconds, users)) {
      written_[{dock.id, setting.place, setting.name}] << setting.value;
      put(dock.id, setting, {});
    }
  }
}

void SystemDockPreferences::reset(DockPreference preference) {
  for (Found& dock : found()) {
    for (DockSetting setting : own(dock, preference)) {
      setting.value.reset();
      put(dock.id, setting, {});
    }
  }
}

bool SystemDockPreferences::sessionGoesOn() { return QDBusConnection::sessionBus().isConnected(); }

void SystemDockPreferences::putBack(const QString& key, const QVariant& value) {
  const auto record = DockRecord::fromValue(key, value);
  if (!record) {
    undelivered_ = true;
    return;
  }
  gaveBack_ = true;
  for (const DockRecord::Dock& dock : record->docks) {
    for (const DockRecord::Entry& entry : dock.entries) {
      const auto ours = written_.find({dock.id, entry.setting.place, entry.setting.name});
      QList<DockValue> over = ours != written_.end() ? ours->second : entry.ours;
      // A repair without a record that can be replayed resets, so a setting that is not set counts as ours too.
      if (ours == written_.end() && !over.isEmpty()) over.resize(over.size() + 1);
      put(dock.id, entry.setting, over);
    }
  }
}

void SystemDockPreferences::put(const QString& id, const DockSetting& setting, const QList<DockValue>& over) {
  DockBackend* const dock = backend(id);
  if (dock && dock->put(setting, over)) return;
  undelivered_ = true;
  askAgain(id);
}

}  // namespace tarnwick
