#include "views/families/clocks/DateTiles.h"

#include <algorithm>

#include "views/tiles/DayPainting.h"
#include "views/tiles/RemoteState.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kDividerHeight = 36;
constexpr double kDividerFromRight = 69;
constexpr double kWeatherFromRight = 60;
constexpr double kWeatherPicture = 28;
constexpr double kWeatherTop = 14.5;
constexpr double kWeatherTopStacked = 8;
constexpr double kWeatherMiddle = 31;
constexpr double kWeatherLeastRight = 6;
constexpr double kWeatherStackedBaseline = 53;
constexpr double kWeatherFigureFromRight = 27.5;

constexpr double kRowGap = 8;
constexpr qsizetype kMostRows = 3;

}  // namespace

DateContent makeDate(const TileRequest& request) {
  const QLocale& locale = request.sources.locale;
  const QDate date = clockMoment(request).date();
  const int week = ClockWords::weekNumber(date, locale.firstDayOfWeek());
  DateContent content;
  content.date = ClockWords::dayAndMonth(date, locale);
  for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat})
    content.captions
        << TileWords::tr("%1 · Week %2").arg(ClockWords::weekday(date, locale, format), locale.toString(week));
  content.captions << ClockWords::weekday(date, locale);
  const QString label = clockLabel(request);
  content.captions = labelled(label, content.captions);
  content.spoken =
      ClockWords::dates(date, locale).value(0) + u", "_s + TileWords::tr("week %1").arg(locale.toString(week));
  if (!label.isEmpty()) content.spoken += u", "_s + label;
  return content;
}

TileText describe(const DateContent& content, const QString& name) { return {name, content.spoken}; }

void paint(TileCanvas& canvas, const DateContent& content) {
  const double space = canvas.spaceAfter(theme::kTextLeft);
  const QString date = canvas.line(content.date, TextStyle::Headline).elided(space, Elide::End).text();
  paintHeadline(canvas, date, {}, content.captions, Sky::Here, space);
}

DayNumberContent makeDayNumber(const TileRequest& request) {
  const QLocale& locale = request.sources.locale;
  const QDate date = clockMoment(request).date();
  QStringList spoken{ClockWords::dates(date, locale).value(0), clockLabel(request)};
  spoken.removeAll(QString());
  return {locale.toUpper(ClockWords::weekday(date, locale, QLocale::ShortFormat)), locale.toString(date.day()),
          spoken.join(u", "_s)};
}

TileText describe(const DayNumberContent& content, const QString& name) { return {name, content.spoken}; }

void paint(TileCanvas& canvas, const DayNumberContent& content) {
  paintDay(canvas, canvas.width() / 2, content.weekday, content.day, DaySize::Alone);
}

TodayClockContent makeTodayClock(const TileRequest& request) {
  TodayClockContent content;
  content.clock = makeTimeDate(request);
  content.clock.sky = Sky::Here;  // Its place is the weather's.
  const QString place = WeatherReading::placeOf(request.widget);
  if (place.isEmpty()) return content;
  content.weather = WeatherReading::of(request.widget, request.sources);
  const std::optional<RemoteReading> reading = request.sources.weather.of(request.widget.id);
  if (!reading) return content;
  const RemoteState state = RemoteState::of(*reading, request.sources);
  content.hasFailed = state.hasFailed;
  content.isLoading = state.isLoading;
  if (content.weather) return content;
  content.place = place;
  content.problem = state.problem;
  return content;
}

TileText describe(const TodayClockContent& content, const QString& name) {
  TileText text = describe(content.clock, name);
  if (!content.weather) {
    if (!content.problem.isEmpty()) text.value += u", "_s + content.place + u": "_s + content.problem;
    return text;
  }
  QStringList parts{text.value, QStringList{content.weather->place, content.weather->temperature}.join(u' '),
                    content.weather->age, content.weather->problem};
  parts.removeAll(QString());
  text.value = parts.join(u", "_s);
  return text;
}

void paint(TileCanvas& canvas, const TodayClockContent& content) {
  if (content.isLoading) paintLoading(canvas);
  if (content.hasFailed) paintFailure(canvas);
  const TimeDateContent& clock = content.clock;
  if (!content.weather) return paint(canvas, clock);
  const double divider = canvas.width() - kDividerFromRight;
  paintHeadline(canvas, clock.time, clock.halfOfDay, labelled(clock.label, clock.dates), Sky::Here,
                divider - theme::kTextLeft - kRowGap);
  QPainter& painter = canvas.painter();
  painter.fillRect(canvas.snapped(QRectF(divider, theme::kTileMiddle - kDividerHeight / 2, 1, kDividerHeight)),
                   canvas.colors().hairline);
  const TextLine figure = canvas.line(content.weather->temperature, TextStyle::Figure17);
  const double left = canvas.width() - kWeatherFigureFromRight;
  const bool fits = left + figure.width() <= canvas.width() - kWeatherLeastRight;
  const double picture =
      fits ? canvas.width() - kWeatherFromRight : divider + (kDividerFromRight - kWeatherPicture) / 2;
  drawWeather(painter, content.weather->picture, {picture, fits ? kWeatherTop : kWeatherTopStacked}, kWeatherPicture,
              canvas.colors());
  const QColor& ink = content.weather->isFailed ? canvas.colors().secondary : canvas.colors().primary;
  if (fits)
    figure.drawFromInk(painter, {left, TileCanvas::centredBaseline(figure, kWeatherMiddle)}, ink);
  else
    figure.drawCentred(painter, {divider + kDividerFromRight / 2, kWeatherStackedBaseline}, ink);
}

WorldTimeContent makeWorldTime(const TileRequest& request) {
  const QDateTime there = clockMoment(request);
  const QDateTime& here = request.sources.now;
  WorldTimeContent content;
  content.time = ClockWords::time(there.time(), request.sources.locale, request.sources.use24Hour);
  const QString place = clockPlace(request);
  if (ClockWords::isZone(request.widget.options.value(option::timezone)))
    content.captions << place + u" · "_s + ClockWords::ahead(there, here);
  content.captions << place;
  if (isElsewhere(request)) content.sky = ClockWords::isDay(there) ? Sky::Day : Sky::Night;
  return content;
}

TileText describe(const WorldTimeContent& content, const QString& name) {
  return {name, content.time.full() + u", "_s + content.captions.value(0)};
}

void paint(TileCanvas& canvas, const WorldTimeContent& content) {
  paintHeadline(canvas, content.time.text(), content.time.halfOfDay, content.captions, content.sky,
                canvas.spaceAfter(theme::kTextLeft));
}

WorldListContent makeWorldList(const TileRequest& request) {
  WorldListContent content;
  for (const QString& zone : worldZones(request.widget.options.value(option::zones))) {
    const QDateTime there = ClockWords::inZone(request.sources.now, zone);
    const ClockTime time = ClockWords::time(there.time(), request.sources.locale, request.sources.use24Hour);
    content.rows.append(
        {ClockWords::city(zone), time.full(), time.text(), ClockWords::dayThere(there, request.sources.now)});
  }
  return content;
}

TileText describe(const WorldListContent& content, const QString& name) {
  QStringList parts;
  for (const WorldListContent::Row& row : content.rows) {
    QStringList words{row.city, row.time, row.day};
    words.removeAll(QString());
    parts << words.join(u' ');
  }
  return {name, parts.join(u", "_s)};
}

namespace {

/// "N. York", where there is no space for more.
QString briefCity(const QString& city) {
  QStringList words = city.split(u' ', Qt::SkipEmptyParts);
  for (qsizetype i = 0; i + 1 < words.size(); ++i) words[i] = words[i].left(1) + u'.';
  return words.join(u' ');
}

}  // namespace

void paint(TileCanvas& canvas, const WorldListContent& content) {
  const QList<double> baselines = canvas.rowBaselines(std::min(content.rows.size(), kMostRows));
  const auto spaceBeside = [&](const QString& time) {
    return canvas.spaceAfter(theme::kTextLeft) - canvas.line(time, TextStyle::ListRow).width() - kRowGap;
  };
  // A city that cannot be read makes its time worthless; the half of the day is in the tip.
  const bool isTight = std::ranges::any_of(content.rows.first(baselines.size()), [&](const WorldListContent::Row& row) {
    return canvas.line(briefCity(row.city), TextStyle::ListRow).width() > spaceBeside(row.time);
  });
  for (qsizetype i = 0; i < baselines.size(); ++i) {
    const WorldListContent::Row& row = content.rows[i];
    const QString& time = isTight ? row.timeAlone : row.time;
    canvas.line(time, TextStyle::ListRow)
        .drawRight(canvas.painter(), {canvas.width() - theme::kTextRight, baselines[i]}, canvas.colors().secondary);
    Typography::fitting({row.city, briefCity(row.city)}, TextStyle::ListRow, spaceBeside(time), Elide::End,
                        canvas.scale())
        .draw(canvas.painter(), {theme::kTextLeft, baselines[i]}, canvas.colors().primary);
  }
}

}  // namespace tarnwick
