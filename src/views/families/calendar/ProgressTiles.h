#pragma once

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"
#include "widgets/TimeMath.h"

namespace tarnwick {

class TileCanvas;

/// How much of the day, the month or the year has passed.
struct ProgressContent {
  TimeMath::Component component = TimeMath::Component::Day;
  int percent = 0;  ///< Rounded; the whole only when all of it has passed.
  QString caption;
  int marks = 24;  ///< Hours, days or months.
  int passed = 0;  ///< Whole ones.
  int part = 0;    ///< Of the mark that runs, in tenths.

  bool operator==(const ProgressContent&) const = default;
};
ProgressContent makeDayProgress(const TileRequest& request);
ProgressContent makeMonthProgress(const TileRequest& request);
ProgressContent makeYearProgress(const TileRequest& request);
TileText describe(const ProgressContent& content, const QString& name);
void paint(TileCanvas& canvas, const ProgressContent& content);

/// A share as it is shown: 100 only for what is over.
int shownPercent(double share);

}  // namespace tarnwick
