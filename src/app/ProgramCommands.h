#pragma once

#include <QObject>
#include <functional>
#include <optional>

#include "app/FolderQuestion.h"
#include "app/PictureKeeper.h"
#include "apps/StandardApplications.h"
#include "store/Commands.h"
#include "store/Services.h"

namespace tarnwick {

class AppStore;
class CommandBarHost;
class DockPresenter;
class Readings;
class Windows;

/// What the commands lead to. All must outlive them.
struct CommandTargets {
  DockPresenter& presenter;
  Windows& windows;
  CommandBarHost& commandBar;
  std::function<void()> quit;  ///< Ends the program. Required.
};

/// Does what a user can ask for, each command by the part of the program that it belongs to.
class ProgramCommands final : public QObject, public Commands {
  Q_OBJECT
 public:
  /// All must outlive it. Docks and windows hold these commands and are led to by them, so they are made after them:
  /// setTargets() is to be called before the first command comes; can() needs none of it.
  ProgramCommands(AppStore& store, const Services& services, Readings& readings);
  void setTargets(CommandTargets targets) { targets_.emplace(std::move(targets)); }

  bool can(Optional command) const override;

  void showSettings() override;
  void showLibrary(const QString& display, const QUuid& profile) override;
  void openEditor(const QUuid& widget, const QString& display = {}) override;
  void continueSetup() override;
  void showAbout() override;
  void showHelp() override;
  void chooseFolderIcons() override {}
  void openSpace() override {}
  void importSpace(const QString& path) override;
  void saveSpace() override {}
  void checkForUpdates() override {}
  void toggleCommandBar() override;

  void toggleDock() override;
  bool isDockHidden() const override;
  void focusDock() override;
  void chooseLayout(DockLayout layout) override;
  void selectProfile(int index, const QString& display) override;
  void openPanel(const QString& display, const QUuid& widget) override;
  void openWeather(const QString& display, const QUuid& widget) override;
  void restoreSystemDock() override;
  void chooseDockPicture() override;
  void addCalendarFolder() override;

  void changeWidget(const DockWidget& widget, const QString& display = {}, const QString& sentence = {}) override;
  QUuid addWidget(const QString& kind, const QString& display) override;
  void offerUndo(const QString& display, const QString& sentence, const std::function<void()>& undo,
                 const std::function<void()>& redo) override;
  void undo() override;
  void redo() override;
  void dismissMessage() override;
  void openKeptSettings() override;

  void openUrl(const QUrl& url, const std::function<void(bool started)>& done) override;
  void openPath(const QString& path) override;
  void reveal(const QString& path) override;
  void openWith(const QString& entryPath, const QString& path) override;
  void moveToTrash(const QString& path, const QString& display) override;
  void openTrash() override;
  void emptyTrash() override;
  void copyText(const QString& text) override;
  void startApplication(const QString& entryPath) override;
  void newWindow(const QString& entryPath) override;
  void keepInDock(const QString& entryPath, const QString& display) override;
  void bringApplication(quint64 application) override;
  void openApp(int place) override;
  void activateApplication(quint64 application, const QString& display) override;
  void showWindow(quint64 window) override;
  void openSystemMonitor() override;
  void openCalendarApp() override;
  void pickColor(const std::function<void(const QString& hex)>& picked) override;
  void controlPlayback(const MediaAction& action, bool isVideo) override;
  void completeReminder(const Reminder& reminder, bool completed) override;
  void endProcess(const ProcessReading& process) override;

  void quit() override;

 private:
  /// The desktop entry of what is installed for a purpose; empty where nothing is.
  QString entryFor(StandardApplications::Purpose purpose) const;
  void startFor(StandardApplications::Purpose purpose);

  DockPresenter& presenter() { return targets_->presenter; }
  Windows& windows() { return targets_->windows; }

  AppStore& store_;
  const Services& services_;
  Readings& readings_;
  std::optional<CommandTargets> targets_;
  PictureKeeper pictures_;
  FolderQuestion pictureQuestion_;
  FolderQuestion folderQuestion_;
};

}  // namespace tarnwick
