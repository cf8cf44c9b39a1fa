#include "app/DockMenus.h"

#include <QGuiApplication>
#include <algorithm>

#include "apps/RunningApplications.h"
#include "config/CalendarFolders.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

DockMenus::DockMenus(AppStore& store, const Services& services, Commands& commands, UndoableEdits& edits,
                     DockCommands& dockCommands)
    : store_(store),
      services_(services),
      commands_(commands),
      edits_(edits),
      dockCommands_(dockCommands),
      icons_(store, edits, services.installedApps) {}

AppMenuState DockMenus::appState(const std::optional<RunningApp>& app, const QString& entryPath,
                                 const QString& display) const {
  AppMenuState state;
  if (const auto entry = services_.installedApps.byPath(entryPath)) state.actions = entry->actions;
  if (!app) return state;
  QList<quint64> shown = app->windowsIn(store_.windowScope(display));
  if (shown.isEmpty()) shown = app->windows;
  for (const ClientWindow& window : services_.windows.all()) {
    if (shown.contains(window.id)) state.windows << AppMenuState::Window{window.id, window.title, window.active};
  }
  return state;
}

void DockMenus::addAppActions(DockMenuActions& actions, quint64 application, const QString& entryPath) {
  DockCommands* commands = &dockCommands_;
  actions.startAction = [commands, entryPath](const QString& action) { commands->startAction(entryPath, action); };
  actions.quit = [commands, application] { commands->quit(application); };
}

QList<DockMenuEntry> DockMenus::tile(const QUuid& id, const QString& display) {
  const QList<DockWidget> shown = store_.displayedWidgets(display);
  const auto found = std::ranges::find(shown, id, &DockWidget::id);
  if (found == shown.end()) return {};
  const DockWidget& widget = *found;
  const qsizetype at = found - shown.begin();
  const QString path = widget.options.value(option::path);
  const QString& family = Catalog::find(widget.kind).family;
  const KindTraits& traits = KindTraits::of(widget.kind);
  const bool launches = traits.launches() && PinnedTiles::isDesktopEntry(path);

  TileMenuState state;
  state.name = edits_.nameOf(widget);
  state.opens = !traits.isGap;
  state.hasIcon = launches;
  state.hasOwnIcon = icons_.has(path);
  // The row begins on the right where one reads from there.
  const qsizetype right = QGuiApplication::isRightToLeft() ? -1 : 1;
  const auto isInRow = [&](qsizetype place) { return place >= 0 && place < shown.size(); };
  state.canMoveLeft = isInRow(at - right);
  state.canMoveRight = isInRow(at + right);
  state.isFolder = traits.isFolder && !path.isEmpty();
  state.isTrash = traits.opens == TileOpens::Trash;
  if (state.isTrash) state.trashIsEmpty = services_.files.trashCount() == 0;
  if (family == Family::Calendar || family == Family::Reminders)
    state.calendarFolders = CalendarFolders::of(store_.config());

  DockMenuActions actions{commands_};
  DockCommands* commands = &dockCommands_;
  // The row may have changed while the menu was open.
  const auto moveBy = [this, id, display](qsizetype places) {
    const QList<DockWidget> now = store_.displayedWidgets(display);
    const qsizetype place = std::ranges::find(now, id, &DockWidget::id) - now.begin();
    if (place == now.size()) return;
    edits_.moveShown(display, place, place + places);
  };
  actions.open = [commands, id, display] { commands->openTile(display, id); };
  actions.edit = [this, id] { commands_.openEditor(id); };
  actions.chooseIcon = [this, path] { chooseIcon(path); };
  actions.resetIcon = [this, path] { icons_.reset(path); };
  actions.moveLeft = [moveBy, right] { moveBy(-right); };
  actions.moveRight = [moveBy, right] { moveBy(right); };
  actions.remove = [this, id, display] { edits_.remove(id, display); };
  actions.reveal = [this, path] { commands_.reveal(path); };
  actions.emptyTrash = [this, id, display] { Q_EMIT emptyTrashRequested(display, id); };
  actions.removeCalendarFolder = [this](const QString& folder) {
    edits_.change([&folder](DockConfiguration& config) { CalendarFolders::remove(config, folder); });
  };
  if (launches) {
    const auto app = services_.runningApps.byPath(path);
    state.app = appState(app, path, display);
    addAppActions(actions, app ? app->identity : 0, path);
  }
  return DockMenuModel::tile(state, actions, display);
}

QList<DockMenuEntry> DockMenus::application(quint64 identity, const QString& display) {
  const auto app = services_.runningApps.byIdentity(identity);
  if (!app) return {};
  AppMenuState state = appState(app, app->path, display);
  const auto idOf = [this](const QString& path) { return services_.installedApps.environment().desktopIdOf(path); };
  const bool isHeld = PinnedTiles::unheld({*app}, store_.displayedWidgets(display), idOf).isEmpty();
  state.canBeKept = !app->path.isEmpty() && !isHeld;
  DockMenuActions actions{commands_};
  actions.open = [this, identity, display] { dockCommands_.openApplication(display, identity); };
  actions.keep = [this, path = app->path, display] { edits_.insert({PinnedTiles::launcher(path)}, display); };
  addAppActions(actions, identity, app->path);
  return DockMenuModel::application(app->name, state, actions, display);
}

QList<DockMenuEntry> DockMenus::windows(quint64 identity, const QString& display) {
  const auto app = services_.runningApps.byIdentity(identity);
  return app ? DockMenuModel::windows(appState(app, app->path, display), commands_) : QList<DockMenuEntry>();
}

QList<DockMenuEntry> DockMenus::dock(const QString& display) {
  const DockConfiguration& config = store_.config();
  DockMenuState state{config.layout, {}, store_.profileIndex(display)};
  for (const DockProfile& profile : config.profiles) state.profiles << profile.name;
  return DockMenuModel::dock(state, commands_, display);
}

void DockMenus::chooseIcon(const QString& entryPath) {
  pictures_.askPicture(tr("App Icon"),
                       [this, entryPath](const QString& picture) { icons_.choose(entryPath, picture); });
}

}  // namespace tarnwick
