#pragma once

#include <QHash>
#include <memory>
#include <stop_token>

#include "platform/ical/CalendarPlaces.h"
#include "platform/ical/CalendarTextReader.h"

namespace tarnwick {

/// Reads all calendars of a user, and remembers what each file held, so that after a change only the changed ones are
/// opened. Used on one thread at a time; throws nothing.
class CalendarScan {
 public:
  static constexpr qint64 largestFile = qint64{32} * 1024 * 1024;
  static constexpr qsizetype mostProblems = 20;

  struct Result {
    CalendarReading reading;
    QStringList folders;
    QHash<QString, QSet<QString>> awaited;
  };

  /// `makeReader` is called at the first reading; it may give null.
  explicit CalendarScan(std::function<std::unique_ptr<CalendarTextReader>()> makeReader);

  Result run(const CalendarPlaces& places, const CalendarRange& range, const std::stop_token& stop);

 private:
  struct Known {
    qint64 changed = 0;
    qint64 size = 0;
    quint64 number = 0;
    CalendarText text;
    QString problem;
  };

  Known open(const CalendarFile& file, const CalendarRange& range);
  static void add(const CalendarFile& file, const CalendarText& text, CalendarReading& into);

  std::function<std::unique_ptr<CalendarTextReader>()> makeReader_;
  std::unique_ptr<CalendarTextReader> reader_;
  bool isAsked_ = false;
  CalendarRange range_;
  QHash<QString, Known> known_;
};

}  // namespace tarnwick
