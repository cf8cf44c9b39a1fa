#pragma once

#include <string>
#include <unordered_map>

#include "platform/ical/CalendarTextReader.h"
#include "platform/ical/module/ComponentValues.h"
#include "platform/ical/module/Occasions.h"
#include "platform/ical/module/TextChunks.h"

namespace tarnwick {

/// Reads iCalendar texts with libical: only what can touch the range is parsed at all.
class TextReader final : public CalendarTextReader {
 public:
  CalendarText read(const QByteArray& text, const CalendarRange& range) override;

 private:
  CalendarRange range_;
  std::unique_ptr<SystemZones> zones_;
  WalkBudget budget_;
};

/// The reading of one text.
class TextReading {
 public:
  TextReading(const QByteArray& text, const CalendarRange& range, SystemZones& zones, WalkBudget& budget);

  CalendarText result();

 private:
  /// What replaces one occasion of a series.
  struct Exception {
    Component component;
    CalendarTime occasion;
  };

  void describe();
  void collectExceptions();
  bool isOutside(const TextChunks::Chunk& chunk) const;
  Component parse(const TextChunks::Chunk& chunk);

  void readEvent(const TextChunks::Chunk& chunk);
  void addEvents(icalcomponent* component, const CalendarTime& start, const Occasions& occasions, qint64 length);
  void readTodo(const TextChunks::Chunk& chunk);
  void addReminder(icalcomponent* component, const std::string& uid, const QString& occasion);
  void addSeries(icalcomponent* component, const std::string& uid, const CalendarTime& anchor,
                 const Occasions& occasions, std::optional<qint64> untilDue);
  void readLeftExceptions();

  TextChunks chunks_;
  UtcSeconds from_;
  UtcSeconds until_;
  int firstDay_;
  int lastDay_;
  CalendarZones zones_;
  WalkBudget& budget_;
  std::unordered_map<std::string, std::vector<Exception>> exceptions_;
  CalendarText result_;
};

}  // namespace tarnwick
