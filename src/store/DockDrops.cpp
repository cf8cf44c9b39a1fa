#include "store/DockDrops.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>
#include <algorithm>

#include "apps/AppOpener.h"
#include "apps/RunningApplications.h"
#include "base/DomainError.h"
#include "base/LocalFigures.h"
#include "config/WidgetTransfer.h"
#include "desktop/NearbySharing.h"
#include "store/AppStore.h"
#include "store/Services.h"
#include "widgets/PinnedTiles.h"
#include "widgets/WidgetFolder.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

QString nameOf(const QString& path) { return QFileInfo(path).fileName(); }

FileTransfer transferOf(Qt::DropAction action) {
  switch (action) {
    case Qt::MoveAction:
      return FileTransfer::Move;
    case Qt::CopyAction:
      return FileTransfer::Copy;
    case Qt::LinkAction:
      return FileTransfer::Link;
    default:
      return FileTransfer::Natural;
  }
}

bool allMoved(const QList<FileChange>& changes) {
  return std::ranges::all_of(changes, [](const FileChange& each) { return each.kind == FileChange::Kind::Moved; });
}

const DockWidget* tileIn(const QList<DockWidget>& shown, const QUuid& id) {
  const auto found = std::ranges::find(shown, id, &DockWidget::id);
  return id.isNull() || found == shown.end() ? nullptr : &*found;
}

}  // namespace

QStringList DockDrops::localPaths(const QList<QUrl>& urls) {
  QStringList paths;
  for (const QUrl& url : urls) {
    if (url.isLocalFile()) paths << QDir::cleanPath(url.toLocalFile());
  }
  return paths;
}

DropRouting::Tile DockDrops::routed(const DockWidget& widget) {
  const WidgetDefinition& definition = Catalog::find(widget.kind);
  return {widget.kind, definition.family, widgetFolder(widget), definition.width};
}

void DockDrops::routeDroppedFiles(const DockFileDrop& drop) {
  store_.holdRunningApps();
  if (drop.urls.isEmpty()) return;
  QStringList paths = localPaths(drop.urls);
  const QList<DockWidget> shown = store_.displayedWidgets(drop.display);
  if (const DockWidget* tile = tileIn(shown, drop.widget)) {
    const QString folder = routed(*tile).path;
    if (!folder.isEmpty()) paths << folder;
  }
  services_.files.look(paths, this, [this, drop](const Kinds& kinds) { apply(drop, kinds); });
}

void DockDrops::dropInto(const QString& folder, const DockFileDrop& drop) {
  if (drop.urls.isEmpty()) return;
  if (localPaths(drop.urls).isEmpty()) return sayOnlyLocal();
  services_.files.look({folder}, this, [this, folder, drop](const Kinds& kinds) {
    kinds.value(folder, Files::Kind::Missing) == Files::Kind::Folder ? bringInto(folder, drop) : sayMissing(folder);
  });
}

void DockDrops::apply(const DockFileDrop& drop, const Kinds& kinds) {
  const QList<DockWidget> shown = store_.displayedWidgets(drop.display);
  const DockWidget* tile = tileIn(shown, drop.widget);
  if (tile && applyToTile(drop, *tile, kinds)) return;

  const QStringList paths = localPaths(drop.urls);
  const bool allEntries = paths.size() == drop.urls.size() && std::ranges::all_of(paths, &PinnedTiles::isDesktopEntry);
  if (!allEntries && openInApplication(drop, tile)) return;
  if (paths.isEmpty()) {
    sayOnlyLocal();
  } else {
    makeTiles(drop, kinds);
  }
}

bool DockDrops::applyToTile(const DockFileDrop& drop, const DockWidget& tile, const Kinds& kinds) {
  const auto isFolder = [&](const QString& path) { return kinds.value(path) == Files::Kind::Folder; };
  const DropRouting::Target target = DropRouting::route(routed(tile), drop.index, isFolder);
  const QStringList paths = localPaths(drop.urls);
  const TileTakes takes = KindTraits::of(tile.kind).takes;
  // It was there when they were brought over it: they are not put anywhere else.
  if (const QString folder = routed(tile).path; takes == TileTakes::Folder && !folder.isEmpty() &&
                                                kinds.value(folder, Files::Kind::Missing) == Files::Kind::Missing) {
    sayMissing(folder);
    return true;
  }
  const bool takesFiles =
      target.kind != DropRouting::Target::Kind::None || takes == TileTakes::Trash || takes == TileTakes::Shelf;
  if (!takesFiles) return false;
  if (paths.isEmpty()) {
    sayOnlyLocal();
  } else if (target.kind == DropRouting::Target::Kind::AirDrop) {
    if (!services_.nearby.send(drop.urls))
      store_.setError(tr("Files cannot be sent to nearby devices from this computer."));
  } else if (target.kind == DropRouting::Target::Kind::Folder) {
    bringInto(target.path, drop);
  } else if (takes == TileTakes::Trash) {
    moveToTrash(localPaths(drop.urls), drop.display);
  } else {
    shelve(paths, kinds, drop.display);
  }
  return true;
}

bool DockDrops::openInApplication(const DockFileDrop& drop, const DockWidget* tile) {
  QString entryPath;
  if (tile && KindTraits::of(tile->kind).launches()) entryPath = tile->options.value(option::path);
  if (drop.application != 0) {
    const auto app = services_.runningApps.byIdentity(drop.application);
    if (app && app->path.isEmpty()) {
      store_.setError(tr("“%1” cannot open files.").arg(app->name));
      return true;
    }
    if (app) entryPath = app->path;
  }
  if (!PinnedTiles::isDesktopEntry(entryPath)) return false;
  services_.opener.start(entryPath, {.urls = drop.urls});
  return true;
}

void DockDrops::offerUndo(const FilesOutcome& outcome, const UndoStack::Notice& notice) {
  if (!outcome.error.isEmpty()) store_.setError(outcome.error);
  if (outcome.changes.isEmpty()) return;
  undo_.push(notice, [self = QPointer(this), changes = outcome.changes] {
    if (!self) return;
    self->services_.files.takeBack(changes, self, [self](const FilesOutcome& back) {
      if (self && !back.error.isEmpty()) self->store_.setError(back.error);
    });
  });
}

void DockDrops::bringInto(const QString& folder, const DockFileDrop& drop) {
  const FileTransfer how = transferOf(drop.action);
  const auto offer = [this, folder, how, display = drop.display](const FilesOutcome& outcome) {
    if (outcome.changes.isEmpty()) return offerUndo(outcome, {});
    const auto number = outcome.changes.size();
    const QString one = number == 1 ? nameOf(outcome.changes.first().from) : QString();
    const QString into = nameOf(folder);
    QString sentence;
    if (how == FileTransfer::Link) {
      sentence = number == 1 ? tr("“%1” was linked in “%2”.").arg(one, into)
                             : tr("%1 items were linked in “%2”.").arg(LocalFigures::number(number), into);
    } else if (allMoved(outcome.changes)) {
      sentence = number == 1 ? tr("“%1” was moved to “%2”.").arg(one, into)
                             : tr("%1 items were moved to “%2”.").arg(LocalFigures::number(number), into);
    } else {
      sentence = number == 1 ? tr("“%1” was copied to “%2”.").arg(one, into)
                             : tr("%1 items were copied to “%2”.").arg(LocalFigures::number(number), into);
    }
    offerUndo(outcome, {sentence, display});
  };
  services_.files.bringInto(folder, localPaths(drop.urls), how, this, offer);
}

void DockDrops::moveToTrash(const QStringList& paths, const QString& display) {
  services_.files.trash(paths, this, [this, display](const FilesOutcome& outcome) {
    const auto number = outcome.changes.size();
    const QString one = number == 1 ? nameOf(outcome.changes.first().from) : QString();
    const QString sentence = number == 1 ? tr("“%1” was moved to the trash.").arg(one)
                                         : tr("%1 items were moved to the trash.").arg(LocalFigures::number(number));
    offerUndo(outcome, {sentence, display});
  });
}

void DockDrops::sayMissing(const QString& path) { store_.setError(tr("“%1” no longer exists.").arg(nameOf(path))); }

void DockDrops::sayOnlyLocal() { store_.setError(tr("Only files on this computer can be dropped here.")); }

void DockDrops::shelve(const QStringList& paths, const Kinds& kinds, const QString& display) {
  QStringList shelf = store_.config().shelf;
  QStringList added;
  for (const QString& path : paths) {
    if (kinds.value(path, Files::Kind::Missing) == Files::Kind::Missing) {
      sayMissing(path);
    } else if (!shelf.contains(path) && !added.contains(path))
      added << path;
  }
  if (added.isEmpty()) return;
  if (shelf.size() + added.size() > DockConfiguration::kMostShelved) {
    store_.setError(tr("The file shelf is full."));
    return;
  }
  store_.edit([&](DockConfiguration& config) { config.shelf += added; });
  const QString sentence = added.size() == 1
                               ? tr("“%1” was added to the file shelf.").arg(nameOf(added.first()))
                               : tr("%1 items were added to the file shelf.").arg(LocalFigures::number(added.size()));
  const auto takeOff = [self = QPointer(this), added] {
    if (!self) return;
    self->store_.edit([&](DockConfiguration& config) {
      config.shelf.removeIf([&](const QString& path) { return added.contains(path); });
    });
  };
  const auto putOn = [self = QPointer(this), added] {
    if (!self) return;
    self->store_.edit([&](DockConfiguration& config) {
      for (const QString& path : added)
        if (!config.shelf.contains(path) && config.shelf.size() < DockConfiguration::kMostShelved) config.shelf << path;
    });
  };
  undo_.push({sentence, display}, takeOff, putOn);
}

/// Desktop entries become tiles in any case, everything else where no shelf takes it.
void DockDrops::makeTiles(const DockFileDrop& drop, const Kinds& kinds) {
  const QList<DockWidget> shown = store_.displayedWidgets(drop.display);
  const bool hasShelf = std::ranges::any_of(
      shown, [](const DockWidget& each) { return KindTraits::of(each.kind).takes == TileTakes::Shelf; });
  QList<DockWidget> tiles;
  QStringList shelved;
  for (const QString& path : localPaths(drop.urls)) {
    const Files::Kind kind = kinds.value(path, Files::Kind::Missing);
    if (kind == Files::Kind::Missing) {
      sayMissing(path);
    } else if (hasShelf && !PinnedTiles::isDesktopEntry(path)) {
      shelved << path;
    } else {
      const DockWidget tile = kind == Files::Kind::Folder ? PinnedTiles::folder(path) : PinnedTiles::launcher(path);
      if (edits_.isHeld(path, drop.display))
        store_.setError(tr("“%1” is already in the dock.").arg(edits_.nameOf(tile)));
      else
        tiles << tile;
    }
  }
  if (!shelved.isEmpty()) shelve(shelved, kinds, drop.display);
  edits_.insert(tiles, drop.display, drop.index);
}

void DockDrops::dropWidget(const QString& text, qsizetype index, const QString& display) {
  store_.holdRunningApps();
  try {
    edits_.insert({WidgetTransfer::decode(text)}, display, index);
  } catch (const DomainError& failure) {
    store_.setError(failure.message());
  }
}

}  // namespace tarnwick
