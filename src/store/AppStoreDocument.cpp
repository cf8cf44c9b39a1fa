// The part of the store that changes the document and what hangs on it.
#include <algorithm>

#include <QFileInfo>
#include <QPointer>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/ProbeCounters.h"
#include "config/ForeignOptions.h"
#include "config/Persistence.h"
#include "config/Reordering.h"
#include "dock/rules/ProfileRules.h"
#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "store/WidgetPlaces.h"
#include "widgets/HabitMath.h"
#include "widgets/PinnedTiles.h"
#include "widgets/TimerActions.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

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
    shown.removeIf([](const DockWidget& widget) { return KindTraits::of(widget.kind).isPinnedWindow; });
  }
  return shown;
}

QList<RunningApp> AppStore::unpinnedRunningApps(const QString& display) const {
  // An entry that the user overrides in another folder is the same application.
  const auto idOf = [this](const QString& path) { return installedApps_.environment().desktopIdOf(path); };
  QList<RunningApp> apps = PinnedTiles::unheld(runningApps_, displayedWidgets(display), idOf);
  const WindowScope scope = windowScope(display);
  for (RunningApp& app : apps) app = app.within(scope);
  apps.removeIf([](const RunningApp& app) { return app.windows.isEmpty(); });
  return apps;
}

WindowScope AppStore::windowScope(const QString& display) const {
  const DeskOptions desk = config_.desk();
  return {desk.workspaceWindows, desk.displayWindows ? display : QString()};
}

DockConfiguration AppStore::edit(const std::function<void(DockConfiguration&)>& change) {
  DockConfiguration changed = config_;
  change(changed);
  if (changed == config_) return changed;
  if (Persistence::isTooLarge(changed) && !Persistence::isTooLarge(config_)) {
    setError(tr("The change was not made: the settings would be larger than 64 MB and could not be read again."));
    return config_;
  }
  config_ = changed;
  configDidChange(Saving::InTime);
  return changed;
}

DockConfiguration AppStore::editProfiles(const std::function<void(DockConfiguration&)>& change) {
  const auto shown = [this] {
    return std::tuple(profile().id, config_.desktopOptions().displayProfiles, config_.weatherUsesFahrenheit());
  };
  const auto before = shown();
  DockConfiguration changed = edit(change);
  if (shown() != before) refreshAll();
  return changed;
}

DockConfiguration AppStore::replace(const DockConfiguration& document) {
  remote_.cancelAll();
  const DockConfiguration changed = edit([&](DockConfiguration& config) { config = document; });
  refreshAll();
  return changed;
}

void AppStore::configDidChange(Saving saving) {
  ProbeCounters::count("config");
  refreshActiveWidgetIndex();
  if (ready_ && saving == Saving::InTime) scheduleSave();
  Q_EMIT configChanged();
}

void AppStore::followLoginEntry(bool launches) {
  if (config_.launchAtLogin == launches) return;
  config_.launchAtLogin = launches;
  // No difference that a later save would have to hurry for.
  layoutSignature_ = LayoutSignature(config_);
  configDidChange(Saving::None);
}

QList<DockWidget> AppStore::shownWidgets() const {
  // What any display shows counts, pinned profiles included; what one that has no dock now would show does not.
  QList<qsizetype> profiles{config_.activeIndex()};
  QList<DockWidget> shown = widgets();
  const DesktopOptions& options = config_.desktopOptions();
  for (auto pin = options.displayProfiles.cbegin(); pin != options.displayProfiles.cend(); ++pin) {
    const qsizetype index = profileIndex(pin.key());
    const bool isShown = !dockDisplays_ || dockDisplays_->contains(pin.key());
    if (!isShown || profiles.contains(index)) continue;
    profiles << index;
    shown += config_.profiles[index].widgets;
  }
  return shown;
}

void AppStore::refreshActiveWidgetIndex() {
  active_ = ActiveSets::of(shownWidgets());
  for (const DockProfile& profile : config_.profiles) {
    for (const DockWidget& widget : profile.widgets) {
      if (widget.options.value(option::connectionMode) == value::perplexitySession) sessionReaders_.insert(widget.id);
    }
  }
  system_->follow(active_);
  remote_.follow(config_, active_);
}

void AppStore::set(QUuid id, const QString& key, const std::optional<QString>& value) {
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

QList<DockWidget> AppStore::addWidgets(QList<DockWidget> widgets, QUuid profile, QUuid before) {
  const auto home = std::ranges::find(config_.profiles, profile, &DockProfile::id);
  if (home == config_.profiles.end() || widgets.isEmpty()) return {};
  const qsizetype index = home - config_.profiles.begin();
  try {
    const DockConfiguration changed = edit([&](DockConfiguration& config) {
      for (DockWidget& widget : widgets) {
        if (widget.id.isNull() || DocumentEdits::find(std::as_const(config), widget.id))
          widget.id = QUuid::createUuid();
        widget = DockConfiguration::validated(widget);
        if (!WidgetPlaces::insert(config, index, widget, before)) throw DomainError::invalid(fullDock());
      }
    });
    // The document may have grown too large for them.
    if (DocumentEdits::find(changed, widgets.constFirst().id)) return widgets;
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
  return {};
}

QUuid AppStore::addWidget(const DockWidget& widget, QUuid profile) {
  const QList<DockWidget> added = addWidgets({widget}, profile);
  return added.isEmpty() ? QUuid() : added.first().id;
}

QUuid AppStore::add(const QString& kind, QUuid profile) {
  return addWidget({{}, kind, {}, {}}, profile.isNull() ? this->profile().id : profile);
}

void AppStore::remove(QUuid id) {
  edit([&](DockConfiguration& config) { DocumentEdits::remove(config, id); });
  forgetCredentials({id});
}

void AppStore::forgetCredentials(const QList<QUuid>& widgets) {
  QList<QUuid> gone = widgets;
  gone.removeIf([this](const QUuid& id) { return DocumentEdits::find(std::as_const(config_), id); });
  if (gone.isEmpty()) return;
  credentials_.remove(gone, [self = QPointer(this)](const QString& message) {
    if (self) self->setError(tr("A stored credential could not be removed: ") + message);
  });
  const auto had = sessionReaders_.size();
  sessionReaders_.subtract({gone.cbegin(), gone.cend()});
  if (had > 0 && sessionReaders_.isEmpty()) credentials_.endSession();
}

void AppStore::move(QUuid id, int places) {
  edit([&](DockConfiguration& config) { DocumentEdits::move(config, id, places); });
}

void AppStore::moveDisplayed(qsizetype from, qsizetype to, const QString& display) {
  QList<QUuid> order;
  for (const DockWidget& widget : displayedWidgets(display)) order.append(widget.id);
  const QList<QUuid> wanted = Reordering::reordered(order, from, to);
  if (wanted == order) return;
  edit([&](DockConfiguration& config) { DocumentEdits::arrange(config, profileIndex(display), wanted); });
}

DockConfiguration AppStore::newProfile(const QString& name, bool duplicate) {
  return editProfiles([&](DockConfiguration& config) { DocumentEdits::newProfile(config, name, duplicate); });
}

void AppStore::selectProfile(QUuid id) {
  edit([&](DockConfiguration& config) { config.activeProfileID = id; });
  refreshAll();
}

void AppStore::selectProfile(QUuid id, const QString& display) {
  if (!isPinned(display)) return selectProfile(id);
  pinDisplay(display, id);
}

void AppStore::applyProfileRules(const QDateTime& at) {
  const QList<ProfileRule>& rules = config_.desktop.profileRules;
  if (rules.isEmpty()) return;
  const auto wanted = ProfileRules::matching(rules, config_.profiles, ProfileRules::components(at));
  if (wanted && *wanted != profile().id) selectProfile(*wanted);
}

DockConfiguration AppStore::pinDisplay(const QString& display, const std::optional<QUuid>& profile) {
  DockConfiguration changed = edit([&](DockConfiguration& config) { DocumentEdits::pin(config, display, profile); });
  refreshAll();
  return changed;
}

DockConfiguration AppStore::deleteProfile(QUuid id) {
  return editProfiles([&](DockConfiguration& config) { DocumentEdits::deleteProfile(config, id); });
}

void AppStore::addTodo(const QString& text) {
  edit([&](DockConfiguration& config) { DocumentEdits::addTodo(config, text); });
}

void AppStore::toggleTodo(QUuid id) {
  edit([&](DockConfiguration& config) { DocumentEdits::toggleTodo(config, id); });
}

// --- Timers and habits ----------------------------------------------------------------------------------------------

void AppStore::changeWidget(QUuid id, const std::function<DockWidget(const DockWidget&)>& change) {
  if (const DockWidget* widget = DocumentEdits::find(config_, id)) update(change(*widget));
}

void AppStore::toggleTimer(QUuid id) {
  changeWidget(id, [this](const DockWidget& widget) { return TimerActions::toggled(widget, now()); });
}

void AppStore::resetTimer(QUuid id) {
  changeWidget(id, [](const DockWidget& widget) { return TimerActions::reset(widget); });
}

void AppStore::drink(QUuid id, int glasses) {
  changeWidget(id, [&](const DockWidget& widget) { return WaterMath::drunk(widget, now(), glasses); });
}

int AppStore::waterCount(const DockWidget& widget) const { return WaterMath::count(widget, now()); }

void AppStore::toggleHabit(QUuid id) {
  changeWidget(id, [this](const DockWidget& widget) { return HabitMath::toggled(widget, now()); });
}

void AppStore::advanceProductivity(const QDateTime& at) {
  QList<TimerActions::Beat> beats;
  for (const DockProfile& profile : std::as_const(config_.profiles)) {
    for (const DockWidget& widget : profile.widgets) {
      if (!TimerActions::mayBeat(widget)) continue;
      TimerActions::Beat beat = TimerActions::beat(widget, at);
      if (beat.widget != widget) beats.append(std::move(beat));
    }
  }
  for (const TimerActions::Beat& beat : beats) {
    update(beat.widget);
    if (!beat.announcement.isEmpty()) call(beat.widget, beat.announcement);
  }
}

// --- Files of the user's choice -------------------------------------------------------------------------------------

void AppStore::exportConfiguration(const QString& path) {
  try {
    DurableFile::writeAtomically(Persistence::encode(config_), path);
  } catch (const DomainError& failure) {
    setError(failure.message());
  }
}

bool AppStore::takeImported(DockConfiguration imported, Origin origin) {
  if (origin == Origin::Elsewhere) ForeignOptions::leaveOut(imported, config_);
  // What this computer starts at login is no matter of a file.
  imported.launchAtLogin = config_.launchAtLogin;
  return replace(imported) == imported;
}

}  // namespace tarnwick
