#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>
#include <memory>

#include "base/Scheduler.h"

namespace tarnwick {

/// Notices that files or folders changed, also those that do not exist or may not be read yet, and says it once for a
/// burst of changes. Nothing is watched before the first call of watch(). Main thread only.
class FileWatch final : public QObject {
  Q_OBJECT
 public:
  /// How long a burst may last, in seconds.
  static constexpr double kQuiet = 0.3;

  /// `scheduler` must outlive it.
  explicit FileWatch(Scheduler& scheduler, QObject* parent = nullptr);

  /// Watches exactly these paths.
  void watch(const QStringList& paths);

 Q_SIGNALS:
  void changed();

 private:
  void arm();
  void folderChanged(const QString& folder);
  void soon();

  Scheduler& scheduler_;
  std::unique_ptr<QFileSystemWatcher> watcher_;
  QStringList paths_;
  QStringList missing_;
  JobHandle soon_;
};

}  // namespace tarnwick
