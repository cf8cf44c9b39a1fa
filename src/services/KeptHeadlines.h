#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>
#include <functional>

#include "base/OrderedWork.h"
#include "base/Scheduler.h"
#include "services/RemoteCache.h"

namespace tarnwick {

/// The headlines of widgets as they are on the disk for the next run. What is new is written there in time, what is
/// forgotten is off it at once. The disk is waited for elsewhere. Main thread only.
class KeptHeadlines {
 public:
  static constexpr double kDelay = 30;  ///< Seconds from a new headline to its place on the disk, at most.

  /// The scheduler must outlive it.
  KeptHeadlines(Scheduler& scheduler, QString file);

  /// Reads in what an earlier run left. Of what it has of these widgets, and of no others, `found` is called with each
  /// that was not replaced or forgotten meanwhile; what is of no use to any of them goes.
  void read(std::function<QList<DockWidget>()> widgets,
            std::function<void(const DockWidget& widget, const RemoteValue& value)> found);
  void keep(const DockWidget& widget, const RemoteValue& value);
  void forget(QUuid widget);
  /// Writes what is not written yet, and waits for it.
  void end();

 private:
  void take(const RemoteCache& cache, const QList<DockWidget>& widgets,
            const std::function<void(const DockWidget&, const RemoteValue&)>& found);
  void saveIn(double seconds);
  void save();

  Scheduler& scheduler_;
  QString file_;
  QHash<QUuid, CachedValue> values_;
  bool isRead_ = false;
  QSet<QUuid> forgotten_;  ///< Before it was read.
  JobHandle saving_;
  OrderedWork disk_;
};

}  // namespace tarnwick
