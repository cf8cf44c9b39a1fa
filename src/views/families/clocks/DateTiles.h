#pragma once

#include <optional>

#include "views/families/clocks/ClockTiles.h"
#include "views/tiles/WeatherReading.h"
#include "widgets/ClockWords.h"

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
/// Time, date and the weather beside them, where a place is connected.
struct TodayClockContent {
  TimeDateContent clock;
  std::optional<WeatherReading> weather;
  QString place;    ///< Of a weather that was never read.
  QString problem;  ///< Why it was not, as a finished sentence; empty where it is on its way.
  bool hasFailed = false;
  bool isLoading = false;

  bool operator==(const TodayClockContent&) const = default;
};
inline bool isLoading(const TodayClockContent& content) { return content.isLoading; }
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

}  // namespace tarnwick
