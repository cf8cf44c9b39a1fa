#pragma once

#include <QStringList>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// The time over the date.
struct TimeDateContent {
  QString time;
  QString halfOfDay;  ///< "AM" or "PM"; empty where hours count to 24.
  QStringList dates;  ///< The date from its longest form to its shortest; the first that fits is shown.

  bool operator==(const TimeDateContent&) const = default;
};
TimeDateContent makeTimeDate(const TileRequest& request);
TileText describe(const TimeDateContent& content, const QString& name);
void paint(TileCanvas& canvas, const TimeDateContent& content);

/// A face with three hands.
struct AnalogClockContent {
  int hour = 0;
  int minute = 0;
  int second = 0;

  bool operator==(const AnalogClockContent&) const = default;
};
AnalogClockContent makeAnalogClock(const TileRequest& request);
TileText describe(const AnalogClockContent& content, const QString& name);
void paint(TileCanvas& canvas, const AnalogClockContent& content);

}  // namespace tarnwick
