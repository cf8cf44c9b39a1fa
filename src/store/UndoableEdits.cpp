#include "store/UndoableEdits.h"

#include <QFileInfo>
#include <QPointer>
#include <algorithm>
#include <utility>

#include "base/DomainError.h"
#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "store/WidgetEditor.h"
#include "store/WidgetPlaces.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Within so many seconds a change of the same fields belongs to the one before.
constexpr double kRun = 1;

QList<QUuid> idsOf(const DockProfile& profile) {
  QList<QUuid> ids;
  for (const DockWidget& widget : profile.widgets) ids.append(widget.id);
  return ids;
}

}  // namespace

UndoableEdits::UndoableEdits(AppStore& store, InstalledApps& apps, UndoStack& undo)
    : store_(store), apps_(apps), undo_(undo) {}

QString UndoableEdits::nameOf(const DockWidget& widget) const {
  const QString path = widget.options.value(u"path"_s);
  if (!widget.title.isEmpty()) return widget.title;
  if (path.isEmpty()) return Catalog::find(widget.kind).name;
  if (!PinnedTiles::isDesktopEntry(path)) return PinnedTiles::nameOf(path);
  const auto entry = apps_.byPath(path);
  return entry ? entry->name : QFileInfo(path).completeBaseName();
}

bool UndoableEdits::isHeld(const QString& path, const QString& display) const {
  const auto idOf = [this](const QString& each) { return apps_.environment().desktopIdOf(each); };
  RunningApp there;
  there.path = path;
  there.desktopId = idOf(path);
  return PinnedTiles::unheld({there}, store_.displayedWidgets(display), idOf).isEmpty();
}

bool UndoableEdits::insert(const QList<DockWidget>& widgets, const QString& display, qsizetype index) {
  const QList<DockWidget> shown = store_.displayedWidgets(display);
  const QUuid before = index >= 0 && index < shown.size() ? shown[index].id : QUuid();
  if (!place(widgets, store_.profileIndex(display), before)) return false;
  const QString sentence = widgets.size() == 1 ? tr("“%1” was added to the dock.").arg(nameOf(widgets.first()))
                                               : tr("%1 tiles were added to the dock.").arg(widgets.size());
  pushAdded(widgets, {sentence, display});
  return true;
}

QUuid UndoableEdits::append(const DockWidget& widget, const QUuid& profile) {
  DockWidget added = widget;
  added.id = store_.addWidget(widget, profile);
  if (!added.id.isNull()) pushAdded({added}, {});
  return added.id;
}

bool UndoableEdits::place(const QList<DockWidget>& widgets, qsizetype profile, const QUuid& before) {
  if (widgets.isEmpty()) return false;
  DockConfiguration changed = store_.config();
  for (const DockWidget& widget : widgets) {
    if (WidgetPlaces::insert(changed, profile, widget, before)) continue;
    store_.setError(AppStore::fullDock());
    return false;
  }
  store_.edit([&](DockConfiguration& config) { config = changed; });
  return true;
}

void UndoableEdits::pushAdded(const QList<DockWidget>& widgets, const UndoStack::Notice& notice) {
  QList<QUuid> added;
  for (const DockWidget& widget : widgets) added << widget.id;
  undo_.push(notice, [self = QPointer(this), added] {
    if (self) self->removeAll(added);
  });
}

void UndoableEdits::removeAll(const QList<QUuid>& widgets) {
  store_.edit([&](DockConfiguration& config) {
    for (const QUuid& widget : widgets) DocumentEdits::remove(config, widget);
  });
}

void UndoableEdits::remove(const QUuid& id, const QString& display) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), id);
  const auto place = WidgetPlaces::of(store_.config(), id);
  if (!stored || !place) return;
  const DockWidget widget = *stored;
  store_.edit([&](DockConfiguration& config) { DocumentEdits::remove(config, id); });
  const auto putBack = [self = QPointer(this), widget, place] {
    if (!self) return;
    bool came = false;
    self->store_.edit([&](DockConfiguration& config) {
      came = WidgetPlaces::putBack(config, widget, *place) || DocumentEdits::find(std::as_const(config), widget.id);
    });
    if (!came) throw DomainError::invalid(AppStore::fullDock());
  };
  const auto forget = [self = QPointer(this), id] {
    if (!self || DocumentEdits::find(self->store_.config(), id)) return;
    self->store_.remove(id);
  };
  undo_.push({tr("“%1” was removed from the dock.").arg(nameOf(widget)), display}, putBack, forget);
}

// --- Order ----------------------------------------------------------------------------------------------------------

void UndoableEdits::move(const QUuid& widget, int places) {
  const auto place = WidgetPlaces::of(store_.config(), widget);
  if (!place) return;
  const QList<DockProfile>& profiles = store_.config().profiles;
  const auto profile = std::ranges::find(profiles, place->profile, &DockProfile::id);
  rearrange(profile - profiles.begin(), [&] { store_.move(widget, places); });
}

void UndoableEdits::moveShown(const QString& display, qsizetype from, qsizetype to) {
  rearrange(store_.profileIndex(display), [&] { store_.moveDisplayed(from, to, display); });
}

void UndoableEdits::rearrange(qsizetype profile, const std::function<void()>& move) {
  const QUuid id = store_.config().profiles[profile].id;
  const QList<QUuid> before = idsOf(store_.config().profiles[profile]);
  move();
  if (idsOf(store_.config().profiles[profile]) == before) return;
  // What was moved is seen where it is: nothing need be said.
  undo_.push({}, [self = QPointer(this), id, before] {
    if (self) self->bringBackOrder(id, before);
  });
}

void UndoableEdits::bringBackOrder(const QUuid& profile, const QList<QUuid>& order) {
  store_.edit([&](DockConfiguration& config) {
    const auto home = std::ranges::find(config.profiles, profile, &DockProfile::id);
    if (home == config.profiles.end()) return;
    const QList<QUuid> now = idsOf(*home);
    QList<QUuid> wanted;
    std::ranges::copy_if(order, std::back_inserter(wanted), [&](const QUuid& id) { return now.contains(id); });
    DocumentEdits::arrange(config, home - config.profiles.begin(), wanted);
  });
}

// --- Values ---------------------------------------------------------------------------------------------------------

void UndoableEdits::update(const DockWidget& widget) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), widget.id);
  if (!stored) return;
  const DockWidget before = *stored;
  store_.update(widget);
  stored = DocumentEdits::find(store_.config(), widget.id);
  if (!stored || *stored == before) return;
  undo_.push({}, [self = QPointer(this), before, after = *stored] {
    if (self) self->bringBackValues(before, after);
  });
}

void UndoableEdits::bringBackValues(const DockWidget& before, const DockWidget& after) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), before.id);
  if (!stored) return;
  DockWidget widget = *stored;
  if (before.title != after.title) widget.title = before.title;
  QStringList keys = before.options.keys() + after.options.keys();
  keys.removeDuplicates();
  for (const QString& key : std::as_const(keys)) {
    if (WidgetEditor::isRunningState(key) || before.options.value(key) == after.options.value(key)) continue;
    // Another duration starts a timer over, in either direction.
    if (key == "minutes"_L1)
      for (const QString& running : {u"deadline"_s, u"remaining"_s}) widget.options.remove(running);
    if (before.options.contains(key))
      widget.options.insert(key, before.options.value(key));
    else
      widget.options.remove(key);
  }
  store_.update(widget);
}

// --- Settings -------------------------------------------------------------------------------------------------------

void UndoableEdits::change(const std::function<void(DockConfiguration&)>& change) {
  record([&] { return store_.editProfiles(change); });
}

void UndoableEdits::newProfile(const QString& name, bool duplicate) {
  record([&] { return store_.newProfile(name, duplicate); });
}

void UndoableEdits::deleteProfile(const QUuid& profile) {
  record([&] { return store_.deleteProfile(profile); });
}

void UndoableEdits::pinDisplay(const QString& display, const std::optional<QUuid>& profile) {
  record([&] { return store_.pinDisplay(display, profile); });
}

void UndoableEdits::record(const std::function<DockConfiguration()>& act) {
  const DockConfiguration before = store_.config();
  // What others do when they hear of it is theirs.
  const SettingsChange made(before, act());
  if (made.isEmpty()) return;
  if (goesOn(made)) {
    run_.change->goOn(made);
    if (run_.change->isEmpty()) undo_.withdraw(std::exchange(run_, {}).entry);
  } else {
    run_.change = std::make_shared<SettingsChange>(made);
    run_.entry = undo_.push({}, [self = QPointer(this), step = run_.change] {
      if (self) self->takeBack(*step);
    });
  }
  run_.last = store_.scheduler().reference();
}

bool UndoableEdits::goesOn(const SettingsChange& change) const {
  const auto latest = undo_.latest();
  if (!run_.change || !latest || latest->id != run_.entry || run_.change->fields() != change.fields()) return false;
  return isHeld_ || store_.scheduler().reference() - run_.last < kRun;
}

void UndoableEdits::setHeld(bool held) {
  isHeld_ = held;
  run_ = {};
}

void UndoableEdits::takeBack(const SettingsChange& change) {
  store_.editProfiles([&](DockConfiguration& config) { change.takeBack(config); });
}

void UndoableEdits::importConfiguration(const QString& path) {
  const DockConfiguration before = store_.config();
  store_.importConfiguration(path);
  if (store_.config() == before) return;
  undo_.clear();
  undo_.push(tr("The settings of a file took the place of yours."), [self = QPointer(this), before] {
    if (!self) return;
    self->store_.edit([&](DockConfiguration& config) { config = before; });
    self->store_.refreshAll();
  });
}

}  // namespace tarnwick
