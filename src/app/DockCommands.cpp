#include "app/DockCommands.h"

#include <QGuiApplication>
#include <QStandardPaths>
#include <QStyleHints>
#include <array>
#include <ranges>

#include "apps/AppActivation.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "store/DocumentEdits.h"
#include "views/dock/UndoBubble.h"
#include "widgets/PinnedTiles.h"
#include "widgets/WidgetFolder.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString folderOf(const DockWidget& widget) {
  return KindTraits::of(widget.kind).opens == TileOpens::Folder ? widgetFolder(widget) : QString();
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

DockCommands::DockCommands(AppStore& store, const Services& services, Commands& commands)
    : store_(store), services_(services), commands_(commands) {
  connect(&services_.opener, &AppOpener::started, this, &DockCommands::launchBegan);
  connect(&services_.opener, &AppOpener::failed, this, &DockCommands::tellFailure);
  connect(&services_.runningApps, &RunningApplications::changed, this, &DockCommands::runningChanged);
}

/// Nothing is to be done about it, so it stays no longer than what is said of other things that were done.
void DockCommands::tellFailure(const QString& sentence) {
  store_.setError(sentence);
  passing_ = sentence;
  endMessageLater();
}

void DockCommands::endMessageLater() {
  message_ = store_.scheduler().after(UndoBubble::kLife, [this] {
    if (store_.error() == passing_) store_.clearError();
  });
}

void DockCommands::holdMessage(bool held) {
  if (passing_.isEmpty() || store_.error() != passing_) return;
  held ? message_.reset() : endMessageLater();
}

// --- Tiles ----------------------------------------------------------------------------------------------------------

void DockCommands::openTile(const QString& display, const QUuid& id, bool isClick) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), id);
  if (!stored || (isClick && isSecondClick(id.toString()))) return;
  const DockWidget widget = *stored;
  const QString path = widget.options.value(option::path);
  const bool launches = KindTraits::of(widget.kind).launches() && !path.isEmpty();
  if (launches && PinnedTiles::isDesktopEntry(path)) {
    openEntry(display, path, isClick);
  } else if (launches) {
    services_.opener.open(QUrl::fromLocalFile(path));
  } else if (!openPlace(display, widget)) {
    commands_.openPanel(display, id);
  }
}

bool DockCommands::openPlace(const QString& display, const DockWidget& widget) {
  const bool isTrash = KindTraits::of(widget.kind).opens == TileOpens::Trash;
  const QString folder = folderOf(widget);
  if (folder.isEmpty() && !isTrash) return false;
  if (!store_.config().foldersInFinder) {
    commands_.openPanel(display, widget.id);
  } else if (isTrash) {
    services_.opener.openTrash(services_.files.trashFolder());
  } else {
    services_.opener.open(QUrl::fromLocalFile(folder));
  }
  return true;
}

void DockCommands::openEntry(const QString& display, const QString& entryPath, bool isClick) {
  const auto app = services_.runningApps.byPath(entryPath);
  if (!app) {
    services_.opener.start(entryPath);
  } else if (isClick) {
    turnTo(display, app->identity);
  } else {
    openApplication(display, app->identity);
  }
}

/// A double click means what a click does: not two windows, and neither a window nor a panel that goes as soon as it
/// came. How quick that is the desktop's settings say.
bool DockCommands::isSecondClick(const QString& what) {
  const double now = store_.scheduler().reference();
  const double doubleClick = QGuiApplication::styleHints()->mouseDoubleClickInterval() / 1000.0;
  if (clicked_.first == what && now - clicked_.second < doubleClick) return true;
  clicked_ = {what, now};
  return false;
}

// --- Running applications -------------------------------------------------------------------------------------------

void DockCommands::activateApplication(const QString& display, quint64 application) {
  if (!isSecondClick(QString::number(application))) turnTo(display, application);
}

void DockCommands::turnTo(const QString& display, quint64 application) {
  const auto app = services_.runningApps.byIdentity(application);
  if (!app) return;
  // A window of another display that is in front is none of what this dock shows.
  const RunningApp shown = app->within(store_.windowScope(display));
  if (!shown.active) return openApplication(display, application);
  // Those that the choice would list, windows of other workspaces included unless the dock leaves them out.
  if (shown.windows.size() == 1)
    services_.windows.minimise(shown.windows.first());
  else
    Q_EMIT windowChoiceRequested(display, application);
}

void DockCommands::openApplication(const QString& display, quint64 application) {
  AppActivation(services_.runningApps, services_.windows).bring(application, store_.windowScope(display));
}

quint64 DockCommands::applicationOf(const DockWidget& widget) const {
  if (!KindTraits::of(widget.kind).launches()) return 0;
  const auto app = services_.runningApps.byPath(widget.options.value(option::path));
  return app ? app->identity : 0;
}

void DockCommands::newWindow(quint64 application) {
  const auto app = services_.runningApps.byIdentity(application);
  if (app && !app->path.isEmpty()) newWindowOfEntry(app->path);
}

void DockCommands::newWindowOfTile(const QUuid& widget) {
  const DockWidget* stored = DocumentEdits::find(store_.config(), widget);
  if (!stored) return;
  const QString path = stored->options.value(option::path);
  if (KindTraits::of(stored->kind).launches() && PinnedTiles::isDesktopEntry(path)) newWindowOfEntry(path);
}

void DockCommands::newWindowOfEntry(const QString& entryPath) {
  LaunchRequest request;
  if (const auto entry = services_.installedApps.byPath(entryPath)) request.action = newWindowAction(*entry);
  services_.opener.start(entryPath, request);
}

void DockCommands::startAction(const QString& entryPath, const QString& action) {
  services_.opener.start(entryPath, {.action = action});
}

void DockCommands::cycleWindows(const QString& display, quint64 application, int direction) {
  auto app = services_.runningApps.byIdentity(application);
  if (!app || app->windows.isEmpty()) return;
  if (const QList<quint64> shown = app->windowsIn(store_.windowScope(display)); !shown.isEmpty()) app->windows = shown;
  // Not in the order of their last use, which every step would change.
  QList<quint64> inOrder;
  quint64 current = 0;
  for (const ClientWindow& window : services_.windows.all()) {
    if (!app->windows.contains(window.id)) continue;
    inOrder << window.id;
    if (window.active) current = window.id;
  }
  const quint64 next = current == 0 ? app->windows.first() : nextWindow(inOrder, current, direction);
  if (next != 0 && next != current) services_.windows.activate(next);
}

quint64 DockCommands::nextWindow(const QList<quint64>& windows, quint64 current, int direction) {
  if (windows.isEmpty()) return 0;
  const qsizetype at = windows.indexOf(current);
  if (at < 0) return windows.first();
  const qsizetype step = direction < 0 ? windows.size() - 1 : 1;
  return windows[(at + step) % windows.size()];
}

void DockCommands::quit(quint64 application) {
  const auto app = services_.runningApps.byIdentity(application);
  if (!app) return;
  for (const quint64 window : app->windows) services_.windows.close(window);
}

// --- Launch feedback and places -------------------------------------------------------------------------------------

void DockCommands::launchBegan(const QString& entryPath) {
  // Without following the windows, a new one would go unnoticed.
  services_.runningApps.start();
  const auto app = services_.runningApps.byPath(entryPath);
  Launch& launch = launching_[entryPath];
  launch.windows = app ? app->windows.size() : 0;
  launch.active = app && app->active;
  launch.end = store_.scheduler().after(kLaunchFeedback, [this, entryPath] {
    const auto ended = launching_.extract(entryPath);
    Q_EMIT launchingChanged();
  });
  Q_EMIT launchingChanged();
}

void DockCommands::runningChanged() {
  // An application that shows a window which it had already has answered too.
  const auto ended = std::erase_if(launching_, [this](const auto& each) {
    const auto app = services_.runningApps.byPath(each.first);
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
  for (const ClientWindow& window : services_.windows.all()) windows.insert(window.id, window);
  QHash<quint64, QRectF> wanted;
  for (const RunningApp& app : services_.runningApps.list()) {
    for (const quint64 id : app.windows) {
      for (const auto& [display, rects] : tiles_) {
        const bool isOnIt = windows.value(id).screens.contains(display);
        // The dock of a window's own display comes first.
        if (rects.contains(app.identity) && (isOnIt || !wanted.contains(id))) wanted[id] = rects[app.identity];
      }
    }
  }
  for (auto each = wanted.cbegin(); each != wanted.cend(); ++each) {
    if (sent_.value(each.key()) != each.value()) services_.windows.setIconGeometry({each.key()}, each.value());
  }
  sent_ = wanted;
}

}  // namespace tarnwick
