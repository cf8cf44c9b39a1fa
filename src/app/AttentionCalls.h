#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>
#include <functional>

namespace tarnwick {

class AppStore;
class InstalledApps;
class LauncherHints;
struct RunningApp;

/// Tells which docks hold something that needs the user: an app that has begun to ask for attention, or a widget whose
/// timer ended or whose reminder is due. Main thread only.
class AttentionCalls final : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it. `displays` gives those that have a dock.
  AttentionCalls(AppStore& store, const LauncherHints& hints, const InstalledApps& apps,
                 std::function<QStringList()> displays);

 Q_SIGNALS:
  /// The dock of a display holds it. Emitted once a call, not while it lasts.
  void called(const QString& display);

 private:
  void look();
  void callFor(QUuid widget);
  bool asks(const RunningApp& app) const;
  bool holds(const QString& display, const RunningApp& app) const;

  AppStore& store_;
  const LauncherHints& hints_;
  const InstalledApps& apps_;
  std::function<QStringList()> displays_;
  QSet<quint64> asking_;  ///< The apps that asked when it was looked last.
};

}  // namespace tarnwick
