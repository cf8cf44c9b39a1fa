#pragma once

#include <QCoroFwd>
#include <QObject>
#include <functional>
#include <memory>
#include <stop_token>

#include "base/OrderedWork.h"
#include "base/Scheduler.h"
#include "facilities/BeatClient.h"
#include "files/FileWatch.h"
#include "services/RemoteValues.h"
#include "usage/LocalReading.h"

namespace tarnwick {

/// Keeps the tiles of Claude Code's activity up to date while displays show any: they are read anew within two seconds
/// of a change in their folder, and when what is told by the time alone changes. Nothing is done while nothing happens.
/// Main thread only.
class ClaudeActivityFollower final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  /// Has a widget read again, because its folder changed or because the time has come at which it shows something else.
  using Refresh = std::function<void(const DockWidget& widget, RemoteValues::Cause cause)>;

  /// `ownFolder` is that of the program's own hooks: old records in it are removed once a day. The scheduler outlives
  /// it.
  ClaudeActivityFollower(Scheduler& scheduler, Refresh refresh, QString ownFolder);
  ~ClaudeActivityFollower() override;

  /// Reads such a widget; to be used as long as this lives.
  LocalReader reader();

  BeatStep step() const override { return BeatStep::ClaudeActivity; }
  int everyTicks() const override { return 2; }
  bool isNeededBy(const ActiveSets& active) const override;
  void beat(const ActiveSets& active) override;
  void wake() override { isChanged_ = true; }
  void end() override;

 Q_SIGNALS:
  /// Sessions began to wait for a permission, and the user wants this widget to say so: the finished sentence.
  void called(const DockWidget& widget, const QString& sentence);

 private:
  struct Following;

  static QCoro::Task<RemoteValue> readFolder(std::shared_ptr<Following> following, DockWidget widget, QDateTime now,
                                             std::stop_token stop);
  void folderChanged();
  void stopWatching();
  void refreshAll(RemoteValues::Cause cause);
  void removeOld();

  Scheduler& scheduler_;
  Refresh refresh_;
  QString ownFolder_;
  std::unique_ptr<FileWatch> watch_;  ///< None while no tile is shown.
  QStringList folders_;
  QList<DockWidget> widgets_;
  double beatAt_ = 0;   ///< On the reference clock.
  double readAt_ = -1;  ///< The last time that widgets were read because of this.
  bool isChanged_ = false;
  JobHandle next_;  ///< A reading that has to come a moment later.
  std::shared_ptr<Following> following_;
  double removedAt_ = -1;
  OrderedWork disk_;
};

}  // namespace tarnwick
