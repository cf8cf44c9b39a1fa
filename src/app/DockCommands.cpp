#include "app/DockCommands.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyleHints>
#include <array>
#include <ranges>

#include "apps/AppActivation.h"
#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "widgets/PinnedTiles.h"
#include "widgets/WidgetFolder.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString folderOf(const DockWidget& widget) {
  return widget.kind == "folderLauncher"_L1 || widget.kind == "downloads"_L1 ? widgetFolder(widget) : QString();
}

/// The action by which an application says how to open another window of it; empty when it offers none.
QString newWindowAction(const DesktopEntry& entry) {
  static constexpr std::array known{"new-window"_L1, "NewWindow"_L1, "new_window"_L1, "newwindow"_L1, "window-new"_L1};
  for (const QLatin1StringView id : known) {
    if (entry.action(id)) return id;
  }
  return {};
}

}  // namespace

DockCommands::DockCommands(const Parts& parts) : parts_(parts) {
  connect(parts_.opener, &AppOpener::started, this, &DockCommands::launchBegan);
  connect(parts_.opener, &AppOpener::failed, parts_.store, &AppStore::setError);
  connect(parts_.running, &RunningApplications::changed, this, &DockCommands::runningChanged);
}

// --- Tiles ----------------------------------------------------------------------------------------------------------

void DockCommands::openTile(const QUuid& id, bool isClick) {
  const DockWidget* stored = DocumentEdits::find(parts_.store->config(), id);
  if (!stored || (isClick && isSecondClick(id.toString()))) return;
  const DockWidget widget = *stored;
  const QString path = widget.options.value(u"path"_s);
  const bool launches = Catalog::find(widget.kind).family == "launcher"_L1 && !path.isEmpty();
  if (launches && PinnedTiles::isDesktopEntry(path)) {
    openEntry(path, isClick);
  } else if (launches) {
    parts_.opener->open(QUrl::fromLocalFile(path));
  } else if (!openPlace(widget) && showPanel) {
    showPanel(id);
  }
}

bool DockCommands::openPlace(const DockWidget& widget) {
  const bool isTrash = widget.kind == "trash"_L1;
  const QString folder = folderOf(widget);
  if (folder.isEmpty() && !isTrash) return false;
  if (showGallery && !parts_.store->config().foldersInFinder) {
    showGallery(widget.id);
  } else if (isTrash) {
    parts_.opener->openTrash(parts_.files->trashFolder());
  } else {
    parts_.opener->open(QUrl::fromLocalFile(folder));
  }
  return true;
}

void DockCommands::openEntry(const QString& entryPath, bool mayMinimise) {
  const auto app = parts_.running->byPath(entryPath);
  if (!app) {
    parts_.opener->start(entryPath);
  } else if (mayMinimise) {
    turnTo(app->identity);
  } else {
    openApplication(app->identity);
  }
}

/// A double click means what a click does: not two windows, and neither a window nor a panel that goes as soon as it
/// came. How quick that is the desktop's settings say.
bool DockCommands::isSecondClick(const QString& what) {
  const double now = parts_.store->scheduler().reference();
  const double doubleClick = QGuiApplication::styleHints()->mouseDoubleClickInterval() / 1000.0;
  if (clicked_.first == what && now - clicked_.second < doubleClick) return true;
  clicked_ = {what, now};
  return false;
}

// --- Running applications -------------------------------------------------------------------------------------------

void DockCommands::activateApplication(quint64 application) {
  if (!isSecondClick(QString::number(application))) turnTo(application);
}

void DockCommands::turnTo(quint64 application) {
  const auto app = parts_.running->byIdentity(application);
  if (!app) return;
  if (!app->active) return openApplication(application);
  const QList<quint64> windows = AppActivation::windowsAtHand(*app, *parts_.windows);
  for (const quint64 window : windows | std::views::reverse) parts_.windows->minimise(window);
}

void DockCommands::openApplication(quint64 application) {
  AppActivation(*parts_.running, *parts_.windows).bring(application);
}

quint64 DockCommands::applicationOf(const DockWidget& widget) const {
  if (Catalog::find(widget.kind).family != "launcher"_L1) return 0;
  const auto app = parts_.running->byPath(widget.options.value(u"path"_s));
  return app ? app->identity : 0;
}

void DockCommands::newWindow(quint64 application) {
  const auto app = parts_.running->byIdentity(application);
  if (app && !app->path.isEmpty()) newWindowOfEntry(app->path);
}

void DockCommands::newWindowOfTile(const QUuid& widget) {
  const DockWidget* stored = DocumentEdits::find(parts_.store->config(), widget);
  if (!stored) return;
  const QString path = stored->options.value(u"path"_s);
  if (Catalog::find(stored->kind).family == "launcher"_L1 && PinnedTiles::isDesktopEntry(path)) newWindowOfEntry(path);
}

void DockCommands::newWindowOfEntry(const QString& entryPath) {
  LaunchRequest request;
  if (const auto entry = parts_.apps->byPath(entryPath)) request.action = newWindowAction(*entry);
  parts_.opener->start(entryPath, request);
}

void DockCommands::startAction(const QString& entryPath, const QString& action) {
  parts_.opener->start(entryPath, {.action = action});
}

void DockCommands::cycleWindows(quint64 application, int direction) {
  const auto app = parts_.running->byIdentity(application);
  if (!app || app->windows.isEmpty()) return;
  // Not in the order of their last use, which every step would change.
  QList<quint64> inOrder;
  quint64 current = 0;
  for (const ClientWindow& window : parts_.windows->all()) {
    if (!app->windows.contains(window.id)) continue;
    inOrder << window.id;
    if (window.active) current = window.id;
  }
  const quint64 next = current == 0 ? app->windows.first() : nextWindow(inOrder, current, direction);
  if (next != 0 && next != current) parts_.windows->activate(next);
}

quint64 DockCommands::nextWindow(const QList<quint64>& windows, quint64 current, int direction) {
  if (windows.isEmpty()) return 0;
  const qsizetype at = windows.indexOf(current);
  if (at < 0) return windows.first();
  const qsizetype step = direction < 0 ? windows.size() - 1 : 1;
  return windows[(at + step) % windows.size()];
}

void DockCommands::quit(quint64 application) {
  const auto app = parts_.running->byIdentity(application);
  if (!app) return;
  for (const quint64 window : app->windows) parts_.windows->close(window);
}

// --- Files ----------------------------------------------------------------------------------------------------------

void DockCommands::reveal(const QString& path) {
  parts_.files->reveal({path}, this, [this, path](bool shown) {
    if (!shown) parts_.opener->open(QUrl::fromLocalFile(QFileInfo(path).path()));
  });
}

void DockCommands::emptyTrash() {
  parts_.files->emptyTrash(this, [this](const FilesOutcome& outcome) {
    if (!outcome.error.isEmpty()) parts_.store->setError(outcome.error);
  });
}

void DockCommands::askToEmptyTrash() {
  auto* box = new QMessageBox(QMessageBox::Question, tr("Empty Trash"),
                              tr("Delete everything in the trash? This cannot be undone."), QMessageBox::Cancel);
  const QPushButton* empty = box->addButton(tr("Empty Trash"), QMessageBox::DestructiveRole);
  box->setDefaultButton(QMessageBox::Cancel);
  box->setAttribute(Qt::WA_DeleteOnClose);
  connect(empty, &QPushButton::clicked, this, &DockCommands::emptyTrash);
  box->open();
}

// --- Launch feedback and places
// ---------------------------------------------------------------------------------------

void DockCommands::launchBegan(const QString& entryPath) {
  // Without following the windows nobody would notice that one came.
  parts_.running->start();
  const auto app = parts_.running->byPath(entryPath);
  Launch& launch = launching_[entryPath];
  launch.windows = app ? app->windows.size() : 0;
  launch.active = app && app->active;
  launch.end = parts_.store->scheduler().after(kLaunchFeedback, [this, entryPath] {
    const auto ended = launching_.extract(entryPath);
    Q_EMIT launchingChanged();
  });
  Q_EMIT launchingChanged();
}

void DockCommands::runningChanged() {
  // An application that shows a window which it had already has answered too.
  const auto ended = std::erase_if(launching_, [this](const auto& each) {
    const auto app = parts_.running->byPath(each.first);
    return app && (app->windows.size() > each.second.windows || (app->active && !each.second.active));
  });
  if (ended > 0) Q_EMIT launchingChanged();
  sendTileRects();
}

void DockCommands::setTileRects(const QString& display, const QHash<quint64, QRectF>& rects) {
  if (rects.isEmpty()) {
    tiles_.erase(display);
  } else {
    tiles_[display] = rects;
  }
  sendTileRects();
}

void DockCommands::sendTileRects() {
  if (tiles_.empty()) return;
  QHash<quint64, ClientWindow> windows;
  for (const ClientWindow& window : parts_.windows->all()) windows.insert(window.id, window);
  QHash<quint64, QRectF> wanted;
  for (const RunningApp& app : parts_.running->list()) {
    for (const quint64 id : app.windows) {
      for (const auto& [display, rects] : tiles_) {
        const bool isOnIt = windows.value(id).screens.contains(display);
        // The dock of a window's own display comes first.
        if (rects.contains(app.identity) && (isOnIt || !wanted.contains(id))) wanted[id] = rects[app.identity];
      }
    }
  }
  for (auto each = wanted.cbegin(); each != wanted.cend(); ++each) {
    if (sent_.value(each.key()) != each.value()) parts_.windows->setIconGeometry({each.key()}, each.value());
  }
  sent_ = wanted;
}

}  // namespace tarnwick
