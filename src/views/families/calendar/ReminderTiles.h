#pragma once

#include <QList>
#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// Open reminders below each other; one alone has a larger ring. A click on a ring ticks the reminder off.
struct RemindersContent {
  struct Row {
    QString title;
    QString word;  ///< When it is due.
    bool overdue = false;
    bool ticks = false;  ///< Whether it can be ticked off here.
    bool operator==(const Row&) const = default;
  };
  bool agenda = false;
  QList<Row> rows;
  QString empty;

  bool operator==(const RemindersContent&) const = default;
};
RemindersContent makeNextReminder(const TileRequest& request);
RemindersContent makeRemindersAgenda(const TileRequest& request);
TileText describe(const RemindersContent& content, const QString& name);
void paint(TileCanvas& canvas, const RemindersContent& content);
/// The reminder whose ring is under the point, in the order in which they are open.
std::optional<int> partAt(const RemindersContent& content, const TileClick& click);

/// How many are due today, and how far one has come.
struct DueTodayContent {
  int due = 0;
  int done = 0;

  bool operator==(const DueTodayContent&) const = default;
};
DueTodayContent makeDueToday(const TileRequest& request);
TileText describe(const DueTodayContent& content, const QString& name);
void paint(TileCanvas& canvas, const DueTodayContent& content);

}  // namespace tarnwick
