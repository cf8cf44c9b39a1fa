#pragma once

#include <QHash>
#include <QObject>
#include <QRectF>
#include <QUuid>
#include <map>

#include "apps/AppOpener.h"
#include "apps/RunningApplications.h"
#include "base/Scheduler.h"
#include "config/DockWidget.h"
#include "desktop/ClientWindows.h"
#include "desktop/Files.h"
#include "store/Services.h"

namespace tarnwick {

class AppStore;
class Commands;

/// What clicks on a dock's tiles do: start, bring forward, minimise, cycle, quit, open. Failures land in the store's
/// message line. Main thread only.
class DockCommands : public QObject {
  Q_OBJECT
 public:
  /// Seconds for which a tile shows that its application starts, when no window comes.
  static constexpr double kLaunchFeedback = 10;

  /// All must outlive it.
  DockCommands(AppStore& store, const Services& services, Commands& commands);

  /// A click on a tile of a display's dock: brings the tile's application forward, minimises its window when that is in
  /// front or asks which of several, or starts it; opens a folder, a file, the trash. Every other tile opens its panel.
  void activateTile(const QString& display, const QUuid& widget) { openTile(display, widget, true); }
  void activateApplication(const QString& display, quint64 application);
  /// The same from a menu, which never minimises.
  void openTile(const QString& display, const QUuid& widget) { openTile(display, widget, false); }
  void openApplication(const QString& display, quint64 application);

  /// The running application that a widget stands for; 0 for none.
  quint64 applicationOf(const DockWidget& widget) const;
  void newWindow(quint64 application);
  void newWindowOfTile(const QUuid& widget);
  void newWindowOfEntry(const QString& entryPath);
  /// Brings the next window of the application forward that a display's dock shows, or the one before for a negative
  /// direction; the latest when another application is in front.
  void cycleWindows(const QString& display, quint64 application, int direction);
  /// Asks every window of the application to close, which the application may refuse.
  void quit(quint64 application);
  void startAction(const QString& entryPath, const QString& action);

  /// Whether somebody points at the message that says that something could not be opened, which then stays.
  void holdMessage(bool held);

  /// Whether the application of a desktop entry was started and no window of it has come yet.
  bool isLaunching(const QString& entryPath) const { return launching_.contains(entryPath); }

  /// Where a display's dock shows its applications, in desktop coordinates, by the identity of the running application.
  void setTileRects(const QString& display, const QHash<quint64, QRectF>& rects);

  /// The window that follows `current` in `windows`, round and round; the first when `current` is not among them, 0
  /// when there is none.
  static quint64 nextWindow(const QList<quint64>& windows, quint64 current, int direction);

 Q_SIGNALS:
  /// The user is to choose one of the windows of an application that is in front.
  void windowChoiceRequested(const QString& display, quint64 application);
  /// isLaunching() changed for some application.
  void launchingChanged();

 private:
  struct Launch {
    qsizetype windows = 0;  ///< How many it had before.
    bool active = false;    ///< Whether it was in front.
    JobHandle end;
  };

  void openTile(const QString& display, const QUuid& widget, bool isClick);
  void openEntry(const QString& display, const QString& entryPath, bool isClick);
  bool isSecondClick(const QString& what);
  void turnTo(const QString& display, quint64 application);
  bool openPlace(const QString& display, const DockWidget& widget);
  void tellFailure(const QString& sentence);
  void endMessageLater();
  void launchBegan(const QString& entryPath);
  void runningChanged();
  void sendTileRects();

  AppStore& store_;
  const Services& services_;
  Commands& commands_;
  QString passing_;    ///< The last message about something that could not be opened.
  JobHandle message_;  ///< Its end.
  std::map<QString, Launch> launching_;
  std::map<QString, QHash<quint64, QRectF>> tiles_;
  QHash<quint64, QRectF> sent_;           ///< By window.
  std::pair<QString, double> clicked_{};  ///< What was last, and when.
};

}  // namespace tarnwick
