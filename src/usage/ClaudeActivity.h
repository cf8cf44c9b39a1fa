#pragma once

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>
#include <optional>

#include "claudehook/ActivityRecord.h"
#include "services/RemoteValue.h"

namespace tarnwick {

/// What the sessions of Claude Code on this machine are doing, by the records that its hooks leave in a folder. Nothing
/// here writes, renames or removes anything in a folder but `removeOld`. Any thread.
struct ClaudeActivity {
  static constexpr qsizetype kMostRecords = 1000;
  static constexpr qsizetype kMostRows = 12;
  static constexpr double kForgotten = 86400;    ///< Seconds after which an event counts no more.
  static constexpr double kRecent = 3600;        ///< Seconds for which one says what is done now.
  static constexpr double kRemoved = 7 * 86400;  ///< Seconds after which its file may go.

  /// The records that count, newest first. A folder that is not there has none. Throws DomainError.
  static QList<ClaudeActivityRecord> records(const QString& directory, const QDateTime& now);
  /// What a tile shows of them.
  static RemoteValue value(const QList<ClaudeActivityRecord>& records, const QDateTime& now, const QLocale& locale);
  /// The earliest moment after `now` at which the same records are shown otherwise.
  static std::optional<QDateTime> nextChange(const QList<ClaudeActivityRecord>& records, const QDateTime& now);

  /// Records, then value.
  static RemoteValue read(const QString& directory, const QDateTime& now, const QLocale& locale = QLocale());

  /// Removes records older than `kRemoved`: of what lies in the folder only what our hook wrote under the name that it
  /// gave. For the program's own folder alone. How many went.
  static qsizetype removeOld(const QString& directory, const QDateTime& now);
};

}  // namespace tarnwick
