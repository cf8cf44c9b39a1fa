#include "app/DockMenuModel.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QFontMetrics>

#include "store/Commands.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kWidestEntry = 320;

struct DockMenuWords {
  Q_DECLARE_TR_FUNCTIONS(DockMenu)
};

void separate(QList<DockMenuEntry>& entries) {
  if (!entries.isEmpty() && !entries.last().text.isEmpty()) entries << DockMenuEntry();
}

DockMenuEntry open(const QString& name, const DockMenuActions& actions) {
  return {DockMenuWords::tr("Open ") + name, actions.open, {}};
}

std::function<void()> onlyIf(bool condition, const std::function<void()>& action) {
  return condition ? action : std::function<void()>();
}

void addApplication(QList<DockMenuEntry>& entries, const AppMenuState& state, const DockMenuActions& actions) {
  separate(entries);
  for (const DesktopAction& action : state.actions) {
    entries << DockMenuEntry{action.name, [start = actions.startAction, id = action.id] { start(id); }, {}};
  }
  separate(entries);
  if (!state.windows.isEmpty()) {
    entries << DockMenuEntry{DockMenuWords::tr("Windows"), {}, {}, DockMenuModel::windows(state, actions.commands)};
  }
  separate(entries);
  if (state.canBeKept) {
    entries << DockMenuEntry{DockMenuWords::tr("Keep in Dock"), actions.keep, {}};
  }
  if (!state.windows.isEmpty()) {
    entries << DockMenuEntry{DockMenuWords::tr("Quit"), actions.quit, {}};
  }
  if (entries.last().text.isEmpty()) entries.removeLast();
}

void addCalendarFolders(QList<DockMenuEntry>& entries, const QStringList& folders, const DockMenuActions& actions) {
  separate(entries);
  const auto add = [&commands = actions.commands] { commands.addCalendarFolder(); };
  entries << DockMenuEntry{DockMenuWords::tr("Add Calendar Folder…"), add, {}};
  for (const QString& path : folders) {
    entries << DockMenuEntry{DockMenuWords::tr("Remove “%1”").arg(QFileInfo(path).fileName()),
                             [remove = actions.removeCalendarFolder, path] { remove(path); },
                             {}};
  }
}

void addDock(QList<DockMenuEntry>& entries, Commands& commands, const QString& display) {
  entries << DockMenuEntry{DockMenuWords::tr("Add Widgets…"),
                           [&commands, display] { commands.showLibrary(display); },
                           {}}
          << DockMenuEntry{DockMenuWords::tr("Settings…"), [&commands] { commands.showSettings(); }, {}};
}

}  // namespace

QList<DockMenuEntry> DockMenuModel::tile(const TileMenuState& state, const DockMenuActions& actions,
                                         const QString& display) {
  QList<DockMenuEntry> entries;
  if (state.opens) entries << open(state.name, actions);
  entries << DockMenuEntry{DockMenuWords::tr("Edit Widget…"), actions.edit, {}};
  if (state.hasIcon) {
    entries << DockMenuEntry{DockMenuWords::tr("App Icon…"), actions.chooseIcon, {}}
            << DockMenuEntry{DockMenuWords::tr("Reset Icon"), onlyIf(state.hasOwnIcon, actions.resetIcon), {}};
  }
  entries << DockMenuEntry{DockMenuWords::tr("Move Left"), onlyIf(state.canMoveLeft, actions.moveLeft), {}}
          << DockMenuEntry{DockMenuWords::tr("Move Right"), onlyIf(state.canMoveRight, actions.moveRight), {}};
  separate(entries);
  entries << DockMenuEntry{DockMenuWords::tr("Remove Widget"), actions.remove, {}};
  if (state.isFolder || state.isTrash) separate(entries);
  if (state.isFolder) {
    entries << DockMenuEntry{DockMenuWords::tr("Show in Files"), actions.reveal, {}};
  }
  if (state.isTrash) {
    entries << DockMenuEntry{DockMenuWords::tr("Empty Trash…"), onlyIf(!state.trashIsEmpty, actions.emptyTrash), {}};
  }
  if (state.calendarFolders) addCalendarFolders(entries, *state.calendarFolders, actions);
  if (state.app) addApplication(entries, *state.app, actions);
  separate(entries);
  addDock(entries, actions.commands, display);
  return entries;
}

QList<DockMenuEntry> DockMenuModel::windows(const AppMenuState& state, Commands& commands) {
  QList<DockMenuEntry> entries;
  for (const AppMenuState::Window& window : state.windows) {
    const QString title = window.title.isEmpty() ? DockMenuWords::tr("Untitled Window") : window.title;
    entries << DockMenuEntry{title, [&commands, id = window.id] { commands.showWindow(id); }, window.active};
  }
  return entries;
}

QList<DockMenuEntry> DockMenuModel::application(const QString& name, const AppMenuState& state,
                                                const DockMenuActions& actions, const QString& display) {
  QList<DockMenuEntry> entries{open(name, actions)};
  addApplication(entries, state, actions);
  separate(entries);
  addDock(entries, actions.commands, display);
  return entries;
}

QList<DockMenuEntry> DockMenuModel::dock(const DockMenuState& state, Commands& commands, const QString& display) {
  QList<DockMenuEntry> layouts;
  for (const DockLayout layout : kDockLayouts)
    layouts << DockMenuEntry{label(layout), [&commands, layout] { commands.chooseLayout(layout); },
                             layout == state.layout};
  QList<DockMenuEntry> profiles;
  for (const QString& name : state.profiles) {
    const int place = static_cast<int>(profiles.size());
    const auto select = [&commands, place, display] { commands.selectProfile(place, display); };
    profiles << DockMenuEntry{name, select, place == state.profile};
  }
  QList<DockMenuEntry> entries;
  addDock(entries, commands, display);
  separate(entries);
  entries << DockMenuEntry{DockMenuWords::tr("Layout"), {}, {}, layouts}
          << DockMenuEntry{DockMenuWords::tr("Profiles"), {}, {}, profiles}
          << DockMenuEntry{DockMenuWords::tr("Hide"), [&commands] { commands.toggleDock(); }, {}};
  separate(entries);
  entries << DockMenuEntry{DockMenuWords::tr("Help"), [&commands] { commands.showHelp(); }, {}}
          << DockMenuEntry{DockMenuWords::tr("Quit Tarnwick"), [&commands] { commands.quit(); }, {}};
  return entries;
}

QList<DockMenuEntry> DockMenuModel::flat(const QList<DockMenuEntry>& entries) {
  QList<DockMenuEntry> all;
  for (const DockMenuEntry& entry : entries) {
    if (entry.entries.isEmpty()) all << entry;
    for (const DockMenuEntry& inner : flat(entry.entries))
      all << DockMenuEntry{DockMenuWords::tr("%1: %2").arg(entry.text, inner.text), inner.run, inner.checked};
  }
  return all;
}

void DockMenuModel::fill(QMenu& menu, const QList<DockMenuEntry>& entries) {
  menu.clear();
  for (const DockMenuEntry& entry : entries) {
    if (entry.text.isEmpty()) {
      menu.addSeparator();
      continue;
    }
    QString text = menu.fontMetrics().elidedText(entry.text, Qt::ElideMiddle, kWidestEntry);
    // A menu takes a single ampersand for the mark of a mnemonic.
    text.replace(u'&', u"&&"_s);
    if (!entry.entries.isEmpty()) {
      fill(*menu.addMenu(text), entry.entries);
      continue;
    }
    QAction* added = menu.addAction(text);
    added->setEnabled(static_cast<bool>(entry.run));
    added->setCheckable(entry.checked.has_value());
    added->setChecked(entry.checked.value_or(false));
    if (entry.run) QObject::connect(added, &QAction::triggered, &menu, [run = entry.run] { run(); });
  }
}

}  // namespace tarnwick
