#include "store/UndoableEdits.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <algorithm>

#include "base/DomainError.h"
#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "store/WidgetPlaces.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString full() { return QCoreApplication::translate("AppStore", "This dock already has 150 widgets."); }

}  // namespace

UndoableEdits::UndoableEdits(AppStore& store, InstalledApps& apps, UndoStack& undo)
    : store_(store), apps_(apps), undo_(undo) {}

QString UndoableEdits::nameOf(const DockWidget& widget) const {
  const QString path = widget.options.value(u"path"_s);
  if (!widget.title.isEmpty()) return widget.title;
  if (path.isEmpty()) return Catalog::find(widget.kind).name;
  if (!PinnedTiles::isDesktopEntry(path)) return QFileInfo(path).fileName();
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
  return place(widgets, store_.profileIndex(display), before);
}

bool UndoableEdits::append(const QList<DockWidget>& widgets, const QUuid& profile) {
  const QList<DockProfile>& profiles = store_.config().profiles;
  const auto found = std::ranges::find(profiles, profile, &DockProfile::id);
  return found != profiles.end() && place(widgets, found - profiles.begin(), {});
}

bool UndoableEdits::place(const QList<DockWidget>& widgets, qsizetype profile, const QUuid& before) {
  if (widgets.isEmpty()) return false;
  DockConfiguration changed = store_.config();
  QList<QUuid> added;
  for (const DockWidget& widget : widgets) {
    if (!WidgetPlaces::insert(changed, profile, widget, before)) {
      store_.setError(full());
      return false;
    }
    added << widget.id;
  }
  store_.edit([&](DockConfiguration& config) { config = changed; });
  const QString sentence = added.size() == 1 ? tr("“%1” was added to the dock.").arg(nameOf(widgets.first()))
                                             : tr("%1 tiles were added to the dock.").arg(added.size());
  undo_.push(sentence, [self = QPointer(this), added] {
    if (self) self->removeAll(added);
  });
  return true;
}

void UndoableEdits::removeAll(const QList<QUuid>& widgets) {
  store_.edit([&](DockConfiguration& config) {
    for (const QUuid& widget : widgets) DocumentEdits::remove(config, widget);
  });
}

void UndoableEdits::remove(const QUuid& id) {
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
    if (!came) throw DomainError::invalid(full());
  };
  const auto forget = [self = QPointer(this), id] {
    if (!self || DocumentEdits::find(self->store_.config(), id)) return;
    self->store_.remove(id);
  };
  undo_.push(tr("“%1” was removed from the dock.").arg(nameOf(widget)), putBack, forget);
}

}  // namespace tarnwick
