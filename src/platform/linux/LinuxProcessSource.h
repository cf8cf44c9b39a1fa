#pragma once

#include <QHash>
#include <QString>
#include <optional>
#include <string>

#include "platform/linux/ProcessStat.h"
#include "system/ports/ProcessSource.h"

namespace tarnwick {

/// The processes that the kernel shows under /proc, from one small file each, or two where its memory changed since the
/// last pass. Proportional memory would need the kernel to walk every page of every process, which is far too dear for
/// a list that is read every few seconds.
class LinuxProcessSource final : public ProcessSource {
 public:
  /// `root` stands in for "/proc", so that a captured tree can be read.
  explicit LinuxProcessSource(const QString& root = QStringLiteral("/proc"));

  QList<ProcessReading> read() override;
  void end(const ProcessReading& process) override;

 private:
  /// What a process was at the last pass.
  struct Known {
    quint64 start = 0;
    QByteArray kernelName;
    QString name;
    quint64 residentPages = 0;
    quint64 memory = 0;
  };

  /// None where the process is gone.
  std::optional<Known> look(int processes, qint32 pid, const ProcessStat& stat, const Known* before) const;

  std::string root_;
  quint64 nanosecondsInTick_;
  quint64 pageSize_;
  QHash<qint32, Known> known_;
};

}  // namespace tarnwick
