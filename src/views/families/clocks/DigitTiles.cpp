#include "views/families/clocks/DigitTiles.h"

#include <algorithm>

#include "views/families/clocks/ClockTiles.h"
#include "views/families/clocks/PixelDigits.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPartGap = 3;

constexpr QSizeF kWell(59, 48);
constexpr double kWellGap = 8;
constexpr double kWellCorner = 9;
constexpr double kWellUpper = 0.4;  ///< The strength of a card's upper half.
constexpr double kSplit = 31.5;
constexpr QSizeF kHinge(1.5, 5);

constexpr double kPitch = 5;
constexpr double kDot = 4;
constexpr double kDotCorner = 0.9;
constexpr double kUnlit = 0.4;
constexpr int kNoon = 12;
constexpr int kDotColumns = 25;  ///< Four digits, a column between them, and the colon.

constexpr double kOverlap = 9;
constexpr double kOverlapOpacity = 0.86;

constexpr double kMinuteRing = 24.5;
constexpr double kMinuteStroke = 4;
constexpr double kHourRing = 18.8;
constexpr double kHourStroke = 2.5;
constexpr double kRingSpace = 33;

constexpr double kHalfDot = 1.8;
constexpr double kHalfBeside = 5;  ///< Of the dots for the half of the day from the edge of a card.
constexpr double kHalfInset = 9;
constexpr double kHalfAbove = 9.5;  ///< From the middle of a ring.

DigitsContent digits(const TileRequest& request, DigitFace face) {
  const QDateTime now = clockMoment(request);
  DigitsContent content;
  content.face = face;
  content.time = ClockWords::time(now.time(), request.sources.locale, request.sources.use24Hour);
  if (face == DigitFace::Seconds) content.seconds = request.sources.locale.toString(now.time(), u"ss"_s);
  content.hour = now.time().hour();
  content.minute = now.time().minute();
  content.label = clockLabel(request);
  if (isElsewhere(request) || !content.label.isEmpty()) content.place = clockPlace(request);
  return content;
}

/// The half of the day where there is no space for its word: the upper of two dots is lit before noon, the lower after.
void paintHalf(TileCanvas& canvas, const DigitsContent& content, double x, double upper, double lower) {
  if (content.time.halfOfDay.isEmpty()) return;
  const bool evening = content.hour >= kNoon;
  canvas.painter().setPen(Qt::NoPen);
  for (const bool isLower : {false, true}) {
    canvas.painter().setBrush(isLower == evening ? canvas.accent() : canvas.colors().track);
    canvas.painter().drawEllipse(QPointF(x, isLower ? lower : upper), kHalfDot, kHalfDot);
  }
}

/// The largest style in which a time of twelve hours has space for the mark of morning or evening.
TextStyle plainStyle(const TileCanvas& canvas, const DigitsContent& content, double space) {
  const QString& half = content.time.halfOfDay;
  if (half.isEmpty()) return TextStyle::Display;
  const bool seconds = content.face == DigitFace::Seconds;
  for (const TextStyle style : {TextStyle::Display, TextStyle::Headline, TextStyle::Figure17}) {
    const TextLine word = seconds ? canvas.line(half, TextStyle::Caption) : TextLine::unit(half, style, canvas.scale());
    if (canvas.line(content.time.text(), style).width() + kPartGap + word.width() <= space) return style;
  }
  return TextStyle::Title;
}

/// The time with what belongs behind it, in the middle of the tile.
void paintPlain(TileCanvas& canvas, const DigitsContent& content) {
  QPainter& painter = canvas.painter();
  const double space = canvas.width() - theme::kPictureInset * 2;
  const TextStyle style = plainStyle(canvas, content, space);
  const TextLine time = canvas.line(content.time.text(), style);
  const bool seconds = content.face == DigitFace::Seconds;
  const TextLine unit = TextLine::unit(seconds ? content.seconds : content.time.halfOfDay, style, canvas.scale());
  const TextLine half = canvas.line(seconds ? content.time.halfOfDay : QString(), TextStyle::Caption);
  const auto with = [](const TextLine& part) { return part.text().isEmpty() ? 0 : kPartGap + part.width(); };
  // Seconds go before the half of the day does.
  const bool showsUnit = time.width() + with(unit) + with(half) <= space;
  const bool showsHalf = time.width() + (showsUnit ? with(unit) : 0) + with(half) <= space;
  const double whole = time.width() + (showsUnit ? with(unit) : 0) + (showsHalf ? with(half) : 0);
  const bool labelled = !content.label.isEmpty() && canvas.showsCaption();
  const double baseline = labelled                      ? theme::kHeadlineBaseline
                          : style == TextStyle::Display ? theme::kDisplayBaseline
                                                        : TileCanvas::centredBaseline(time);
  double x = (canvas.width() - whole) / 2;
  time.draw(painter, {x, baseline}, canvas.colors().primary);
  x += time.width() + kPartGap;
  if (showsUnit) unit.draw(painter, {x, baseline}, canvas.colors().secondary);
  if (showsHalf) half.draw(painter, {x + (showsUnit ? with(unit) : 0), baseline}, canvas.colors().secondary);
  if (labelled)
    canvas.centredText(theme::kCaptionBaseline, TextStyle::Caption, content.label, canvas.colors().secondary);
}

void paintCard(TileCanvas& canvas, const QRectF& well, const QString& text) {
  QPainter& painter = canvas.painter();
  const Palette& colors = canvas.colors();
  const QRectF split = canvas.snapped(QRectF(well.left(), kSplit, well.width(), 1));
  const auto half = [&](const QRectF& part, double strength) {
    painter.save();
    painter.setClipRect(part, Qt::IntersectClip);
    drawRounded(painter, well, kWellCorner, faded(colors.well, strength));
    painter.restore();
  };
  half(QRectF(well.topLeft(), QPointF(well.right(), split.top())), kWellUpper);
  half(QRectF(split.topLeft(), well.bottomRight()), 1);
  const TextLine figure = canvas.line(text, TextStyle::Flip);
  figure.drawCentred(painter, {well.center().x(), TileCanvas::centredBaseline(figure)}, colors.primary);
  painter.fillRect(split, colors.split);
  for (const double edge : {well.left(), well.right()})
    drawRounded(
        painter,
        QRectF(edge - kHinge.width() / 2, split.center().y() - kHinge.height() / 2, kHinge.width(), kHinge.height()),
        kHinge.width() / 2, colors.split);
}

void paintFlip(TileCanvas& canvas, const DigitsContent& content) {
  const double left = (canvas.width() - kWell.width() * 2 - kWellGap) / 2;
  const double top = theme::kTileMiddle - kWell.height() / 2;
  const QRectF hours = canvas.snapped(QRectF(QPointF(left, top), kWell));
  const QRectF minutes = canvas.snapped(QRectF(QPointF(left + kWell.width() + kWellGap, top), kWell));
  paintCard(canvas, hours, content.time.hours);
  paintCard(canvas, minutes, content.time.minutes);
  if (content.time.halfOfDay.isEmpty()) return;
  if (!canvas.showsCaption())
    return paintHalf(canvas, content, hours.left() + kHalfBeside, hours.top() + kHalfInset,
                     hours.bottom() - kHalfInset);
  const TextLine half = canvas.line(content.time.halfOfDay, TextStyle::GaugeLabel);
  half.draw(canvas.painter(), {hours.left() + 4, hours.top() + 3 + half.capHeight()}, canvas.colors().secondary);
}

void paintPixels(TileCanvas& canvas, const DigitsContent& content) {
  const double left = (canvas.width() - (kDotColumns - 1) * kPitch - kDot) / 2;
  const double top = theme::kTileMiddle - ((kPixelRows - 1) * kPitch + kDot) / 2;
  const QColor unlit = faded(canvas.colors().track, kUnlit);
  const auto dot = [&](int column, int row, const QColor& color) {
    drawRounded(canvas.painter(), canvas.snapped(QRectF(left + column * kPitch, top + row * kPitch, kDot, kDot)),
                kDotCorner, color);
  };
  const auto digit = [&](int column, int value) {
    const PixelDigit& rows = pixelDigit(value);
    for (int row = 0; row < kPixelRows; ++row)
      for (int at = 0; at < kPixelColumns; ++at) {
        const bool lit = (rows[static_cast<std::size_t>(row)] >> (kPixelColumns - 1 - at)) & 1;
        dot(column + at, row, lit ? canvas.accent() : unlit);
      }
  };
  const bool twelve = !content.time.halfOfDay.isEmpty();
  const int hour = twelve ? (content.hour + 11) % 12 + 1 : content.hour;
  // A clock of twelve hours has no leading nought.
  digit(0, twelve && hour < 10 ? -1 : hour / 10);
  digit(6, hour % 10);
  dot(12, 2, canvas.accent());
  dot(12, 4, canvas.accent());
  digit(14, content.minute / 10);
  digit(20, content.minute % 10);
  paintHalf(canvas, content, left - kPitch, top + kDot / 2, top + (kPixelRows - 1) * kPitch + kDot / 2);
}

void paintOverlap(TileCanvas& canvas, const DigitsContent& content) {
  const TextLine hours = canvas.line(content.time.hours, TextStyle::Overlap);
  const TextLine minutes = canvas.line(content.time.minutes, TextStyle::Overlap);
  const double left = (canvas.width() - hours.width() - minutes.width() + kOverlap) / 2;
  const double baseline = TileCanvas::centredBaseline(hours);
  hours.draw(canvas.painter(), {left, baseline}, canvas.colors().primary);
  minutes.draw(canvas.painter(), {left + hours.width() - kOverlap, baseline}, faded(canvas.accent(), kOverlapOpacity));
  const double x = std::max(kHalfDot * 2, left - kHalfBeside);
  paintHalf(canvas, content, x, baseline - hours.capHeight() + kHalfDot, baseline - kHalfDot);
}

void paintRing(TileCanvas& canvas, const DigitsContent& content) {
  const QPointF centre(canvas.width() / 2, theme::kTileMiddle);
  const auto ring = [&](double radius, double stroke, double share, const QColor& color) {
    canvas.arc(centre, radius, stroke, 0, 360, canvas.colors().track);
    if (share > 0) canvas.arc(centre, radius, stroke, 0, 360 * share, color);
  };
  const double hour = content.hour % 12 + content.minute / 60.0;
  ring(kMinuteRing, kMinuteStroke, content.minute / 60.0, canvas.accent());
  ring(kHourRing, kHourStroke, hour / 12, canvas.colors().secondary);
  const TextLine figure = canvas.line(content.time.text(), TextStyle::TabLabel);
  if (figure.width() <= kRingSpace)
    figure.drawCentred(canvas.painter(), {centre.x(), TileCanvas::centredBaseline(figure)}, canvas.colors().primary);
  paintHalf(canvas, content, centre.x(), centre.y() - kHalfAbove, centre.y() + kHalfAbove);
}

void paintFace(TileCanvas& canvas, const DigitsContent& content) {
  switch (content.face) {
    case DigitFace::Plain:
    case DigitFace::Seconds:
      return paintPlain(canvas, content);
    case DigitFace::Flip:
      return paintFlip(canvas, content);
    case DigitFace::Pixel:
      return paintPixels(canvas, content);
    case DigitFace::Overlap:
      return paintOverlap(canvas, content);
    case DigitFace::Ring:
      return paintRing(canvas, content);
  }
}

}  // namespace

DigitsContent makeTimeOnly(const TileRequest& request) { return digits(request, DigitFace::Plain); }
DigitsContent makeTimeSeconds(const TileRequest& request) { return digits(request, DigitFace::Seconds); }
DigitsContent makeFlipClock(const TileRequest& request) { return digits(request, DigitFace::Flip); }
DigitsContent makePixelClock(const TileRequest& request) { return digits(request, DigitFace::Pixel); }
DigitsContent makeOverlapClock(const TileRequest& request) { return digits(request, DigitFace::Overlap); }
DigitsContent makeRingClock(const TileRequest& request) { return digits(request, DigitFace::Ring); }

TileText describe(const DigitsContent& content, const QString& name) {
  // Without the second, which would make a screen reader speak all the time.
  return {name, content.place.isEmpty() ? content.time.full() : content.time.full() + u", "_s + content.place};
}

void paint(TileCanvas& canvas, const DigitsContent& content) {
  canvas.unmirrored(canvas.width() / 2, [&] { paintFace(canvas, content); });
}

}  // namespace tarnwick
