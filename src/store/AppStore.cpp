#include "store/AppStore.h"

#include <QCoreApplication>
#include <QPointer>
#include <cstdio>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/ProbeCounters.h"
#include "calendar/Calendar.h"
#include "config/DataDirectory.h"
#include "config/SettingsLoader.h"
#include "services/RemoteRules.h"
#include "store/DocumentEdits.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The store's own reading and the remote values beat with the clients that were handed in.
QList<BeatClient*> allClients(const StoreSetup& setup, SystemMetrics& system) {
  QList<BeatClient*> clients = setup.clients;
  clients << &system << &setup.remote;
  return clients;
}

}  // namespace

AppStore::AppStore(StoreSetup setup)
    : scheduler_(setup.scheduler),
      installedApps_(setup.installedApps),
      applications_(setup.applications),
      notifications_(setup.notifications),
      remote_(setup.remote),
      credentials_(setup.credentials),
      clipboard_(setup.clipboard),
      reservations_(setup.reservations),
      system_(std::make_unique<SystemMetrics>(std::move(setup.counters), setup.scheduler)),
      clients_(allClients(setup, *system_)),
      calendarMessage_(Calendar::unreadEvents()),
      reminderMessage_(Calendar::unreadReminders()),
      diagnostic_(setup.diagnostic),
      layoutSignature_(config_) {
  storagePath_ = settingsFile(setup.build, diagnostic_, setup.storage);
  if (load()) start(setup);
}

AppStore::~AppStore() = default;

// --- Start ----------------------------------------------------------------------------------------------------------

bool AppStore::load() {
  if (!isDiagnostic()) {
    DurableFile::removeLeftovers(storagePath_);
    const qint64 seconds = now().toSecsSinceEpoch();
    const SettingsLoader::Result loaded = SettingsLoader::load(storagePath_, seconds);
    config_ = loaded.configuration;
    if (!loaded.error.isEmpty()) setError(loaded.error);
    keptSettings_ = loaded.kept;
    isFirstRun_ = loaded.origin == SettingsLoader::Origin::FirstRun;
    hasLostSettings_ = loaded.origin == SettingsLoader::Origin::Recovery;
    // A user whose settings were lost gets a message and is not greeted as new, neither now nor at the next start.
    if (hasLostSettings_) config_.onboardingComplete = true;
    if (!loaded.ready) return false;
    hasRead_ = loaded.origin == SettingsLoader::Origin::File;
    startSaving(loaded.origin, seconds);
  }
  layoutSignature_ = LayoutSignature(config_);
  ready_ = true;
  return true;
}

void AppStore::startSaving(SettingsLoader::Origin origin, qint64 seconds) {
  writer_.emplace(scheduler_, storagePath_, [this]() -> const DockConfiguration& { return config_; });
  writer_->onSaved = [this](const QString& failure, bool isRepeated) { tellOfSaving(failure, isRepeated); };
  switch (origin) {
    case SettingsLoader::Origin::File:
      config_ = writer_->resume(config_);
      break;
    case SettingsLoader::Origin::Recovery:
      writer_->keepJournalAside(seconds);
      break;
    case SettingsLoader::Origin::FirstRun:
      writer_->startAnew();
      break;
  }
}

void AppStore::start(StoreSetup& setup) {
  refreshActiveWidgetIndex();
  if (setup.platformReads) {
    apply(applications_.list());
    system_->sample();
  }
  if (isDiagnostic()) return;

  migrateClipboardHistory();
  reservations_.failed = [this](const QString& message) { setError(message); };
  restoreReservations();
  // Old content of the clipboard is not taken for new by the first beat.
  clients_.startThrough(BeatStep::Clipboard, config_, active_);
  timer_ = scheduler_.every(1.0, [this] { heartbeat(); });
  listen(setup);
  clients_.startAfter(BeatStep::Clipboard, config_, active_);
  refreshAll();
  removeOrphanedCredentials();
}

void AppStore::removeOrphanedCredentials() {
  // A document that was lost, or not there yet, says nothing about which credentials are still wanted.
  // Neither does one that stands in for settings which were kept aside: a later version may know the widgets in them.
  if (!hasRead_ || SettingsLoader::hasKeptAside(dataDirectory())) return;
  QList<QUuid> all;
  for (const DockProfile& profile : config_.profiles) {
    for (const DockWidget& widget : profile.widgets) all.append(widget.id);
  }
  credentials_.removeOrphans(all);
  if (sessionReaders_.isEmpty()) credentials_.endSession();
}

void AppStore::listen(StoreSetup& setup) {
  connect(&applications_, &RunningApplications::changed, this, [this] { apply(applications_.list()); });
  connect(&setup.session, &SessionEvents::willSleep, this, &AppStore::save);
  connect(&setup.session, &SessionEvents::didWake, this, [this] {
    restoreReservations();
    clients_.wake();
    heartbeat();
    refreshAll();
  });
}

void AppStore::migrateClipboardHistory() {
  if (config_.clipboard.isEmpty()) return;
  try {
    if (clipboard_.migrate(config_.clipboard)) {
      edit([](DockConfiguration& config) { config.clipboard.clear(); });
      // At once: texts that still stood in the file at the next start would be taken over again.
      save();
    }
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
}

// --- The beat -------------------------------------------------------------------------------------------------------

QDateTime AppStore::now() const { return frozenDate_.value_or(scheduler_.now()); }

void AppStore::heartbeat() {
  if (down_) return;
  ProbeCounters::count("heartbeat");
  const QDateTime moment = now();
  ++tick_;

  clients_.beat(BeatStep::Temperature, BeatStep::Clipboard, tick_, active_);
  applyProfileRules(moment);
  advanceProductivity(moment);
  if (deferredApps_ && scheduler_.reference() >= runningAppsHeldUntil_) apply(QList<RunningApp>(*deferredApps_));

  clients_.beat(BeatStep::Productivity, BeatStep::RemoteValues, tick_, active_);
  clients_.beat(BeatStep::WindowPreviews, BeatStep::WindowPreviews, tick_, active_);
  Q_EMIT ticked();
}

// --- Saving ---------------------------------------------------------------------------------------------------------

void AppStore::scheduleSave() {
  if (isDiagnostic()) return;
  const LayoutSignature signature(config_);
  const bool layoutDiffers = signature != layoutSignature_;
  if (layoutDiffers) {
    layoutSignature_ = signature;
    Q_EMIT layoutChanged();
  }
  writer_->changed(layoutDiffers);
}

void AppStore::save() {
  if (writer_) tellOfSaving(writer_->save(), false);
}

void AppStore::saveAtTheEnd() {
  if (!writer_) return;
  if (const QString failure = writer_->saveLast(); !failure.isEmpty()) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
  }
}

/// A failure that was announced, and perhaps dismissed, is not announced again because it was tried again.
void AppStore::tellOfSaving(const QString& failure, bool isRepeated) {
  if (failure.isEmpty()) {
    if (!savingFailure_.isEmpty() && error_ == savingFailure_) clearError();
  } else if (!isRepeated) {
    setError(failure);
  }
  savingFailure_ = failure;
}

void AppStore::shutdown() {
  if (down_) return;
  down_ = true;
  installedApps_.stop();
  applications_.stop();
  clients_.endThrough(BeatStep::WindowPreviews);
  restoreReservations();
  timer_.reset();
  clients_.endAfter(BeatStep::WindowPreviews);
  saveAtTheEnd();
  reservations_.failed = {};
  reservations_.finish();
}

// --- Messages, remote values, running applications ------------------------------------------------------------------

void AppStore::setError(const QString& message) { setMessage(message, false); }

void AppStore::setMessage(const QString& message, bool isAnnouncement) {
  if (error_ == message) return;
  error_ = message;
  isAnnouncement_ = isAnnouncement;
  keptSettings_ = {};
  Q_EMIT errorChanged();
}

void AppStore::setCalendarMessage(const QString& message) {
  if (calendarMessage_ == message) return;
  calendarMessage_ = message;
  Q_EMIT calendarMessageChanged();
}

void AppStore::setReminderMessage(const QString& message) {
  if (reminderMessage_ == message) return;
  reminderMessage_ = message;
  Q_EMIT reminderMessageChanged();
}

void AppStore::setDockDisplays(const QStringList& displays) {
  if (!displays.contains(activeDisplay_)) activeDisplay_.clear();
  if (dockDisplays_ == displays) return;
  dockDisplays_ = displays;
  const auto shown = [this] {
    QSet<QUuid> widgets;
    for (const DockWidget& widget : active_.widgets) widgets.insert(widget.id);
    return widgets;
  };
  const QSet<QUuid> before = shown();
  refreshActiveWidgetIndex();
  Q_EMIT activeChanged();
  // A display that came may show what was not asked for until now.
  if (!before.contains(shown())) refreshAll();
}

void AppStore::notify(const QString& title, const QString& body, const std::function<void()>& unseen) {
  if (config_.notificationsEnabled) {
    notifications_.post(title, body, unseen);
  } else if (unseen) {
    unseen();
  }
}

void AppStore::announce(const DockWidget& widget, const QString& sentence) {
  const auto unseen = [store = QPointer(this), name = widget.title, sentence] {
    if (!store || store->down_) return;
    // Timers that end while nobody looks are all announced.
    Announcements& announced = store->announced_;
    if (!store->isAnnouncement_ || store->error_ != announced.text()) announced.clear();
    announced.add(name, sentence);
    store->setMessage(announced.text(), true);
  };
  notify(widget.title.isEmpty() ? Catalog::find(widget.kind).name : widget.title, sentence, unseen);
}

void AppStore::call(const DockWidget& widget, const QString& sentence) {
  announce(widget, sentence);
  Q_EMIT widgetCalls(widget.id);
}

void AppStore::refresh(const DockWidget& widget) { remote_.refresh(widget); }

void AppStore::refreshAll() { remote_.refreshAll(); }

void AppStore::refreshShown(const QList<QUuid>& widgets) {
  const QList<DockWidget> shown = active_.widgets;
  for (const DockWidget& widget : shown) {
    if (widgets.contains(widget.id) && RemoteRules::isSetUp(widget)) refresh(widget);
  }
}

void AppStore::restoreReservations() {
  if (!isDiagnostic()) reservations_.restore();
}

void AppStore::reserve(const QList<ReservingDock>& docks) {
  if (!isDiagnostic() && !down_) reservations_.reserve(docks);
}

void AppStore::holdRunningApps() { runningAppsHeldUntil_ = scheduler_.reference() + kRunningAppsHold; }

void AppStore::apply(const QList<RunningApp>& running) {
  if (scheduler_.reference() < runningAppsHeldUntil_) {
    deferredApps_ = running;
    return;
  }
  deferredApps_.reset();
  if (running == runningApps_) return;
  runningApps_ = running;
  Q_EMIT runningAppsChanged();
}

}  // namespace tarnwick
