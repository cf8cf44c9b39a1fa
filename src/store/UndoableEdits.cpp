#include "store/UndoableEdits.h"
#include "store/AddedWords.h"

#include <QFileInfo>
#include <QPointer>
#include <QScopedValueRollback>
#include <QSet>
#include <algorithm>
#include <utility>

#include "base/DomainError.h"
#include "base/LocalFigures.h"
#include "config/KeptSettings.h"
#include "config/Persistence.h"
#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "store/WidgetEditor.h"
#include "store/WidgetPlaces.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

/// Within so many seconds a change of the same fields belongs to the one before.
constexpr double kRun = 1;

QList<QUuid> idsOf(const QList<DockWidget>& widgets) {
  QList<QUuid> ids;
  for (const DockWidget& widget : widgets) ids.append(widget.id);
  return ids;
}

QList<QUuid> idsOf(const DockProfile& profile) { return idsOf(profile.widgets); }

/// The widgets of one document that another has not.
QList<QUuid> lostBetween(const DockConfiguration& before, const DockConfiguration& after) {
  if (before.profiles == after.profiles) return {};
  QSet<QUuid> lost;
  for (const DockProfile& profile : before.profiles)
    for (const DockWidget& widget : profile.widgets) lost.insert(widget.id);
  for (const DockProfile& profile : after.profiles)
    for (const DockWidget& widget : profile.widgets) lost.remove(widget.id);
  return lost.values();
}

/// The options whose values differ.
QStringList differing(const DockWidget& one, const DockWidget& other) {
  QStringList keys = one.options.keys() + other.options.keys();
  keys.removeDuplicates();
  keys.removeIf([&](const QString& key) { return one.options.value(key) == other.options.value(key); });
  keys.sort();
  return keys;
}

}  // namespace

UndoableEdits::UndoableEdits(AppStore& store, InstalledApps& apps, UndoStack& undo)
    : store_(store), apps_(apps), undo_(undo) {}

QString UndoableEdits::nameOf(const DockWidget& widget) const {
  const QString path = widget.options.value(option::path);
  if (!widget.title.isEmpty()) return widget.title;
  if (path.isEmpty()) return Catalog::find(widget.kind).name;
  if (!PinnedTiles::isDesktopEntry(path)) return PinnedTiles::nameOf(path);
  const auto entry = apps_.byPath(path);
  return entry ? entry->name : QFileInfo(path).completeBaseName();
}

bool UndoableEdits::isHeld(const QString& path, const QString& display) const {
  const auto idOf = [this](const QString& each) { return apps_.environment().desktopIdOf(each); };
  return PinnedTiles::hold(store_.displayedWidgets(display), path, idOf);
}

bool UndoableEdits::insert(const QList<DockWidget>& widgets, const QString& display, qsizetype index) {
  const QList<DockWidget> shown = store_.displayedWidgets(display);
  const QUuid before = index >= 0 && index < shown.size() ? shown[index].id : QUuid();
  const QUuid profile = store_.profile(display).id;
  const QList<DockWidget> added = store_.addWidgets(widgets, profile, before);
  if (added.isEmpty()) return false;
  const QString sentence = added.size() == 1
                               ? addedSentence(nameOf(added.first()), store_.config(), profile)
                               : tr("%1 widgets were added to the dock.").arg(LocalFigures::number(added.size()));
  pushAdded(idsOf(added), {sentence, display});
  // One that was set up elsewhere shows its value at once.
  store_.refreshShown(idsOf(added));
  return true;
}

QUuid UndoableEdits::add(const QString& kind, QUuid profile) {
  const QUuid added = store_.add(kind, profile);
  if (!added.isNull()) pushAdded({added}, {});
  return added;
}

QUuid UndoableEdits::addWidget(const DockWidget& widget, QUuid profile) {
  const QUuid added = store_.addWidget(widget, profile);
  if (!added.isNull()) pushAdded({added}, {});
  return added;
}

void UndoableEdits::pushAdded(const QList<QUuid>& added, const UndoStack::Notice& notice) {
  const auto removed = std::make_shared<QList<Removed>>();
  undo_.push(
      notice,
      [self = QPointer(this), added, removed] {
        if (self) self->takeAway(added, removed);
      },
      [self = QPointer(this), removed] {
        if (self) self->putBack(removed);
      });
}

/// Takes tiles off as they are, and keeps them.
void UndoableEdits::takeAway(const QList<QUuid>& widgets, const RemovedTiles& removed) {
  removed->clear();
  store_.edit([&](DockConfiguration& config) {
    for (const QUuid& id : widgets) {
      const DockWidget* stored = DocumentEdits::find(std::as_const(config), id);
      const auto place = WidgetPlaces::of(config, id);
      if (!stored || !place) continue;
      removed->append({*stored, *place});
      DocumentEdits::remove(config, id);
    }
  });
}

/// The last that went comes first: its neighbour is what it stood before.
void UndoableEdits::putBack(const RemovedTiles& removed) {
  store_.edit([&](DockConfiguration& config) {
    for (auto tile = removed->crbegin(); tile != removed->crend(); ++tile) {
      const bool isThere = WidgetPlaces::putBack(config, tile->widget, tile->place) ||
                           DocumentEdits::find(std::as_const(config), tile->widget.id);
      if (!isThere) throw DomainError::invalid(AppStore::fullDock());
    }
  });
  QList<QUuid> back;
  for (const Removed& tile : std::as_const(*removed)) back << tile.widget.id;
  store_.refreshShown(back);
}

void UndoableEdits::remove(QUuid id, const QString& display) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), id);
  if (!stored) return;
  const QString name = nameOf(*stored);
  const auto removed = std::make_shared<QList<Removed>>();
  takeAway({id}, removed);
  const auto back = [self = QPointer(this), removed] {
    if (self) self->putBack(removed);
  };
  const auto again = [self = QPointer(this), id, removed] {
    if (self) self->takeAway({id}, removed);
  };
  const auto forget = [self = QPointer(this), id] {
    if (!self || DocumentEdits::find(self->store_.config(), id)) return;
    self->store_.remove(id);
  };
  undo_.push({tr("“%1” was removed from the dock.").arg(name), display}, back, again, forget);
}

// --- Order ----------------------------------------------------------------------------------------------------------

void UndoableEdits::move(QUuid widget, int places) {
  const auto place = WidgetPlaces::of(store_.config(), widget);
  if (!place) return;
  const QList<DockProfile>& profiles = store_.config().profiles;
  const auto profile = std::ranges::find(profiles, place->profile, &DockProfile::id);
  rearrange(profile - profiles.begin(), [&] { store_.move(widget, places); });
}

void UndoableEdits::moveShown(const QString& display, qsizetype from, qsizetype to) {
  rearrange(store_.profileIndex(display), [&] { store_.moveDisplayed(from, to, display); });
}

void UndoableEdits::moveTo(QUuid widget, const QString& display, qsizetype index) {
  const auto before = WidgetPlaces::of(store_.config(), widget);
  if (!before) return;
  const QList<DockWidget> shown = store_.displayedWidgets(display);
  const bool isInside = index >= 0 && index < shown.size();
  const DockProfile& profile = store_.profile(display);
  if (before->profile == profile.id) {
    const qsizetype from = std::ranges::find(shown, widget, &DockWidget::id) - shown.begin();
    const qsizetype to = isInside ? index : shown.size();
    return moveShown(display, from, to > from ? to - 1 : to);
  }
  try {
    place(widget, {profile.id, profile.widgets.size(), isInside ? shown[index].id : QUuid()});
  } catch (const DomainError& failure) {
    return store_.setError(failure.message());
  }
  const auto after = WidgetPlaces::of(store_.config(), widget);
  if (!after || after == before) return;
  const auto bring = [self = QPointer(this), widget](const WidgetPlace& to) {
    return [self, widget, to] {
      if (self) self->place(widget, to);
    };
  };
  // It is seen where it is, as after any other move.
  undo_.push({}, bring(*before), bring(*after));
}

/// Takes a widget that is there to another place, with the settings that it has now. Throws DomainError where that is
/// full.
void UndoableEdits::place(const QUuid& widget, const WidgetPlace& place) {
  store_.edit([&](DockConfiguration& config) {
    const DockWidget* stored = DocumentEdits::find(std::as_const(config), widget);
    if (!stored) return;
    const DockWidget moved = *stored;
    DocumentEdits::remove(config, widget);
    if (!WidgetPlaces::putBack(config, moved, place)) throw DomainError::invalid(AppStore::fullDock());
  });
}

void UndoableEdits::rearrange(qsizetype profile, const std::function<void()>& move) {
  const QUuid id = store_.config().profiles[profile].id;
  const QList<QUuid> before = idsOf(store_.config().profiles[profile]);
  move();
  if (idsOf(store_.config().profiles[profile]) == before) return;
  // What was moved is seen where it is: nothing need be said.
  const auto bring = [self = QPointer(this), id](const QList<QUuid>& order) {
    return [self, id, order] {
      if (self) self->bringBackOrder(id, order);
    };
  };
  undo_.push({}, bring(before), bring(idsOf(store_.config().profiles[profile])));
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

void UndoableEdits::update(const DockWidget& widget, const UndoStack::Notice& notice) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), widget.id);
  if (!stored) return;
  const DockWidget before = *stored;
  store_.update(widget);
  stored = DocumentEdits::find(store_.config(), widget.id);
  if (!stored || *stored == before) return;
  QStringList options = differing(before, *stored);
  options.removeIf(&WidgetEditor::isRunningState);
  const bool isAnnounced = !notice.sentence.isEmpty();
  if (!isAnnounced && goesOn(widgetRun_, widget.id, options)) {
    *widgetRun_.after = *stored;
  } else {
    const auto after = std::make_shared<DockWidget>(*stored);
    widgetRun_ = {.options = options, .before = before, .after = after};
    widgetRun_.entry = undo_.push(
        notice,
        [self = QPointer(this), before, after] {
          if (self) self->bringBackValues(before, *after);
        },
        [self = QPointer(this), before, after] {
          if (self) self->bringBackValues(*after, before);
        });
  }
  widgetRun_.last = store_.scheduler().reference();
  if (isAnnounced) widgetRun_ = {};  // The sentence is about this change alone.
}

bool UndoableEdits::goesOn(const WidgetRun& run, const QUuid& widget, const QStringList& options) const {
  const auto latest = undo_.latest();
  return run.after && latest && latest->id == run.entry && run.before.id == widget && run.options == options &&
         store_.scheduler().reference() - run.last < kRun;
}

void UndoableEdits::bringBackValues(const DockWidget& before, const DockWidget& after) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), before.id);
  if (!stored) return;
  DockWidget widget = *stored;
  if (before.title != after.title) widget.title = before.title;
  for (const QString& key : differing(before, after)) {
    if (WidgetEditor::isRunningState(key)) continue;
    // Another duration starts a timer over, in either direction.
    if (key == option::minutes)
      for (const QLatin1StringView running : {option::deadline, option::remaining}) widget.options.remove(running);
    if (before.options.contains(key))
      widget.options.insert(key, before.options.value(key));
    else
      widget.options.remove(key);
  }
  if (widget == *stored) return;
  store_.update(widget);
  store_.refreshShown({widget.id});
}

// --- Settings -------------------------------------------------------------------------------------------------------

void UndoableEdits::change(const std::function<void(DockConfiguration&)>& change) {
  record([&] { return store_.editProfiles(change); });
}

void UndoableEdits::newProfile(const QString& name, bool duplicate) {
  record([&] { return store_.newProfile(name, duplicate); });
}

void UndoableEdits::deleteProfile(QUuid profile) {
  record([&] { return store_.deleteProfile(profile); });
}

void UndoableEdits::pinDisplay(const QString& display, const std::optional<QUuid>& profile) {
  record([&] { return store_.pinDisplay(display, profile); });
}

void UndoableEdits::record(const std::function<DockConfiguration()>& act) {
  const DockConfiguration before = store_.config();
  // What listeners change in response is theirs.
  const DockConfiguration after = act();
  const SettingsChange made(before, after);
  if (made.isEmpty()) return;
  const QList<QUuid> lost = lostBetween(before, after);
  if (goesOn(made)) {
    run_.change->goOn(made);
    *run_.lost += lost;
    if (run_.change->isEmpty()) undo_.withdraw(std::exchange(run_, {}).entry);
  } else {
    run_.change = std::make_shared<SettingsChange>(made);
    run_.lost = std::make_shared<QList<QUuid>>(lost);
    run_.entry = undo_.push(
        {},
        [self = QPointer(this), step = run_.change] {
          if (self) self->takeBack(*step);
        },
        [self = QPointer(this), step = run_.change] {
          if (self) self->takeBack(step->reversed());
        },
        [self = QPointer(this), lost = run_.lost] {
          if (self) self->store_.forgetCredentials(*lost);
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

// --- Settings of a file ---------------------------------------------------------------------------------------------

void UndoableEdits::importConfiguration(const QString& path, std::function<void(bool taken)> done) {
  importFrom(
      AppStore::Origin::Elsewhere, [path] { return Persistence::read(path); }, std::move(done));
}

void UndoableEdits::importKept(const QString& path, std::function<void(bool taken)> done) {
  importFrom(
      AppStore::Origin::OwnFolder, [path] { return KeptSettings::read(path); }, std::move(done));
}

/// `decode` runs on another thread.
void UndoableEdits::importFrom(AppStore::Origin origin, const std::function<DockConfiguration()>& decode,
                               std::function<void(bool taken)> done) {
  struct Read {
    std::optional<DockConfiguration> imported;
    QString failure;
  };
  const auto read = [decode](const std::stop_token&) -> Read {
    try {
      return {decode(), {}};
    } catch (const DomainError& failure) {
      return {std::nullopt, failure.message()};
    }
  };
  reading_.start(read, [this, origin, done = std::move(done)](const Read& found) {
    if (!found.imported) store_.setError(found.failure);
    const bool taken = found.imported && takeImport(*found.imported, origin);
    if (done) done(taken);
  });
}

bool UndoableEdits::takeImport(const DockConfiguration& imported, AppStore::Origin origin) {
  const DockConfiguration before = store_.config();
  {
    const QScopedValueRollback importing(isImporting_, true);
    if (!store_.takeImported(imported, origin)) return false;
  }
  if (store_.config() == before) return true;
  const auto import = std::make_shared<Import>(Import{{before, store_.config()}, lostBetween(before, store_.config())});
  watchImport(import);
  const auto back = [self = QPointer(this), import] {
    if (!self) return;
    self->imports_.removeOne(import);
    self->takeBackImport(import->change);
  };
  const auto again = [self = QPointer(this), import] {
    if (!self) return;
    self->takeBackImport(import->change.reversed());
    self->watchImport(import);
  };
  const auto forget = [self = QPointer(this), import] {
    if (!self) return;
    self->imports_.removeOne(import);
    self->store_.forgetCredentials(import->lost);
  };
  import->entry = undo_.push(tr("Your settings were replaced with those of a file."), back, again, forget);
  return true;
}

void UndoableEdits::watchImport(const std::shared_ptr<Import>& import) {
  imports_ << import;
  connect(&store_, &AppStore::configChanged, this, &UndoableEdits::forgetChangedImports, Qt::UniqueConnection);
}

void UndoableEdits::takeBackImport(const DocumentChange& change) {
  const auto wanted = change.takenBack(store_.config());
  if (!wanted) throw DomainError::invalid(tr("The settings have been changed since then and were left as they are."));
  const QScopedValueRollback importing(isImporting_, true);
  store_.replace(*wanted);
}

void UndoableEdits::forgetChangedImports() {
  if (isImporting_ || imports_.isEmpty()) return;
  // What a later one put in the place of an earlier one's is no change of that: each is held against the document as it
  // would be without those after it.
  DockConfiguration beneath = store_.config();
  QList<std::shared_ptr<Import>> changed;
  for (auto import = imports_.crbegin(); import != imports_.crend(); ++import) {
    if (const auto back = (*import)->change.takenBack(beneath))
      beneath = *back;
    else
      changed << *import;
  }
  for (const auto& import : std::as_const(changed)) {
    imports_.removeOne(import);
    undo_.withdraw(import->entry);
    store_.forgetCredentials(import->lost);
  }
}

}  // namespace tarnwick
