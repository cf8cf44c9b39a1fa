#include "widgets/PinnedTiles.h"

#include <QDir>
#include <QFileInfo>

#include "widgets/EntryWords.h"
#include "widgets/LibraryEntries.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

DockWidget widgetFor(const QString& kind, const QString& path) {
  return {.id = QUuid::createUuid(), .kind = kind, .title = QString(), .options = {{option::path, path}}};
}

}  // namespace

QString PinnedTiles::nameOf(const QString& path) {
  const QString clean = QDir::cleanPath(path);
  if (clean == QDir::homePath()) return EntryWords::tr("Home");
  if (clean == StandardFolders::kApplications) return EntryWords::tr("Applications");
  return QFileInfo(clean).fileName();
}

QSet<QString> PinnedTiles::heldPaths(const QList<DockWidget>& widgets) {
  QSet<QString> held;
  for (const DockWidget& widget : widgets) {
    held.insert(widget.options.value(option::path));
    for (const QString& path : widget.options.value(option::paths).split(u'\n', Qt::SkipEmptyParts)) held.insert(path);
  }
  held.remove(QString());
  return held;
}

QList<RunningApp> PinnedTiles::unheld(const QList<RunningApp>& running, const QList<DockWidget>& widgets,
                                      const IdOf& idOf) {
  const QSet<QString> held = heldPaths(widgets);
  QSet<QString> heldIds;
  for (const QString& path : held) heldIds.insert(idOf(path));
  heldIds.remove(QString());
  QList<RunningApp> result = running;
  result.removeIf([&](const RunningApp& app) { return held.contains(app.path) || heldIds.contains(app.desktopId); });
  return result;
}

bool PinnedTiles::hold(const QList<DockWidget>& widgets, const QString& entryPath, const IdOf& idOf) {
  RunningApp app;
  app.path = entryPath;
  app.desktopId = idOf(entryPath);
  return unheld({app}, widgets, idOf).isEmpty();
}

DockWidget PinnedTiles::launcher(const QString& path) { return widgetFor(Catalog::launcherKind(), path); }

DockWidget PinnedTiles::folder(const QString& path) { return widgetFor(Catalog::folderKind(), path); }

}  // namespace tarnwick
