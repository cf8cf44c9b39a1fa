#include "views/families/calendar/ProgressTiles.h"

#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kFigureBaseline = 30.5;
constexpr double kBarTop = 40;
constexpr double kProgressHeight = 12;
constexpr double kHourWidth = 3;
constexpr double kMonthWidth = 7.5;
constexpr double kHourCorner = 1.5;
constexpr double kMonthCorner = 2;
constexpr double kFaintestPart = 0.3;  ///< Of an hour that has just begun.

constexpr double kProgressDot = 2.6;
constexpr double kDotPitch = 8.4;
constexpr int kDotColumns = 6;
constexpr int kDotRows = 5;
constexpr double kCaptionGap = 6;

constexpr int kHours = 24;
constexpr int kMonths = 12;
constexpr int kTenths = 10;

ProgressContent progress(const TileRequest& request, TimeMath::Component component) {
  const QDateTime& now = request.sources.now;
  const double share = TimeMath::progress(now, component);
  ProgressContent content;
  content.component = component;
  content.percent = shownPercent(share);
  const QLocale& locale = request.sources.locale;
  switch (component) {
    case TimeMath::Component::Day:
      content.caption = TileWords::tr("of today");
      content.marks = kHours;
      break;
    case TimeMath::Component::Month:
      content.caption = locale.standaloneMonthName(now.date().month());
      content.marks = now.date().daysInMonth();
      break;
    case TimeMath::Component::Year:
      content.caption = TileWords::tr("of %1").arg(locale.toString(now.date(), u"yyyy"_s));
      content.marks = kMonths;
      break;
  }
  double passed = share * content.marks;
  if (component == TimeMath::Component::Month) passed = now.date().day() - 1;
  if (component == TimeMath::Component::Year)
    passed = now.date().month() - 1 + TimeMath::progress(now, TimeMath::Component::Month);
  content.passed = static_cast<int>(std::floor(passed));
  content.part = static_cast<int>((passed - content.passed) * kTenths);
  return content;
}

/// A row of bars over the whole width, the first `passed` of them full.
void paintBars(TileCanvas& canvas, const ProgressContent& content, double width, double corner, bool fills) {
  QPainter& painter = canvas.painter();
  const double left = theme::kTextLeft;
  const double space = canvas.width() - theme::kTextRight - left;
  const double pitch = (space - width) / (content.marks - 1);
  const double top = canvas.showsCaption() ? kBarTop : kBarTop + 4;
  for (int i = 0; i < content.marks; ++i) {
    const QRectF bar = canvas.snapped(QRectF(left + pitch * i, top, width, kProgressHeight));
    const bool running = i == content.passed;
    if (i >= content.passed) drawRounded(painter, bar, corner, canvas.colors().track);
    if (i < content.passed) drawRounded(painter, bar, corner, canvas.accent());
    if (!running || content.part == 0) continue;
    const double share = static_cast<double>(content.part) / kTenths;
    if (fills) {
      painter.save();
      const QRectF part = canvas.snapped(bar.adjusted(0, bar.height() * (1 - share), 0, 0));
      drawRounded(painter, part, std::min(corner, part.height() / 2), canvas.accent());
      painter.restore();
    } else {
      drawRounded(painter, bar, corner, faded(canvas.accent(), kFaintestPart + (1 - kFaintestPart) * share));
    }
  }
}

/// One dot a day; today's is the foreground's.
double paintDots(TileCanvas& canvas, const ProgressContent& content) {
  QPainter& painter = canvas.painter();
  painter.setPen(Qt::NoPen);
  const int columns = std::max(kDotColumns, (content.marks + kDotRows - 1) / kDotRows);
  const QPointF first(canvas.width() - theme::kTextRight - kDotPitch * (columns - 1),
                      theme::kTileMiddle - kDotPitch * (kDotRows - 1) / 2);
  for (int i = 0; i < content.marks; ++i) {
    painter.setBrush(i < content.passed    ? canvas.accent()
                     : i == content.passed ? canvas.colors().primary
                                           : canvas.colors().track);
    painter.drawEllipse(first + QPointF(i % columns, i / columns) * kDotPitch, kProgressDot, kProgressDot);
  }
  return first.x() - kProgressDot;
}

}  // namespace

int shownPercent(double share) {
  constexpr int whole = 100;
  const int percent = static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * whole));
  return share < 1 ? std::min(percent, whole - 1) : whole;
}

ProgressContent makeDayProgress(const TileRequest& request) { return progress(request, TimeMath::Component::Day); }
ProgressContent makeMonthProgress(const TileRequest& request) { return progress(request, TimeMath::Component::Month); }
ProgressContent makeYearProgress(const TileRequest& request) { return progress(request, TimeMath::Component::Year); }

TileText describe(const ProgressContent& content, const QString& name) {
  return {name, LocalFigures::percent(content.percent) + u' ' + content.caption};
}

void paint(TileCanvas& canvas, const ProgressContent& content) {
  using namespace theme;
  const QString percent = LocalFigures::number(content.percent);
  const QString sign = LocalFigures::percentSign();
  if (content.component == TimeMath::Component::Month) {
    const double end = paintDots(canvas, content) - kCaptionGap;
    double baseline = kHeadlineBaseline;
    if (!canvas.showsCaption()) baseline = TileCanvas::centredBaseline(canvas.line(percent, TextStyle::Headline));
    canvas.figure(kTextLeft, baseline, TextStyle::Headline, percent, sign);
    if (canvas.showsCaption())
      canvas.text(kTextLeft, kCaptionBaseline, end - kTextLeft, TextStyle::Caption, content.caption,
                  canvas.colors().secondary);
    return;
  }
  const double end = canvas.figure(kTextLeft, kFigureBaseline, TextStyle::Headline, percent, sign);
  const TextLine caption = canvas.line(content.caption, TextStyle::Caption);
  const double right = canvas.width() - kTextRight;
  if (canvas.showsCaption() && right - caption.width() >= end + kCaptionGap)
    caption.drawRight(canvas.painter(), {right, kFigureBaseline - 1}, canvas.colors().secondary);
  const bool day = content.component == TimeMath::Component::Day;
  canvas.unmirrored(canvas.width() / 2, [&] {
    paintBars(canvas, content, day ? kHourWidth : kMonthWidth, day ? kHourCorner : kMonthCorner, !day);
  });
}

}  // namespace tarnwick
