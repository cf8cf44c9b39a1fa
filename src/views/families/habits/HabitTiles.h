#pragma once

#include <QList>
#include <QPointF>
#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// A glass that fills over the day.
struct WaterContent {
  int glasses = 0;
  int goal = 8;

  bool operator==(const WaterContent&) const = default;
};
WaterContent makeWater(const TileRequest& request);
TileText describe(const WaterContent& content, const QString& name);
void paint(TileCanvas& canvas, const WaterContent& content);
/// 0 on the glass: a click there counts one more.
std::optional<int> partAt(const WaterContent& content, const TileClick& click);

/// The last seven days of a habit, today at the end.
struct HabitContent {
  static constexpr int kDays = 7;

  QString habit;
  int streak = 0;
  QList<bool> days;

  bool operator==(const HabitContent&) const = default;
};
HabitContent makeHabit(const TileRequest& request);
TileText describe(const HabitContent& content, const QString& name);
void paint(TileCanvas& canvas, const HabitContent& content);
/// 0 on today: a click there ticks it off.
std::optional<int> partAt(const HabitContent& content, const TileClick& click);

}  // namespace tarnwick
