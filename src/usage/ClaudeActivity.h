#pragma once

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>
#include <optional>
#include <stop_token>

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

  struct Found {
    QList<ClaudeActivityRecord> records;  ///< Those that count, newest first.
    /// The earliest moment after `now` at which the same files are shown otherwise.
    std::optional<QDateTime> nextChange;
  };
  /// Looks into a folder; one that is not there has no records. Throws DomainError and Cancelled.
  static Found find(const QString& directory, const QDateTime& now, const std::stop_token& stop = {});
  /// What a tile shows of the records.
  static RemoteValue value(const QList<ClaudeActivityRecord>& records, const QDateTime& now, const QLocale& locale);

  /// A moment as records tell it, and back.
  static double secondsOf(const QDateTime& time);
  static QDateTime dateOf(double seconds);

  /// Whether a session waits for a permission.
  static bool isWaiting(const ClaudeActivityRecord& record, const QDateTime& now);

  /// Finds, and gives the value.
  static RemoteValue read(const QString& directory, const QDateTime& now, const QLocale& locale = QLocale());

  /// Removes records older than `kRemoved`: of what lies in the folder only what our hook wrote under the name that it
  /// gave. For the program's own folder alone. How many went.
  static qsizetype removeOld(const QString& directory, const QDateTime& now);
};

}  // namespace tarnwick
