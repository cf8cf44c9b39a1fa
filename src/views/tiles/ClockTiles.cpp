#include "views/tiles/ClockTiles.h"

#include <QPixmapCache>
#include <QRegularExpression>
#include <QTimeZone>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "views/theme/Bands.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The moment in the zone that the widget is set to.
QDateTime localTime(const TileRequest& request) {
  const QString zone = request.widget.options.value(u"timezone"_s);
  if (zone.isEmpty()) return request.sources.now;
  const QTimeZone known(zone.toUtf8());
  return known.isValid() ? request.sources.now.toTimeZone(known) : request.sources.now;
}

/// How a locale writes a date, less the year and what only serves the year.
QString withoutYear(QString format) {
  static const QRegularExpression before(u"[\\s,./-]*(?:'[^']*'[\\s,]*)?y+(?:\\s*'[^']*')?"_s);
  format.remove(before);
  while (!format.isEmpty() && (format[0].isSpace() || format[0] == u',')) format.remove(0, 1);
  const QString rest = format.trimmed();
  return rest.startsWith(u'年') ? rest.sliced(1) : rest;
}

QStringList datesFromLongToShort(const QLocale& locale, const QDate& date) {
  const QString full = withoutYear(locale.dateFormat(QLocale::LongFormat));
  QString shortMonth = full;
  shortMonth.replace(u"MMMM"_s, u"MMM"_s);
  QString shortDay = shortMonth;
  shortDay.replace(u"dddd"_s, u"ddd"_s);
  QStringList dates;
  for (const QString& format : {full, shortMonth, shortDay})
    if (const QString text = locale.toString(date, format); !dates.contains(text)) dates.append(text);
  return dates;
}

/// What the locale writes between hours and minutes.
QString timeSeparator(const QLocale& locale) {
  static const QRegularExpression between(u"[hH]+([.:])m+"_s);
  const auto match = between.match(locale.timeFormat(QLocale::ShortFormat));
  return match.hasMatch() ? match.captured(1) : u":"_s;
}

constexpr double kFaceRadius = 27;
constexpr double kTickOuter = 24;

QPointF towards(double turns) {
  const double angle = turns * 2 * std::numbers::pi;
  return {std::sin(angle), -std::cos(angle)};
}

void drawFace(QPainter& painter, const PictureColors& colors, QPointF centre) {
  painter.setPen(QPen(colors.faceRim, 1));
  painter.setBrush(colors.face);
  painter.drawEllipse(centre, kFaceRadius - 0.5, kFaceRadius - 0.5);
  for (int hour = 0; hour < 12; ++hour) {
    const bool quarter = hour % 3 == 0;
    painter.setPen(QPen(quarter ? colors.faceInk : colors.faceTick, quarter ? 2 : 1, Qt::SolidLine, Qt::RoundCap));
    const QPointF direction = towards(hour / 12.0);
    painter.drawLine(centre + direction * kTickOuter, centre + direction * (quarter ? 20 : 21.6));
  }
}

/// The face as a picture that is kept: a clock is painted every second, and only its hands have moved.
QPixmap faceFor(TileCanvas& canvas, double unit, QPointF centre, int side) {
  const PictureColors& colors = canvas.colors().pictures;
  const QString key = u"clock face %1 %2 %3 %4 %5"_s.arg(unit)
                          .arg(qRound(centre.x() * 16))
                          .arg(qRound(centre.y() * 16))
                          .arg(colors.faceRim.rgba())
                          .arg(colors.face.rgba());
  QPixmap picture;
  if (QPixmapCache::find(key, &picture)) return picture;
  picture = QPixmap(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(centre);
  painter.scale(unit, unit);
  drawFace(painter, colors, {});
  painter.end();
  QPixmapCache::insert(key, picture);
  return picture;
}

void placeFace(TileCanvas& canvas, QPointF centre) {
  QPainter& painter = canvas.painter();
  const QTransform& transform = painter.deviceTransform();
  if (!canvas.isStill() || transform.type() > QTransform::TxScale) {
    drawFace(painter, canvas.colors().pictures, centre);
    return;
  }
  const double unit = transform.m11();
  const int side = static_cast<int>(std::ceil(kFaceRadius * unit)) * 2 + 2;
  const QPointF place = transform.map(centre);
  const QPointF corner(std::floor(place.x() - side / 2.0), std::floor(place.y() - side / 2.0));
  const QPixmap picture = faceFor(canvas, unit, place - corner, side);
  painter.save();
  painter.translate(transform.inverted().map(corner));
  painter.scale(1 / unit, 1 / unit);
  painter.drawPixmap(0, 0, picture);
  painter.restore();
}

void drawHand(QPainter& painter, QPointF centre, double turns, double from, double to, double width,
              const QColor& color) {
  painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
  const QLineF line(centre + towards(turns) * from, centre + towards(turns) * to);
  const QRectF bounds = QRectF(line.p1(), line.p2()).normalized().adjusted(-width, -width, width, width);
  inBands(painter, bounds, [&] { painter.drawLine(line); });
}

}  // namespace

TimeDateContent makeTimeDate(const TileRequest& request) {
  const QDateTime now = localTime(request);
  const QLocale& locale = request.sources.locale;
  TimeDateContent content;
  const QString minutes = timeSeparator(locale) + u"mm"_s;
  content.time =
      locale.toString(now.time(), request.sources.use24Hour ? u"HH"_s + minutes : u"h"_s + minutes + u" AP"_s);
  if (!request.sources.use24Hour) {
    // Only with the mark in the format does the hour count to twelve.
    content.halfOfDay = now.time().hour() < 12 ? locale.amText() : locale.pmText();
    content.time.remove(content.halfOfDay, Qt::CaseInsensitive);
    content.time = content.time.trimmed();
  }
  content.dates = datesFromLongToShort(locale, now.date());
  return content;
}

TileText describe(const TimeDateContent& content, const QString& name) {
  QStringList parts{content.time};
  if (!content.halfOfDay.isEmpty()) parts[0] += u' ' + content.halfOfDay;
  if (!content.dates.isEmpty()) parts.append(content.dates.first());
  return {name, parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const TimeDateContent& content) {
  using namespace theme;
  if (!canvas.showsCaption()) {
    const double baseline = TileCanvas::centredBaseline(canvas.line(content.time, TextStyle::Headline));
    canvas.figure(kTextLeft, baseline, TextStyle::Headline, content.time, content.halfOfDay);
    return;
  }
  canvas.figure(kTextLeft, kHeadlineBaseline, TextStyle::Headline, content.time, content.halfOfDay);
  Typography::fitting(content.dates, TextStyle::Caption, canvas.roomAfter(kTextLeft), Elide::End, canvas.scale())
      .drawFromInk(canvas.painter(), {kTextLeft, kCaptionBaseline}, canvas.colors().secondary);
}

AnalogClockContent makeAnalogClock(const TileRequest& request) {
  const QTime time = localTime(request).time();
  return {time.hour(), time.minute(), time.second()};
}

TileText describe(const AnalogClockContent& content, const QString& name) {
  // Without the second, which would make a screen reader speak all the time.
  return {name, QLocale().toString(QTime(content.hour, content.minute), QLocale::ShortFormat)};
}

void paint(TileCanvas& canvas, const AnalogClockContent& content) {
  const PictureColors& colors = canvas.colors().pictures;
  QPainter& painter = canvas.painter();
  const QPointF centre(canvas.width() / 2, theme::kTileMiddle);
  placeFace(canvas, centre);
  const double minutes = content.minute + content.second / 60.0;
  drawHand(painter, centre, (content.hour % 12 + minutes / 60) / 12, 0, 13, 2.6, colors.faceInk);
  drawHand(painter, centre, minutes / 60, 0, 19.6, 1.8, colors.faceInk);
  drawHand(painter, centre, content.second / 60.0, -5.2, 21.1, 1, colors.faceSecond);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.faceSecond);
  painter.drawEllipse(centre, 2.6, 2.6);
  painter.setBrush(colors.face);
  painter.drawEllipse(centre, 1, 1);
}

}  // namespace tarnwick
