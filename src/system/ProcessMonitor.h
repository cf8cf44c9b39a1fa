#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <memory>
#include <optional>

#include "base/OrderedWork.h"
#include "base/Scheduler.h"
#include "facilities/BeatClient.h"
#include "system/ProcessUsage.h"

namespace tarnwick {

/// What runs on the machine, as the process tiles show it. Refreshed on the beat while one is shown; there is no
/// timer here. Owns the source, which is read on another thread. Main thread only, but for `read`.
class ProcessMonitor final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  /// `clock` must outlive this object.
  ProcessMonitor(std::unique_ptr<ProcessSource> source, const Scheduler& clock, QObject* parent = nullptr);

  /// Every process of the last sample, unsorted (see ProcessRanking).
  const QList<ProcessUsage>& rows() const { return rows_; }
  /// The line that is under the list.
  const QString& message() const { return message_; }
  bool loading() const { return loading_; }
  /// Shows these and samples nothing, for pictures.
  void setFixed(const QList<ProcessUsage>& rows, const QString& message);

  BeatStep step() const override { return BeatStep::Processes; }
  int everyTicks() const override { return 4; }
  bool isNeededBy(const ActiveSets& active) const override;
  void beat(const ActiveSets&) override { refresh(); }

  /// Starts one sample, unless one is under way.
  void refresh();
  /// One pass over the processes. Any thread, but not beside a refresh.
  QList<ProcessReading> read() { return source_->read(); }

  /// Asks a process to end itself, if it still is the one that was shown. Ask the user first. Throws DomainError.
  void end(const ProcessReading& process) { source_->end(process); }

 Q_SIGNALS:
  void changed();

 private:
  void take(const QList<ProcessReading>& readings);
  std::optional<double> usage(const ProcessReading& reading, double elapsed) const;

  std::unique_ptr<ProcessSource> source_;
  const Scheduler& clock_;
  QList<ProcessUsage> rows_;
  QString message_;
  OrderedWork sampling_;  ///< The last member: it uses the others.
  QHash<qint32, ProcessReading> previous_;
  std::optional<double> time_;
  bool loading_ = false;
  bool isFixed_ = false;
};

}  // namespace tarnwick
