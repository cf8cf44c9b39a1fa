#include "views/tiles/TileCanvas.h"

#include <algorithm>
#include <cmath>

#include "views/theme/Bands.h"

namespace tarnwick {

namespace {

constexpr double kUnitGap = 2;
constexpr double kWordGap = 8;
/// With fewer letters a name is a scrap.
constexpr qsizetype kLeastLetters = 6;
/// The part of a title that mostly distinguishes it.
constexpr qsizetype kTellingLetters = 10;

/// The letters that are left of a text.
qsizetype lettersOf(const TextLine& line, const QString& text) {
  return line.text() == text ? text.size() : std::max<qsizetype>(0, line.text().size() - 1);
}

}  // namespace

double TileCanvas::figure(double x, double baseline, TextStyle style, const QString& text, const QString& unit,
                          const QColor& color) {
  const TextLine number = line(text, style);
  number.drawFromInk(painter_, {x, baseline}, color.isValid() ? color : colors().primary);
  double end = x - number.inkInset(painter_) + number.width();
  if (!unit.isEmpty()) {
    const TextLine small = TextLine::unit(unit, style, scale());
    small.draw(painter_, {end + kUnitGap, baseline}, colors().secondary);
    end += kUnitGap + small.width();
  }
  return end;
}

void TileCanvas::text(double x, double baseline, double width, TextStyle style, const QString& text,
                      const QColor& color, Elide elide) {
  line(text, style).elided(width, elide).draw(painter_, {x, baseline}, color);
}

void TileCanvas::centredText(double baseline, TextStyle style, const QString& text, const QColor& color, Elide elide) {
  const double space = width_ - theme::kTextLeft;
  line(text, style).elided(space, elide).drawCentred(painter_, {width_ / 2, baseline}, color);
}

TextLine TileCanvas::name(const QString& text, TextStyle style, double space) const {
  TextLine shortened = line(text, style).elided(space, Elide::End);
  if (showsCaption()) return shortened;
  return lettersOf(shortened, text) < std::min(kLeastLetters, text.size()) ? line({}, style) : shortened;
}

void TileCanvas::row(double x, double baseline, const QString& title, TextStyle style, const QString& word,
                     const QColor& wordColor) {
  const TextLine aside = line(word, style == TextStyle::ListRowStrong ? TextStyle::ListRow : style);
  const TextLine whole = line(title, style);
  const double space = spaceAfter(x) - (word.isEmpty() ? 0 : aside.width() + kWordGap);
  const TextLine beside = whole.elided(space, Elide::End);
  const bool tells = lettersOf(beside, title) >= std::min(kTellingLetters, title.size());
  if (tells) aside.drawRight(painter_, {width_ - theme::kTextRight, baseline}, wordColor);
  (tells ? beside : whole.elided(spaceAfter(x), Elide::End)).draw(painter_, {x, baseline}, colors().primary);
}

void TileCanvas::symbol(const QString& name, QPointF centre, double size, const QColor& color) {
  Symbols::draw(painter_, name, QRectF(centre.x() - size / 2, centre.y() - size / 2, size, size), color);
}

void TileCanvas::arc(QPointF centre, double radius, double width, double begin, double sweep, const QColor& color) {
  constexpr int steps = 16;  // Of Qt's angles in one degree, which count against the clock from the right.
  painter_.setBrush(Qt::NoBrush);
  painter_.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
  const QRectF ring(centre.x() - radius, centre.y() - radius, radius * 2, radius * 2);
  unmirrored(centre.x(), [&] {
    inBands(painter_, ring.adjusted(-width, -width, width, width), [&] {
      painter_.drawArc(ring, static_cast<int>(std::lround((90 - begin) * steps)),
                       static_cast<int>(std::lround(-sweep * steps)));
    });
  });
}

QList<double> TileCanvas::rowBaselines(qsizetype wanted) const {
  constexpr double pitch = 16;
  constexpr double last = 52;  // Of three.
  constexpr qsizetype three = 3;
  const qsizetype count = std::min(wanted, showsLastRow() ? three : three - 1);
  const double step = showsCaption() ? pitch : pitch * 1.5;
  const double middle = showsCaption() ? last - pitch : last - pitch + 2.5;
  QList<double> baselines;
  for (qsizetype i = 0; i < count; ++i)
    baselines.append(middle + step * (static_cast<double>(i) - static_cast<double>(count - 1) / 2));
  return baselines;
}

QRectF TileCanvas::snapped(const QRectF& rect) const {
  const QTransform transform = painter_.deviceTransform();
  if (transform.type() > QTransform::TxScale) return rect;
  const QRectF device = transform.mapRect(rect);
  const QRectF whole(std::round(device.left()), std::round(device.top()), std::max(1.0, std::round(device.width())),
                     std::max(1.0, std::round(device.height())));
  return transform.inverted().mapRect(whole);
}

}  // namespace tarnwick
