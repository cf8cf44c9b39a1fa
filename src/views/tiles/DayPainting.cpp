#include "views/tiles/DayPainting.h"

#include "views/tiles/TileCanvas.h"

namespace tarnwick {

namespace {

constexpr double kWeekdayBaseline = 20;
constexpr double kDayBaseline = 48;
constexpr double kWeekdayBesideBaseline = 21.5;
constexpr double kDayBesideBaseline = 45.5;
constexpr double kWeekdayMargin = 8;

}  // namespace

void paintDay(TileCanvas& canvas, double x, const QString& weekday, const QString& day, DaySize size) {
  const bool alone = size == DaySize::Alone;
  const TextLine figure = canvas.line(day, alone ? TextStyle::Display : TextStyle::DayFigure);
  if (!canvas.showsCaption()) {
    figure.drawCentred(canvas.painter(), {x, TileCanvas::centredBaseline(figure)}, canvas.colors().primary);
    return;
  }
  canvas.line(weekday, alone ? TextStyle::Capitals : TextStyle::GaugeLabel)
      .elided(x * 2 - kWeekdayMargin, Elide::End)
      .drawCentred(canvas.painter(), {x, alone ? kWeekdayBaseline : kWeekdayBesideBaseline}, canvas.accentWord());
  figure.drawCentred(canvas.painter(), {x, alone ? kDayBaseline : kDayBesideBaseline}, canvas.colors().primary);
}

}  // namespace tarnwick
