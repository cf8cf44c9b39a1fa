#pragma once

#include <QList>
#include <QPixmap>
#include <QString>
#include <QUrl>
#include <QUuid>
#include <functional>
#include <memory>

#include "apps/AppIndex.h"
#include "base/Scheduler.h"
#include "desktop/ClientWindows.h"
#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "system/ports/MachineDetails.h"
#include "system/ports/ProcessSource.h"
#include "views/theme/Palette.h"
#include "views/tiles/ReadingSources.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

class PanelDrafts;

/// What a panel can ask of the rest of the program. One that is left empty is not offered: test it before a button for
/// it is made.
struct PanelActions {
  std::function<void(const QUrl& url)> openUrl;
  /// The same, for what must not be lost: `done` runs once, later, with whether an application was started.
  std::function<void(const QUrl& url, const std::function<void(bool started)>& done)> tryUrl;
  std::function<void(const QString& path)> openPath;
  /// Tells the user above a display's dock what was done and offers to take it back; what `undo` holds must outlive the
  /// panel.
  std::function<void(const QString& display, const QString& sentence, const std::function<void()>& undo)> offerUndo;
  /// Replaces the widget's settings, as a step that can be taken back.
  std::function<void(const DockWidget& widget)> changeWidget;
  /// Takes the latest change of all back; makes again what was taken back last.
  std::function<void()> undo;
  std::function<void()> redo;
  /// Opens the form in which a widget is set up or connected.
  std::function<void(const QUuid& widget)> openEditor;
  /// Starts the desktop's own system monitor.
  std::function<void()> openMonitor;
  std::function<void(const QString& text)> copyText;
  /// Lets the user pick a color on the screen. `picked` runs once with "#RRGGBB", or never when nothing was picked.
  std::function<void(const std::function<void(const QString& hex)>& picked)> pickColor;
  /// Starts the desktop's own calendar.
  std::function<void()> openCalendar;
  /// Lets the user choose a folder of calendar files.
  std::function<void()> addCalendarFolder;
  /// Ticks a reminder off, or takes the tick away.
  std::function<void(const Reminder& reminder, bool completed)> completeReminder;

  /// The applications that are installed; another one after each change.
  std::function<std::shared_ptr<const AppIndex>()> applications;
  /// The picture of an application, by what its tile knows it by.
  std::function<QPixmap(const QString& icon, int size, double ratio)> icon;
  /// Starts the application of a desktop entry.
  std::function<void(const QString& path)> startApplication;
  std::function<void(quint64 application)> bringApplication;
  /// The windows of other programs.
  std::function<QList<ClientWindow>()> windows;
  std::function<void(quint64 window)> showWindow;
  /// Shows a file in its folder.
  std::function<void(const QString& path)> revealPath;
  std::function<void()> openTrash;
  /// Deletes what is in the trash for good, without asking.
  std::function<void()> emptyTrash;
  /// Has the processes read once, unless that goes on already.
  std::function<void()> refreshProcesses;
  /// Asks a process to end itself. Throws DomainError.
  std::function<void(const ProcessReading& process)> endProcess;
};

/// What a panel is made from. Everything is borrowed and outlives the panel. The widget is held by its identity: the
/// document may change at any moment, and a panel whose widget is gone closes by itself.
struct PanelContext {
  AppStore& store;
  Scheduler& scheduler;
  Toggles& toggles;
  QUuid widget;
  QString display;  ///< The display whose dock opened the panel.
  /// What tiles show at this moment; panels show the same values.
  std::function<TileSources()> sources;
  PanelActions actions;
  ReadingServices readings = {};
  /// Null where what was written and not used yet goes with the panel.
  PanelDrafts* drafts = nullptr;
  /// The kind's; whoever makes the panel sets it.
  Accent accent = Accent::Blue;

  /// The widget's kind; empty when the settings hold it no more.
  QString kind() const {
    for (const DockProfile& profile : store.config().profiles)
      for (const DockWidget& each : profile.widgets)
        if (each.id == widget) return each.kind;
    return {};
  }
};

}  // namespace tarnwick
