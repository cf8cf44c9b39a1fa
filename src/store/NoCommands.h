#pragma once

#include "store/Commands.h"

namespace tarnwick {

/// Does nothing: for pictures of windows and panels, behind which there is no program.
class NoCommands : public Commands {
 public:
  bool can(Optional) const override { return false; }

  void showSettings() override {}
  void showLibrary(const QString&, const QUuid& = {}) override {}
  void openEditor(const QUuid&, const QString&) override {}
  void continueSetup() override {}
  void showAbout() override {}
  void showHelp() override {}
  void chooseFolderIcons() override {}
  void openSpace() override {}
  void importSpace(const QString&) override {}
  void saveSpace() override {}
  void checkForUpdates() override {}
  void toggleCommandBar() override {}

  void toggleDock() override {}
  bool isDockHidden() const override { return false; }
  void focusDock() override {}
  void chooseLayout(DockLayout) override {}
  void selectProfile(int, const QString&) override {}
  void openPanel(const QString&, const QUuid&) override {}
  void openWeather(const QString&, const QUuid&) override {}
  void restoreSystemDock() override {}
  void chooseDockPicture() override {}
  void addCalendarFolder() override {}

  void changeWidget(const DockWidget&, const QString& = {}, const QString& = {}) override {}
  QUuid addWidget(const QString&, const QString&) override { return {}; }
  void offerUndo(const QString&, const QString&, const std::function<void()>&, const std::function<void()>&) override {}
  void undo() override {}
  void redo() override {}
  void dismissMessage() override {}
  void openKeptSettings() override {}

  void openUrl(const QUrl&, const std::function<void(bool)>& = {}) override {}
  void openPath(const QString&) override {}
  void reveal(const QString&) override {}
  void openWith(const QString&, const QString&) override {}
  void moveToTrash(const QString&, const QString&) override {}
  void openTrash() override {}
  void emptyTrash() override {}
  void copyText(const QString&) override {}
  void startApplication(const QString&) override {}
  void newWindow(const QString&) override {}
  void keepInDock(const QString&, const QString&) override {}
  void bringApplication(quint64) override {}
  void openApp(int) override {}
  void activateApplication(quint64, const QString&) override {}
  void showWindow(quint64) override {}
  void openSystemMonitor() override {}
  void openCalendarApp() override {}
  void pickColor(const std::function<void(const QString&)>&) override {}
  void controlPlayback(const MediaAction&, bool) override {}
  void completeReminder(const Reminder&, bool) override {}
  void endProcess(const ProcessReading&) override {}

  void quit() override {}
};

}  // namespace tarnwick
