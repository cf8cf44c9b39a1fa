#pragma once

#include <QStringList>
#include <vector>

#include "store/AppStore.h"
#include "store/NoCommands.h"

namespace tarnwick::test {

/// Writes down what it was asked for, as "name argument", and does nothing. Everything can be asked of it, less what
/// `missing` holds.
class RecordingCommands : public NoCommands {
 public:
  bool can(Optional command) const override { return !missing.contains(command); }

  void showSettings() override { asked << QStringLiteral("settings"); }
  void showLibrary(const QString& display, const QUuid& profile = {}) override {
    asked << QStringLiteral("library %1").arg(profile.isNull() ? display : profile.toString());
  }
  void openEditor(const QUuid& widget, const QString&) override {
    asked << QStringLiteral("edit %1").arg(widget.toString());
  }
  void continueSetup() override { asked << QStringLiteral("setup"); }
  void showAbout() override { asked << QStringLiteral("about"); }
  void showHelp() override { asked << QStringLiteral("help"); }
  void toggleCommandBar() override { asked << QStringLiteral("command bar"); }

  void toggleDock() override { asked << QStringLiteral("toggle"); }
  bool isDockHidden() const override { return isHidden; }
  void chooseLayout(DockLayout layout) override { layouts << layout; }
  void selectProfile(int index, const QString& display = {}) override {
    asked << QStringLiteral("profile %1 %2").arg(index).arg(display);
  }
  void openWeather(const QString& display, const QUuid& widget) override {
    asked << QStringLiteral("weather %1 %2").arg(display, widget.toString());
  }
  void openPanel(const QString& display, const QUuid& widget) override {
    asked << QStringLiteral("panel %1 %2").arg(display, widget.toString());
  }
  void restoreSystemDock() override { asked << QStringLiteral("restore"); }
  void chooseDockPicture() override { asked << QStringLiteral("picture"); }
  void addCalendarFolder() override { asked << QStringLiteral("calendar folder"); }

  void changeWidget(const DockWidget& widget, const QString& = {}, const QString& sentence = {}) override {
    changed << widget;
    if (!sentence.isEmpty()) announced << sentence;
  }
  QUuid addWidget(const QString& kind, const QString& display) override {
    asked << QStringLiteral("add %1 on %2").arg(kind, display);
    return {};
  }
  void offerUndo(const QString&, const QString& sentence, const std::function<void()>& undo,
                 const std::function<void()>& redo) override {
    announced << sentence;
    undos.push_back(undo);
    redos.push_back(redo);
  }
  void undo() override { asked << QStringLiteral("undo"); }
  void redo() override { asked << QStringLiteral("redo"); }
  void openKeptSettings() override { asked << QStringLiteral("kept settings"); }

  /// Every address finds an application, unless `startsApplications` is false.
  void openUrl(const QUrl& url, const std::function<void(bool)>& done = {}) override {
    asked << url.toString(QUrl::FullyEncoded);
    if (done) done(startsApplications);
  }
  void openPath(const QString& path) override { asked << path; }
  void reveal(const QString& path) override { asked << QStringLiteral("reveal %1").arg(path); }
  void openWith(const QString& entryPath, const QString& path) override {
    asked << QStringLiteral("open %1 with %2").arg(path, entryPath);
  }
  void moveToTrash(const QString& path, const QString& display) override {
    asked << QStringLiteral("throw away %1 on %2").arg(path, display);
  }
  void openTrash() override { asked << QStringLiteral("trash"); }
  void emptyTrash() override { asked << QStringLiteral("emptied"); }
  void copyText(const QString& text) override { asked << QStringLiteral("copy %1").arg(text); }
  void startApplication(const QString& path) override { asked << QStringLiteral("start %1").arg(path); }
  void newWindow(const QString& path) override { asked << QStringLiteral("another %1").arg(path); }
  void keepInDock(const QString& path, const QString& display) override {
    asked << QStringLiteral("keep %1 on %2").arg(path, display);
  }
  void bringApplication(quint64 application) override { asked << QStringLiteral("app %1").arg(application); }
  void openApp(int place) override { asked << QStringLiteral("app %1").arg(place); }
  void activateApplication(quint64 application, const QString& display) override {
    asked << QStringLiteral("click %1 on %2").arg(QString::number(application), display);
  }
  void showWindow(quint64 window) override { asked << QStringLiteral("window %1").arg(window); }
  void pickColor(const std::function<void(const QString&)>& done) override { picked = done; }
  void controlPlayback(const MediaAction& action, bool isVideo) override {
    asked << QStringLiteral("playback %1%2")
                 .arg(static_cast<int>(action.kind))
                 .arg(isVideo ? QStringLiteral(" video") : QString());
  }
  void completeReminder(const Reminder& reminder, bool completed) override {
    asked << QStringLiteral("%1 %2").arg(completed ? QStringLiteral("done") : QStringLiteral("open"), reminder.title);
  }
  void quit() override { asked << QStringLiteral("quit"); }

  QStringList asked;
  QList<DockLayout> layouts;
  QList<DockWidget> changed;
  QStringList announced;  ///< Of what can be taken back.
  std::vector<std::function<void()>> undos;
  std::vector<std::function<void()>> redos;
  std::function<void(const QString&)> picked;
  QList<Optional> missing;
  bool startsApplications = true;
  bool isHidden = false;
};

/// The same, but widgets are changed in a store and added to it.
class ChangingCommands : public RecordingCommands {
 public:
  explicit ChangingCommands(AppStore& store) : store_(store) {}
  void changeWidget(const DockWidget& widget, const QString& display = {}, const QString& sentence = {}) override {
    RecordingCommands::changeWidget(widget, display, sentence);
    store_.update(widget);
  }
  QUuid addWidget(const QString& kind, const QString& display) override {
    RecordingCommands::addWidget(kind, display);
    return store_.add(kind, store_.profile(display).id);
  }

 private:
  AppStore& store_;
};

}  // namespace tarnwick::test
