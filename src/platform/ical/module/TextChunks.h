#pragma once

#include <QList>
#include <string>
#include <string_view>

namespace tarnwick {

/// The parts of an iCalendar text, found by a single look at the beginnings of its lines. Most events of a calendar lie
/// far from the days that are shown; this finds them without understanding the rest.
struct TextChunks {
  enum class Kind { Event, Todo, Zone, Other };

  struct Chunk {
    Kind kind = Kind::Other;
    std::string_view text;  ///< From its BEGIN line to its END line.
    std::string uid;
    int start = 0;  ///< Day of its start as yyyymmdd; 0 where that isn't plain to see.
    int end = 0;    ///< The same for its end or when it is due.
    int completed = 0;
    bool isSeries = false;     ///< Has a rule or further dates.
    bool isException = false;  ///< Stands for one occasion of a series.
    bool hasLength = false;    ///< Has a duration in place of an end.
    bool isDone = false;
  };

  QList<Chunk> chunks;
  bool isCalendar = false;
  bool isCutOff = false;  ///< The last part has no end.
  std::string name;
  std::string colour;

  /// Views point into the text.
  static TextChunks of(std::string_view text);
};

}  // namespace tarnwick
