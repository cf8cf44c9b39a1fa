#pragma once

#include <QString>
#include <QUrl>
#include <QUuid>
#include <functional>

#include "calendar/ports/CalendarSource.h"
#include "config/DockLayout.h"
#include "config/DockWidget.h"
#include "media/PlaybackSnapshot.h"
#include "system/ports/ProcessSource.h"

namespace tarnwick {

/// What a user can ask of the program from anywhere: from a tile, a panel, a menu, a window, a key, another process.
/// `app/ProgramCommands` does all of it; code that offers a command holds a reference to this. Main thread only. A
/// command that cannot be done puts its sentence into the store's message line unless it says that it throws.
class Commands {
 public:
  virtual ~Commands() = default;

  /// What this build or this desktop may have nothing for. All other commands are always there.
  enum class Optional {
    CommandBar,
    FolderIcons,
    OpenSpace,
    SaveSpace,
    CheckForUpdates,
    SystemMonitor,  ///< Some system monitor is installed.
    CalendarApp,    ///< Some calendar is installed.
  };
  /// Whether an optional command can be offered at this moment; one that cannot does nothing.
  virtual bool can(Optional command) const = 0;

  // --- Windows of the program: one that is open comes forward -------------------------------------------------------

  virtual void showSettings() = 0;
  /// The library, with the profile to add to: the given one, else the one that the display's dock shows. An empty
  /// display means the one that was acted on last.
  virtual void showLibrary(const QString& display, const QUuid& profile = {}) = 0;
  /// The form in which a widget is set up or connected, over the window of ours that has the keyboard, else where the
  /// display's dock is. An empty display means the one that was acted on last.
  virtual void openEditor(const QUuid& widget, const QString& display = {}) = 0;
  virtual void continueSetup() = 0;
  virtual void showAbout() = 0;
  virtual void showHelp() = 0;
  virtual void chooseFolderIcons() = 0;
  virtual void openSpace() = 0;
  /// Takes a Space file in.
  virtual void importSpace(const QString& path) = 0;
  virtual void saveSpace() = 0;
  virtual void checkForUpdates() = 0;
  /// Shows the command bar, or hides it when it is shown.
  virtual void toggleCommandBar() = 0;

  // --- Docks --------------------------------------------------------------------------------------------------------

  /// Hides the docks that are seen, or shows those that are not.
  virtual void toggleDock() = 0;
  /// Whether the user hid them; one that only its layout hides at the moment is not.
  virtual bool isDockHidden() const = 0;
  /// Shows the dock of the main display and gives it the keyboard.
  virtual void focusDock() = 0;
  virtual void chooseLayout(DockLayout layout) = 0;
  /// By its place among the profiles, from 0; one that does not exist changes nothing. Where a display has a profile of
  /// its own it is that display's which changes; without a display it is the active one.
  virtual void selectProfile(int index, const QString& display = {}) = 0;
  /// Opens the panel of a widget beside its tile on a display, or closes it when it is open.
  virtual void openPanel(const QString& display, const QUuid& widget) = 0;
  /// Opens all of the weather that a widget shows beside something else, in the place of its panel.
  virtual void openWeather(const QString& display, const QUuid& widget) = 0;
  /// Gives the system's own dock back until the layout changes.
  virtual void restoreSystemDock() = 0;
  /// Asks for a picture and puts a copy of it on the docks.
  virtual void chooseDockPicture() = 0;
  /// Asks for a folder of calendar files and adds it to the settings.
  virtual void addCalendarFolder() = 0;

  // --- What was done ------------------------------------------------------------------------------------------------

  /// Replaces a widget's settings, as a step that can be taken back. A sentence that says what was done is shown above
  /// the dock of a display (the first one where it is empty).
  virtual void changeWidget(const DockWidget& widget, const QString& display = {}, const QString& sentence = {}) = 0;
  /// Adds a widget of a kind at the end of what a display's dock shows, as a step that can be taken back. Null where
  /// that is full, which the message line says.
  virtual QUuid addWidget(const QString& kind, const QString& display) = 0;
  /// Says what was done in the same way as `changeWidget`, and offers to take it back and to make it again after that.
  /// What both hold must outlive the object that offers it; they may throw DomainError.
  virtual void offerUndo(const QString& display, const QString& sentence, const std::function<void()>& undo,
                         const std::function<void()>& redo) = 0;
  /// Takes the newest change back.
  virtual void undo() = 0;
  /// Makes again what was taken back last.
  virtual void redo() = 0;
  virtual void dismissMessage() = 0;
  /// Asks whether the settings that were kept aside are to take the place of the present ones, without what of them
  /// cannot be used; a step that can be taken back.
  virtual void openKeptSettings() = 0;

  // --- Applications and files ---------------------------------------------------------------------------------------

  /// `done` runs once, later, with whether an application was started.
  virtual void openUrl(const QUrl& url, const std::function<void(bool started)>& done = {}) = 0;
  virtual void openPath(const QString& path) = 0;
  /// Shows a file in its folder.
  virtual void reveal(const QString& path) = 0;
  /// Opens a file with an application by the path of its desktop entry.
  virtual void openWith(const QString& entryPath, const QString& path) = 0;
  /// Moves a file to the trash, as a step that can be taken back beside the dock of a display.
  virtual void moveToTrash(const QString& path, const QString& display) = 0;
  virtual void openTrash() = 0;
  /// Deletes what is in the trash for good, without asking.
  virtual void emptyTrash() = 0;
  virtual void copyText(const QString& text) = 0;
  /// Starts the application of a desktop entry, by the entry's path.
  virtual void startApplication(const QString& entryPath) = 0;
  /// Another window of an application by its entry's path; one that offers no way to open it is started once more.
  virtual void newWindow(const QString& entryPath) = 0;
  /// Adds a tile for the application of a desktop entry to what a display's dock shows, as a step that can be taken
  /// back.
  virtual void keepInDock(const QString& entryPath, const QString& display) = 0;
  /// A click on one of the apps of the dock that was acted on last, counted from 0 in the order of its row.
  virtual void openApp(int place) = 0;
  /// Brings a running application forward, by its identity in RunningApplications.
  virtual void bringApplication(quint64 application) = 0;
  /// The same for a click on it in the dock of a display. Of the one in front it minimises the only window, or asks
  /// which of several.
  virtual void activateApplication(quint64 application, const QString& display) = 0;
  virtual void showWindow(quint64 window) = 0;
  /// Sends a command to what is played, or to what plays a video of the web.
  virtual void controlPlayback(const MediaAction& action, bool isVideo) = 0;
  virtual void openSystemMonitor() = 0;
  virtual void openCalendarApp() = 0;
  /// Lets the user pick a color on the screen. `picked` runs once with "#RRGGBB", or never when nothing was picked.
  virtual void pickColor(const std::function<void(const QString& hex)>& picked) = 0;
  /// Ticks a reminder off, or takes the tick away.
  virtual void completeReminder(const Reminder& reminder, bool completed) = 0;
  /// Asks a process to end itself. Throws DomainError.
  virtual void endProcess(const ProcessReading& process) = 0;

  // --- The program itself -------------------------------------------------------------------------------------------

  /// Ends it once the event that asked for it is over.
  virtual void quit() = 0;
};

}  // namespace tarnwick
