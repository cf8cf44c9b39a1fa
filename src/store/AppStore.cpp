#include "store/AppStore.h"

#include <QCoreApplication>
#include <QPointer>
#include <cstdio>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/ProbeCounters.h"
#include "config/DataDirectory.h"
#include "config/SettingsLoader.h"
#include "store/DocumentEdits.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

AppStore::AppStore(StoreSetup setup)
    : scheduler_(setup.scheduler),
      keys_(setup.keys),
      installedApps_(setup.installedApps),
      applications_(setup.applications),
      notifications_(setup.notifications),
      services_(std::move(setup.collaborators)),
      system_(std::make_unique<SystemMetrics>(std::move(setup.counters), *setup.scheduler)),
      calendarMessage_(tr("Enable Calendar access to see your events.")),
      reminderMessage_(tr("Enable Reminders access to see your reminders.")),
      diagnostic_(setup.diagnostic),
      layoutSignature_(config_) {
  storagePath_ = settingsFile(keys_, diagnostic_, setup.storage);
  if (load()) start(setup);
}

AppStore::~AppStore() { services_.calendar->onChanged = nullptr; }

// --- Start ----------------------------------------------------------------------------------------------------------

bool AppStore::load() {
  if (!diagnostic_) {
    DurableFile::removeLeftovers(storagePath_);
    const qint64 seconds = now().toSecsSinceEpoch();
    const SettingsLoader::Result loaded = SettingsLoader::load(storagePath_, seconds);
    config_ = loaded.configuration;
    if (!loaded.error.isEmpty()) setError(loaded.error);
    if (!loaded.ready) return false;
    hasRead_ = loaded.origin == SettingsLoader::Origin::File;
    startSaving(loaded.origin, seconds);
  }
  layoutSignature_ = LayoutSignature(config_);
  ready_ = true;
  return true;
}

void AppStore::startSaving(SettingsLoader::Origin origin, qint64 seconds) {
  writer_.emplace(*scheduler_, storagePath_, [this]() -> const DockConfiguration& { return config_; });
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
    if (applications_) apply(applications_->list());
    system_->sample();
  }
  if (diagnostic_) return;

  migrateClipboardHistory();
  services_.windows->restoreReservations(dataDirectory() + "/window-recovery.json"_L1);
  restoreMedia();
  services_.productivity->refresh();
  pasteboardCount_ = services_.clipboard->changeCount();
  timer_ = scheduler_->every(1.0, [this] { heartbeat(); });
  listen(setup);
  services_.calendar->loadCalendar();
  services_.calendar->loadReminders();
  refreshAll();
  removeOrphanedCredentials();
}

void AppStore::removeOrphanedCredentials() {
  // A document that was lost, or not there yet, says nothing about which credentials are still wanted.
  if (!hasRead_) return;
  QList<QUuid> all;
  for (const DockProfile& profile : config_.profiles) {
    for (const DockWidget& widget : profile.widgets) all.append(widget.id);
  }
  services_.credentials->removeOrphans(all);
}

void AppStore::listen(StoreSetup& setup) {
  services_.calendar->onChanged = [this] {
    services_.calendar->loadCalendar();
    services_.calendar->loadReminders();
  };
  if (applications_) {
    connect(applications_, &RunningApplications::changed, this, [this] { apply(applications_->list()); });
  }
  if (setup.session) {
    connect(setup.session, &SessionEvents::willSleep, this, &AppStore::save);
    connect(setup.session, &SessionEvents::didWake, this, [this] {
      services_.windows->restoreReservations(dataDirectory() + "/window-recovery.json"_L1);
      heartbeat();
      refreshAll();
    });
  }
}

void AppStore::migrateClipboardHistory() {
  if (config_.clipboard.isEmpty()) return;
  try {
    if (services_.clipboard->migrate(config_.clipboard)) {
      edit([](DockConfiguration& config) { config.clipboard.clear(); });
      // At once: texts that still stood in the file at the next start would be taken over again.
      save();
    }
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
}

void AppStore::restoreMedia() {
  const auto& source = config_.rememberedMediaSource;
  const bool wanted = source && config_.nativeConnections && config_.nativeConnections->contains(*source);
  if (wanted) {
    services_.media->restore(*source);
  } else {
    services_.media->disconnect(false);
  }
  services_.media->refresh();
}

// --- The beat -------------------------------------------------------------------------------------------------------

QDateTime AppStore::now() const { return frozenDate_.value_or(scheduler_->now()); }

void AppStore::heartbeat() {
  if (down_) return;
  ProbeCounters::count("heartbeat");
  const QDateTime moment = now();
  ++tick_;

  sampleServices();
  recordClipboard();
  applyProfileRules(moment);
  advanceProductivity(moment);
  if (deferredApps_ && scheduler_->reference() >= runningAppsHeldUntil_) apply(QList<RunningApp>(*deferredApps_));

  if (tick_ % 60 == 0) {
    services_.productivity->refresh();
    services_.wallpaper->tick();
    services_.calendar->loadCalendar();
    services_.calendar->loadReminders();
  }
  if (tick_ % 600 == 0) refreshAll();
  Q_EMIT ticked();
}

void AppStore::sampleServices() {
  const auto shows = [this](QLatin1StringView family) { return active_.families.contains(family); };
  const auto has = [this](QLatin1StringView kind) { return active_.kinds.contains(kind); };

  if (tick_ % 4 == 0) {
    if (shows("temperature"_L1)) services_.temperature->refresh();
    if (shows("processes"_L1)) services_.processes->refresh();
  }
  if (tick_ % 2 != 0) return;
  if (has("zoomMeeting"_L1) || has("calendarMeetingDetail"_L1)) services_.zoom->refresh();
  if (active_.connectionModes.contains("claudeActivity"_L1)) {
    for (const DockWidget& widget : shownWidgets()) {
      if (widget.options.value(u"connectionMode"_s) == "claudeActivity"_L1) refresh(widget);
    }
  }
  if (shows("music"_L1)) services_.media->refresh();
  if (!has("nowPlayingYouTubeVideo"_L1)) services_.media->clearVideoPreview();
  if (shows("audio"_L1) || shows("toggles"_L1)) services_.audioDevices->refresh();
  if (system_->isNeeded()) system_->sample();
}

void AppStore::recordClipboard() {
  if (!config_.clipboardEnabled || !active_.kinds.contains("clipboard"_L1)) return;
  const int count = services_.clipboard->changeCount();
  if (count == pasteboardCount_) return;
  pasteboardCount_ = count;
  services_.clipboard->record();
}

// --- Saving ---------------------------------------------------------------------------------------------------------

void AppStore::scheduleSave() {
  if (diagnostic_) return;
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

/// A failure that was told, and perhaps dismissed, is not told again because it was tried again.
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
  if (applications_) applications_->stop();
  services_.media->disconnect(false);
  services_.zoom->disconnect();
  services_.sounds->stop();
  services_.cleaner->stop();
  services_.windows->stopPreviews();
  services_.windows->restoreReservations(dataDirectory() + "/window-recovery.json"_L1);
  timer_.reset();
  services_.remote->cancelAll();
  services_.recorder->stop();
  saveAtTheEnd();
  // Last: it waits for whoever reads a folder right now.
  if (installedApps_) installedApps_->stop();
}

// --- Messages, remote values, running applications ------------------------------------------------------------------

void AppStore::setError(const QString& message) { setMessage(message, false); }

void AppStore::setMessage(const QString& message, bool isAnnouncement) {
  if (error_ == message) return;
  error_ = message;
  isAnnouncement_ = isAnnouncement;
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
  if (!displays.contains(activeDisplay)) activeDisplay.clear();
}

void AppStore::notify(const QString& title, const QString& body) {
  if (config_.notificationsEnabled && notifications_) notifications_->post(title, body, {});
}

void AppStore::announce(const DockWidget& widget, const QString& sentence) {
  // Several timers may run; one that has a name of its own is told by it.
  const QString line = widget.title.isEmpty() ? sentence : tr("%1: %2").arg(widget.title, sentence);
  const auto unseen = [store = QPointer(this), line] {
    if (!store || store->down_) return;
    // Timers that end one after the other while nobody looks are all told.
    QStringList& told = store->announced_;
    if (!store->isAnnouncement_ || store->error_ != told.join(u' ')) told.clear();
    told.removeAll(line);
    told.append(line);
    constexpr qsizetype most = 3;
    if (told.size() > most) told.removeFirst();
    store->setMessage(told.join(u' '), true);
  };
  if (config_.notificationsEnabled && notifications_) {
    notifications_->post(widget.title.isEmpty() ? Catalog::find(widget.kind).name : widget.title, sentence, unseen);
  } else {
    unseen();
  }
}

void AppStore::refresh(const DockWidget& widget) { services_.remote->refresh(widget); }

void AppStore::refreshAll() { services_.remote->refreshAll(); }

void AppStore::holdRunningApps() { runningAppsHeldUntil_ = scheduler_->reference() + kRunningAppsHold; }

void AppStore::apply(const QList<RunningApp>& running) {
  if (scheduler_->reference() < runningAppsHeldUntil_) {
    deferredApps_ = running;
    return;
  }
  deferredApps_.reset();
  if (running == runningApps_) return;
  runningApps_ = running;
  Q_EMIT runningAppsChanged();
}

}  // namespace tarnwick
