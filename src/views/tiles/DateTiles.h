#pragma once

#include <optional>

#include "views/tiles/ClockTiles.h"
#include "views/tiles/ClockWords.h"

namespace tarnwick {

/// The date over weekday and week.
struct DateContent {
  QString date;
  QStringList captions;  ///< From the longest to the shortest.
  QString spoken;        ///< The whole date, for the tip.

  bool operator==(const DateContent&) const = default;
};
DateContent makeDate(const TileRequest& request);
TileText describe(const DateContent& content, const QString& name);
void paint(TileCanvas& canvas, const DateContent& content);

/// The weekday over the number of the day.
struct DayNumberContent {
  QString weekday;
  QString day;
  QString spoken;

  bool operator==(const DayNumberContent&) const = default;
};
DayNumberContent makeDayNumber(const TileRequest& request);
TileText describe(const DayNumberContent& content, const QString& name);
void paint(TileCanvas& canvas, const DayNumberContent& content);
/// Whether a day has the tile for itself.
enum class DaySize { Alone, Beside };
/// A weekday in the accent over a figure, both in the middle of `x`; tiles of calendars begin with it too.
void paintDay(TileCanvas& canvas, double x, const QString& weekday, const QString& day, DaySize size);

/// Time, date and the weather beside them, where a place is connected.
struct TodayClockContent {
  TimeDateContent clock;
  std::optional<WeatherReading> weather;

  bool operator==(const TodayClockContent&) const = default;
};
TodayClockContent makeTodayClock(const TileRequest& request);
TileText describe(const TodayClockContent& content, const QString& name);
void paint(TileCanvas& canvas, const TodayClockContent& content);

/// The time at one place in the world.
struct WorldTimeContent {
  ClockTime time;
  QStringList captions;  ///< From the longest to the shortest.
  Sky sky = Sky::Here;

  bool operator==(const WorldTimeContent&) const = default;
};
WorldTimeContent makeWorldTime(const TileRequest& request);
TileText describe(const WorldTimeContent& content, const QString& name);
void paint(TileCanvas& canvas, const WorldTimeContent& content);

/// The times at a few places.
struct WorldListContent {
  struct Row {
    QString city;
    QString time;
    QString timeAlone;  ///< Without the half of the day.
    QString day;        ///< Where the date there is another one.
    bool operator==(const Row&) const = default;
  };
  QList<Row> rows;

  bool operator==(const WorldListContent&) const = default;
};
WorldListContent makeWorldList(const TileRequest& request);
TileText describe(const WorldListContent& content, const QString& name);
void paint(TileCanvas& canvas, const WorldListContent& content);

/// The zones of a world clock's option, without those that are none; a few well-known ones for an empty option.
QStringList worldZones(const QString& option);

}  // namespace tarnwick
