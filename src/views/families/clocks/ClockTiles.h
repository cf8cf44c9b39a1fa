#pragma once

#include <QStringList>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// What the sky looks like where a clock goes, for clocks of other places.
enum class Sky { Here, Day, Night };

/// The moment on a widget's clock: in the zone that it is set to, or the user's.
QDateTime clockMoment(const TileRequest& request);
/// Whether a widget's clock goes differently from the user's.
bool isElsewhere(const TileRequest& request);
/// The user's own word for what a widget's clock is for; empty where there is none.
QString clockLabel(const TileRequest& request);
/// Captions that begin with a label, and the label alone behind them.
QStringList labelled(const QString& label, const QStringList& captions);
/// The place that a widget's clock is for: its label, or its zone's city, or "Local".
QString clockPlace(const TileRequest& request);
/// A headline over the longest of `captions` that fits, and the sky at the right for another place.
void paintHeadline(TileCanvas& canvas, const QString& headline, const QString& unit, const QStringList& captions,
                   Sky sky, double space);

/// The time over the date.
struct TimeDateContent {
  QString time;
  QString halfOfDay;  ///< "AM" or "PM"; empty where hours count to 24.
  QStringList dates;  ///< The date from its longest form to its shortest; the first that fits is shown.
  Sky sky = Sky::Here;
  QString place;  ///< Of another zone, or the label; given to screen readers and shown in the tip.
  QString label;  ///< Shown before the date.

  bool operator==(const TimeDateContent&) const = default;
};
TimeDateContent makeTimeDate(const TileRequest& request);
TileText describe(const TimeDateContent& content, const QString& name);
void paint(TileCanvas& canvas, const TimeDateContent& content);

enum class ClockFace { Light, Dark, Minimal };

/// A face with three hands.
struct AnalogClockContent {
  ClockFace face = ClockFace::Light;
  int hour = 0;
  int minute = 0;
  int second = 0;
  QString label;  ///< There is no space for it on the face: it is in the tip.
  QString time;   ///< As it is spoken, without the second, which would make a screen reader speak all the time.

  bool operator==(const AnalogClockContent&) const = default;
};
AnalogClockContent makeAnalogClock(const TileRequest& request);
AnalogClockContent makeDarkClock(const TileRequest& request);
AnalogClockContent makeMinimalClock(const TileRequest& request);
TileText describe(const AnalogClockContent& content, const QString& name);
void paint(TileCanvas& canvas, const AnalogClockContent& content);

}  // namespace tarnwick
