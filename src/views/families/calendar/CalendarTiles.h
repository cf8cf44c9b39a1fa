#pragma once

#include <QList>
#include <optional>

#include "views/tiles/GenericTile.h"
#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// What the calendars hold around this moment; an empty digest until they were read.
const CalendarDigest& digestOf(const TileSources& sources);

/// What tiles show in place of events (`reminders`: of reminders) while there are none to be had; absent while there
/// are.
std::optional<GenericContent> calendarNotice(const TileRequest& request);
std::optional<GenericContent> remindersNotice(const TileRequest& request);

/// A title over a caption, or the title alone in small docks.
void paintTitle(TileCanvas& canvas, double x, double space, const QString& title, const QString& caption,
                bool accented = false);

/// The day, and what comes next.
struct TodayEventContent {
  QString weekday;
  QString day;
  QString title;
  QString caption;
  QString shortCaption;   ///< Where there is no space for the other one.
  bool accented = false;  ///< Whether the caption leads to something to do.
  QString spoken;

  bool operator==(const TodayEventContent&) const = default;
};
TodayEventContent makeTodayEvent(const TileRequest& request);
TileText describe(const TodayEventContent& content, const QString& name);
void paint(TileCanvas& canvas, const TodayEventContent& content);

/// The next event behind a bar.
struct NextEventContent {
  QString title;
  QString caption;
  bool some = false;  ///< Whether there is one at all.

  bool operator==(const NextEventContent&) const = default;
};
NextEventContent makeNextEvent(const TileRequest& request);
TileText describe(const NextEventContent& content, const QString& name);
void paint(TileCanvas& canvas, const NextEventContent& content);

/// Events below each other: what comes next with the time behind it, or the agenda of a day with the time before it.
struct EventListContent {
  struct Row {
    QString title;
    QString word;
    QString colour;         ///< Of its calendar.
    bool accented = false;  ///< The one that comes next.
    bool operator==(const Row&) const = default;
  };
  bool agenda = false;
  QList<Row> rows;
  QString empty;  ///< What a list without a row says.

  bool operator==(const EventListContent&) const = default;
};
EventListContent makeThreeEvents(const TileRequest& request);
EventListContent makeDayAgenda(const TileRequest& request);
TileText describe(const EventListContent& content, const QString& name);
void paint(TileCanvas& canvas, const EventListContent& content);

/// Seven days: of the week with their numbers, or from today on with how full they are.
struct DaysContent {
  struct Day {
    QString name;
    QString number;
    int events = 0;
    bool today = false;
    bool free = false;  ///< No working day in this country.
    bool operator==(const Day&) const = default;
  };
  bool week = false;
  QList<Day> days;
  QString spoken;

  bool operator==(const DaysContent&) const = default;
};
DaysContent makeWeek(const TileRequest& request);
DaysContent makeSevenDays(const TileRequest& request);
TileText describe(const DaysContent& content, const QString& name);
void paint(TileCanvas& canvas, const DaysContent& content);

}  // namespace tarnwick
