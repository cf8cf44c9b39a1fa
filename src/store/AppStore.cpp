#include "store/AppStore.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/ProbeCounters.h"
#include "config/DataDirectory.h"
#include "config/Persistence.h"
#include "config/Reordering.h"
#include "config/SaveSchedule.h"
#include "config/SettingsLoader.h"
#include "dock/rules/ProfileRules.h"
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
    const bool exists = QFileInfo::exists(storagePath_);
    const SettingsLoader::Result loaded = SettingsLoader::load(storagePath_, now().toSecsSinceEpoch());
    config_ = loaded.configuration;
    if (!loaded.error.isEmpty()) setError(loaded.error);
    if (!loaded.ready) return false;
    hasRead_ = exists && loaded.error.isEmpty();
  }
  layoutSignature_ = LayoutSignature(config_);
  ready_ = true;
  return true;
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
  services_.timers->advance(moment);
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

// --- The document ---------------------------------------------------------------------------------------------------

QString AppStore::dataDirectory() const { return QFileInfo(storagePath_).path(); }

const DockProfile& AppStore::profile() const { return config_.profiles[config_.activeIndex()]; }

const QList<DockWidget>& AppStore::widgets() const { return profile().widgets; }

qsizetype AppStore::profileIndex(const QString& display) const { return DocumentEdits::profileIndex(config_, display); }

bool AppStore::isPinned(const QString& display) const { return DocumentEdits::isPinned(config_, display); }

QList<DockWidget> AppStore::displayedWidgets(const QString& display) const {
  const qsizetype index = profileIndex(display);
  if (index < 0 || index >= config_.profiles.size()) return {};
  QList<DockWidget> shown = config_.profiles[index].widgets;
  if (!config_.desktopOptions().showPinnedWindows) {
    shown.removeIf([](const DockWidget& widget) { return widget.kind == "pinnedWindow"_L1; });
  }
  return shown;
}

QList<RunningApp> AppStore::unpinnedRunningApps(const QString& display) const {
  QSet<QString> held;
  for (const DockWidget& widget : displayedWidgets(display)) {
    held.insert(widget.options.value(u"path"_s));
    for (const QString& path : widget.options.value(u"paths"_s).split(u'\n', Qt::SkipEmptyParts)) held.insert(path);
  }
  held.remove(QString());
  QList<RunningApp> unpinned = runningApps_;
  unpinned.removeIf([&](const RunningApp& app) { return held.contains(app.path); });
  return unpinned;
}

void AppStore::edit(const std::function<void(DockConfiguration&)>& change) {
  DockConfiguration changed = config_;
  change(changed);
  if (changed == config_) return;
  config_ = std::move(changed);
  configDidChange();
}

void AppStore::configDidChange() {
  ProbeCounters::count("config");
  refreshActiveWidgetIndex();
  if (ready_) scheduleSave();
  Q_EMIT configChanged();
}

QList<DockWidget> AppStore::shownWidgets() const {
  // What any display shows counts, pinned profiles included.
  QList<qsizetype> profiles{config_.activeIndex()};
  QList<DockWidget> shown = widgets();
  const DesktopOptions options = config_.desktopOptions();
  for (auto pin = options.displayProfiles.cbegin(); pin != options.displayProfiles.cend(); ++pin) {
    const qsizetype index = profileIndex(pin.key());
    if (profiles.contains(index)) continue;
    profiles << index;
    shown += config_.profiles[index].widgets;
  }
  return shown;
}

void AppStore::refreshActiveWidgetIndex() {
  active_ = ActiveSets::of(shownWidgets());
  system_->setNeeded(active_.families.contains("metric"_L1));
}

void AppStore::set(const QUuid& id, const QString& key, const std::optional<QString>& value) {
  edit([&](DockConfiguration& config) { DocumentEdits::setOption(config, id, key, value); });
}

void AppStore::update(const DockWidget& widget) {
  try {
    const DockWidget valid = DockConfiguration::validated(widget);
    edit([&](DockConfiguration& config) { DocumentEdits::update(config, valid); });
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
}

void AppStore::add(const QString& kind) {
  DockWidget widget;
  widget.kind = kind;
  addWidget(widget);
}

void AppStore::addWidget(const DockWidget& widget) {
  try {
    DockWidget valid = widget;
    if (valid.id.isNull() || DocumentEdits::find(config_, valid.id)) valid.id = QUuid::createUuid();
    valid = DockConfiguration::validated(valid);
    bool added = false;
    edit([&](DockConfiguration& config) {
      added = DocumentEdits::add(config, DocumentEdits::profileIndex(config, activeDisplay), valid);
    });
    if (!added) setError(tr("This dock already has 150 widgets."));
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
}

void AppStore::remove(const QUuid& id) {
  edit([&](DockConfiguration& config) { DocumentEdits::remove(config, id); });
  try {
    services_.credentials->remove(id);
  } catch (const DomainError& failure) {
    setError(tr("A stored credential could not be removed: ") + failure.message());
  }
}

void AppStore::move(const QUuid& id, int places) {
  edit([&](DockConfiguration& config) { DocumentEdits::move(config, id, places); });
}

void AppStore::moveDisplayed(qsizetype from, qsizetype to) {
  QList<QUuid> order;
  for (const DockWidget& widget : displayedWidgets()) order.append(widget.id);
  const QList<QUuid> wanted = Reordering::reordered(order, from, to);
  if (wanted == order) return;
  edit([&](DockConfiguration& config) { DocumentEdits::arrange(config, profileIndex(activeDisplay), wanted); });
}

void AppStore::editProfiles(const std::function<void(DockConfiguration&)>& change) {
  const QUuid before = profile().id;
  edit(change);
  if (profile().id != before) refreshAll();
}

void AppStore::newProfile(const QString& name, bool duplicate) {
  editProfiles([&](DockConfiguration& config) { DocumentEdits::newProfile(config, name, duplicate); });
}

void AppStore::selectProfile(const QUuid& id) {
  edit([&](DockConfiguration& config) { config.activeProfileID = id; });
  refreshAll();
}

void AppStore::selectProfile(const QUuid& id, const QString& display) {
  if (!isPinned(display)) return selectProfile(id);
  pinDisplay(display, id);
}

void AppStore::applyProfileRules(const QDateTime& at) {
  if (!config_.desktop || config_.desktop->profileRules.isEmpty()) return;
  const auto wanted =
      ProfileRules::matching(config_.desktop->profileRules, config_.profiles, ProfileRules::components(at));
  if (wanted && *wanted != profile().id) selectProfile(*wanted);
}

void AppStore::pinDisplay(const QString& display, const std::optional<QUuid>& profile) {
  edit([&](DockConfiguration& config) { DocumentEdits::pin(config, display, profile); });
  refreshAll();
}

void AppStore::deleteProfile(const QUuid& id) {
  editProfiles([&](DockConfiguration& config) { DocumentEdits::deleteProfile(config, id); });
}

void AppStore::addTodo(const QString& text) {
  edit([&](DockConfiguration& config) { DocumentEdits::addTodo(config, text); });
}

void AppStore::toggleTodo(const QUuid& id) {
  edit([&](DockConfiguration& config) { DocumentEdits::toggleTodo(config, id); });
}

void AppStore::exportConfiguration(const QString& path) {
  try {
    DurableFile::writeAtomically(Persistence::encode(config_), path);
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
}

void AppStore::importConfiguration(const QString& path) {
  try {
    const DockConfiguration imported = Persistence::read(path);
    edit([&](DockConfiguration& config) { config = imported; });
    refreshAll();
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
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
  const QDateTime moment = scheduler_->now();
  const auto secondsTo = [&](const QDateTime& other) { return static_cast<double>(moment.msecsTo(other)) / 1000; };
  std::optional<double> sinceLastSave;
  if (lastSave_.isValid()) sinceLastSave = -secondsTo(lastSave_);
  std::optional<double> pendingIn;
  if (saveWork_) pendingIn = saveDue_ - scheduler_->reference();

  const double delay = SaveSchedule::delay(layoutDiffers, sinceLastSave, pendingIn);
  saveDue_ = scheduler_->reference() + delay;
  saveWork_ = scheduler_->after(delay, [this] { save(); });
}

void AppStore::save() {
  if (!ready_ || diagnostic_) return;
  if (const QString failure = writeSettings(); !failure.isEmpty()) setError(failure);
}

void AppStore::saveAtTheEnd() {
  if (!ready_ || diagnostic_) return;
  if (const QString failure = writeSettings(); !failure.isEmpty()) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
  }
}

/// Gives what went wrong.
QString AppStore::writeSettings() {
  saveWork_.reset();
  lastSave_ = scheduler_->now();
  try {
    Persistence::save(config_, storagePath_);
    return {};
  } catch (const DomainError& failure) {
    return tr("Settings could not be saved: ") + failure.message();
  }
}

void AppStore::shutdown() {
  if (down_) return;
  down_ = true;
  if (installedApps_) installedApps_->stop();
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
}

// --- Messages, remote values, running applications ------------------------------------------------------------------

void AppStore::setError(const QString& message) {
  if (error_ == message) return;
  error_ = message;
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
  if (config_.notificationsEnabled && notifications_) notifications_->post(title, body);
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
