#include "views/families/clocks/ClockTiles.h"

#include <QPixmapCache>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "views/theme/Bands.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/ClockWords.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSkySize = 18;
constexpr double kSkyMiddle = 22;
constexpr double kUnitGap = 2;

constexpr double kFaceRadius = 27;
constexpr double kTickOuter = 24;
constexpr double kDotDistance = 22;
constexpr double kDotRadius = 1.5;

QPointF towards(double turns) {
  const double angle = turns * 2 * std::numbers::pi;
  return {std::sin(angle), -std::cos(angle)};
}

/// The colours of one face; a ground that is invalid is not painted.
struct FaceColors {
  QColor ground, rim, ink, tick, second;
};

FaceColors colorsOf(const TileCanvas& canvas, ClockFace face) {
  const PictureColors& pictures = canvas.colors().pictures;
  switch (face) {
    case ClockFace::Light:
      break;
    case ClockFace::Dark:
      return {pictures.nightFace, pictures.nightRim, pictures.nightInk, pictures.nightTick, pictures.nightSecond};
    case ClockFace::Minimal:
      return {{}, {}, canvas.colors().primary, canvas.colors().tertiary, canvas.accent()};
  }
  return {pictures.face, pictures.faceRim, pictures.faceInk, pictures.faceTick, pictures.faceSecond};
}

void drawFace(QPainter& painter, const FaceColors& colors, QPointF centre) {
  painter.setPen(QPen(colors.rim, 1));
  painter.setBrush(colors.ground);
  painter.drawEllipse(centre, kFaceRadius - 0.5, kFaceRadius - 0.5);
  for (int hour = 0; hour < 12; ++hour) {
    const bool quarter = hour % 3 == 0;
    painter.setPen(QPen(quarter ? colors.ink : colors.tick, quarter ? 2 : 1, Qt::SolidLine, Qt::RoundCap));
    const QPointF direction = towards(hour / 12.0);
    painter.drawLine(centre + direction * kTickOuter, centre + direction * (quarter ? 20 : 21.6));
  }
}

/// Four dots in place of a face.
void drawQuarters(QPainter& painter, const FaceColors& colors, QPointF centre) {
  painter.setPen(Qt::NoPen);
  for (int quarter = 0; quarter < 4; ++quarter) {
    painter.setBrush(quarter == 0 ? colors.ink : colors.tick);
    painter.drawEllipse(centre + towards(quarter / 4.0) * kDotDistance, kDotRadius, kDotRadius);
  }
}

/// The face as a picture that is kept: a clock is painted every second, and only its hands have moved.
QPixmap faceFor(const FaceColors& colors, double unit, QPointF centre, int side) {
  const QString key = u"clock face %1 %2 %3 %4 %5"_s.arg(unit)
                          .arg(qRound(centre.x() * 16))
                          .arg(qRound(centre.y() * 16))
                          .arg(colors.rim.rgba())
                          .arg(colors.ground.rgba());
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

void placeFace(TileCanvas& canvas, const FaceColors& colors, QPointF centre) {
  QPainter& painter = canvas.painter();
  const QTransform& transform = painter.deviceTransform();
  if (!canvas.isStill() || transform.type() > QTransform::TxScale) {
    drawFace(painter, colors, centre);
    return;
  }
  const double unit = transform.m11();
  const int side = static_cast<int>(std::ceil(kFaceRadius * unit)) * 2 + 2;
  const QPointF place = transform.map(centre);
  const QPointF corner(std::floor(place.x() - side / 2.0), std::floor(place.y() - side / 2.0));
  const QPixmap picture = faceFor(colors, unit, place - corner, side);
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

QDateTime clockMoment(const TileRequest& request) {
  return ClockWords::inZone(request.sources.now, request.widget.options.value(option::timezone));
}

bool isElsewhere(const TileRequest& request) {
  const QDateTime& now = request.sources.now;
  return clockMoment(request).offsetFromUtc() != now.offsetFromUtc();
}

QString clockLabel(const TileRequest& request) {
  const QString zone = request.widget.options.value(option::timezone);
  // Where the zone means nothing the time is the user's own, and no other place's name belongs to it.
  if (!zone.isEmpty() && !ClockWords::isZone(zone)) return {};
  return request.widget.options.value(option::zoneLabel).trimmed();
}

QString clockPlace(const TileRequest& request) {
  if (const QString label = clockLabel(request); !label.isEmpty()) return label;
  const QString zone = request.widget.options.value(option::timezone);
  return ClockWords::isZone(zone) ? ClockWords::city(zone) : TileWords::tr("Local");
}

QStringList labelled(const QString& label, const QStringList& captions) {
  if (label.isEmpty()) return captions;
  QStringList all;
  for (const QString& caption : captions) all << label + u" · "_s + caption;
  return all << label;
}

void paintHeadline(TileCanvas& canvas, const QString& headline, const QString& unit, const QStringList& captions,
                   Sky sky, double space) {
  using namespace theme;
  double baseline = kHeadlineBaseline;
  if (!canvas.showsCaption()) baseline = TileCanvas::centredBaseline(canvas.line(headline, TextStyle::Headline));
  const double end = canvas.figure(kTextLeft, baseline, TextStyle::Headline, headline, unit);
  const double skyLeft = canvas.width() - kTextRight - kSkySize;
  if (sky != Sky::Here && end + kUnitGap <= skyLeft)
    canvas.symbol(sky == Sky::Day ? u"sun.max"_s : u"moon"_s, {skyLeft + kSkySize / 2, kSkyMiddle}, kSkySize,
                  canvas.accent());
  if (canvas.showsCaption())
    Typography::fitting(captions, TextStyle::Caption, space, Elide::End, canvas.scale())
        .drawFromInk(canvas.painter(), {kTextLeft, kCaptionBaseline}, canvas.colors().secondary);
}

TimeDateContent makeTimeDate(const TileRequest& request) {
  const QDateTime now = clockMoment(request);
  const ClockTime time = ClockWords::time(now.time(), request.sources.locale, request.sources.use24Hour);
  TimeDateContent content{
      time.text(), time.halfOfDay,     ClockWords::dates(now.date(), request.sources.locale), Sky::Here,
      {},          clockLabel(request)};
  if (isElsewhere(request)) content.sky = ClockWords::isDay(now) ? Sky::Day : Sky::Night;
  if (isElsewhere(request) || !content.label.isEmpty()) content.place = clockPlace(request);
  return content;
}

TileText describe(const TimeDateContent& content, const QString& name) {
  QStringList parts{content.time};
  if (!content.halfOfDay.isEmpty()) parts[0] += u' ' + content.halfOfDay;
  if (!content.dates.isEmpty()) parts.append(content.dates.first());
  if (!content.place.isEmpty()) parts.append(content.place);
  return {name, parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const TimeDateContent& content) {
  paintHeadline(canvas, content.time, content.halfOfDay, labelled(content.label, content.dates), content.sky,
                canvas.spaceAfter(theme::kTextLeft));
}

namespace {

AnalogClockContent analogClock(const TileRequest& request, ClockFace face) {
  const QTime time = clockMoment(request).time();
  return {face,
          time.hour(),
          time.minute(),
          time.second(),
          clockLabel(request),
          ClockWords::time(time, request.sources.locale, request.sources.use24Hour).full()};
}

void paintClock(TileCanvas& canvas, const AnalogClockContent& content, QPointF centre) {
  const FaceColors colors = colorsOf(canvas, content.face);
  QPainter& painter = canvas.painter();
  if (content.face == ClockFace::Minimal)
    drawQuarters(painter, colors, centre);
  else
    placeFace(canvas, colors, centre);
  const double minutes = content.minute + content.second / 60.0;
  drawHand(painter, centre, (content.hour % 12 + minutes / 60) / 12, 0, 13, 2.6, colors.ink);
  drawHand(painter, centre, minutes / 60, 0, 19.6, 1.8, colors.ink);
  drawHand(painter, centre, content.second / 60.0, -5.2, 21.1, 1, colors.second);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.second);
  painter.drawEllipse(centre, 2.6, 2.6);
  painter.setBrush(colors.ground.isValid() ? colors.ground : canvas.colors().inkOnAccent);
  painter.drawEllipse(centre, 1, 1);
}

}  // namespace

AnalogClockContent makeAnalogClock(const TileRequest& request) { return analogClock(request, ClockFace::Light); }
AnalogClockContent makeDarkClock(const TileRequest& request) { return analogClock(request, ClockFace::Dark); }
AnalogClockContent makeMinimalClock(const TileRequest& request) { return analogClock(request, ClockFace::Minimal); }

TileText describe(const AnalogClockContent& content, const QString& name) {
  return {name, content.label.isEmpty() ? content.time : content.time + u", "_s + content.label};
}

void paint(TileCanvas& canvas, const AnalogClockContent& content) {
  const QPointF centre(canvas.width() / 2, theme::kTileMiddle);
  canvas.unmirrored(centre.x(), [&] { paintClock(canvas, content, centre); });
}

}  // namespace tarnwick
