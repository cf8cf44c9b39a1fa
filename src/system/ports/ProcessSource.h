#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// What one process has used up to now.
struct ProcessReading {
  qint32 pid = 0;
  quint64 start = 0;  ///< Stamp of the process's start: distinguishes it from a later one with the same identifier.
  QString name;
  quint64 cpuNanoseconds = 0;  ///< User and system time together, over all its threads.
  quint64 memory = 0;          ///< Bytes that the process has for itself: resident less shared.

  bool operator==(const ProcessReading&) const = default;
};

/// The processes of the machine. Called on any thread, one call at a time for `read`; `end` may come beside it.
class ProcessSource {
 public:
  virtual ~ProcessSource() = default;

  /// One pass over all processes, in no particular order. What ends meanwhile or reports nothing is left out; empty
  /// where the machine reports nothing at all.
  virtual QList<ProcessReading> read() = 0;

  /// Asks exactly this process to end itself; one that has ended since, or whose identifier belongs to another by now,
  /// needs nothing. Does not wait for it. Throws DomainError where it may not be asked.
  virtual void end(const ProcessReading& process) = 0;
};

}  // namespace tarnwick
