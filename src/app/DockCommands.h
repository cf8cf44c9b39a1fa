#pragma once

#include <QHash>
#include <QObject>
#include <QRectF>
#include <QUuid>
#include <functional>
#include <map>

#include "apps/AppOpener.h"
#include "apps/RunningApplications.h"
#include "base/Scheduler.h"
#include "config/DockWidget.h"
#include "desktop/ClientWindows.h"
#include "desktop/Files.h"

namespace tarnwick {

class AppStore;

/// What clicks on a dock's tiles do: start, bring forward, minimise, cycle, quit, open. Failures land in the store's
/// message line. Main thread only.
class DockCommands : public QObject {
  Q_OBJECT
 public:
  /// Seconds for which a tile shows that its application starts, when no window comes.
  static constexpr double kLaunchFeedback = 8;

  /// Borrowed; all are required.
  struct Parts {
    AppStore* store = nullptr;
    RunningApplications* running = nullptr;
    ClientWindows* windows = nullptr;
    InstalledApps* apps = nullptr;
    AppOpener* opener = nullptr;
    Files* files = nullptr;
  };

  explicit DockCommands(const Parts& parts);

  /// A click: brings the tile's application forward, or minimises it when it is in front, or starts it; opens a folder,
  /// a file, the trash. Every other tile opens its panel.
  void activateTile(const QUuid& widget) { openTile(widget, true); }
  void activateApplication(quint64 application);
  /// The same from a menu, which never minimises.
  void openTile(const QUuid& widget) { openTile(widget, false); }
  void openApplication(quint64 application);

  /// The running application that a widget stands for; 0 for none.
  quint64 applicationOf(const DockWidget& widget) const;
  void newWindow(quint64 application);
  void newWindowOfTile(const QUuid& widget);
  /// Brings the next window of the application forward, or the one before for a negative direction; the latest when
  /// another application is in front.
  void cycleWindows(quint64 application, int direction);
  void showWindow(quint64 window) { parts_.windows->activate(window); }
  /// Asks every window of the application to close, which the application may refuse.
  void quit(quint64 application);
  void startAction(const QString& entryPath, const QString& action);

  void reveal(const QString& path);
  void emptyTrash();
  /// Asks first.
  void askToEmptyTrash();

  /// Whether the application of a desktop entry was started and no window of it has come yet.
  bool isLaunching(const QString& entryPath) const { return launching_.contains(entryPath); }

  /// Where a display's dock shows its applications, in desktop coordinates, by the identity of the running application.
  void setTileRects(const QString& display, const QHash<quint64, QRectF>& rects);

  /// The window that follows `current` in `windows`, round and round; the first when `current` is not among them, 0
  /// when there is none.
  static quint64 nextWindow(const QList<quint64>& windows, quint64 current, int direction);

  /// Opens a tile's panel; a click does nothing while it is empty.
  std::function<void(const QUuid& widget)> showPanel;
  /// Opens the gallery of a folder or of the trash; while it is empty they open in the file manager.
  std::function<void(const QUuid& widget)> showGallery;

 Q_SIGNALS:
  /// isLaunching() changed for some application.
  void launchingChanged();

 private:
  struct Launch {
    qsizetype windows = 0;  ///< How many it had before.
    bool active = false;    ///< Whether it was in front.
    JobHandle end;
  };

  void openTile(const QUuid& widget, bool isClick);
  void openEntry(const QString& entryPath, bool mayMinimise);
  bool isSecondClick(const QString& what);
  void turnTo(quint64 application);
  bool openPlace(const DockWidget& widget);
  void newWindowOfEntry(const QString& entryPath);
  void launchBegan(const QString& entryPath);
  void runningChanged();
  void sendTileRects();

  Parts parts_;
  std::map<QString, Launch> launching_;
  std::map<QString, QHash<quint64, QRectF>> tiles_;
  QHash<quint64, QRectF> sent_;           ///< By window.
  std::pair<QString, double> clicked_{};  ///< What was last, and when.
};

}  // namespace tarnwick
