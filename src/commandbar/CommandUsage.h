#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>

#include "base/RecordCodec.h"

namespace tarnwick {

/// How often and how lately rows of the command bar were chosen, by their ids.
struct CommandUsage {
  struct Record {
    int count = 0;    ///< How often, ever.
    double last = 0;  ///< When last: see `seconds`.

    static constexpr auto fields() {
      return std::tuple(field::required("count", &Record::count), field::required("last", &Record::last));
    }
    bool operator==(const Record&) const = default;
  };

  /// More records than this are cut to the best `kKept`.
  static constexpr qsizetype kMost = 500;
  static constexpr qsizetype kKept = 375;

  QHash<QString, Record> records;

  /// Seconds since the year 2001 began in UTC.
  static double seconds(const QDateTime& moment);

  /// The row was chosen.
  void record(const QString& id, const QDateTime& at);

  /// What use adds to a row's score: 1 for one use just now, 2 for three and more, half of it after each week since the
  /// last. A last use that is still to come counts as now.
  static double boost(const Record& record, double now);
  double boostOf(const QString& id, double now) const;

  bool operator==(const CommandUsage&) const = default;

 private:
  void prune(double now);
};

}  // namespace tarnwick
