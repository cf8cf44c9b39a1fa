#include "views/families/weather/WeatherFacts.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/LocalFigures.h"
#include "services/WeatherCondition.h"
#include "views/tiles/TileSources.h"
#include "widgets/ClockWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kHoursADay = 24;

qint64 whole(double value) { return static_cast<qint64>(std::round(std::clamp(value, -1e9, 1e9))); }

QString wholeText(const std::optional<double>& value, const TileSources& sources) {
  return value ? LocalFigures::number(whole(*value), sources.locale) : QString();
}

QString degreesText(double value, const TileSources& sources) {
  return WeatherReading::degrees(QString::number(whole(value)) + u'°', sources);
}

/// The point of the compass that a direction is nearest to.
QString compassPoint(double degrees) {
  const std::array points{TileWords::tr("N"), TileWords::tr("NE"), TileWords::tr("E"), TileWords::tr("SE"),
                          TileWords::tr("S"), TileWords::tr("SW"), TileWords::tr("W"), TileWords::tr("NW")};
  constexpr double full = 360;
  const double turned = std::fmod(std::fmod(degrees, full) + full, full);
  return points[static_cast<std::size_t>(std::lround(turned * points.size() / full)) % points.size()];
}

QList<WeatherFacts::Day> daysOf(const WeatherSnapshot& weather, const QDate& today, const TileSources& sources) {
  QList<WeatherFacts::Day> days;
  for (qsizetype i = 0; i < std::min({weather.highs.size(), weather.lows.size(), weather.days.size()}); ++i) {
    const QDate date = QDate::fromString(weather.days[i], Qt::ISODate);
    if (date.isValid() && date < today) continue;
    WeatherFacts::Day day;
    day.isToday = date == today;
    day.name = day.isToday      ? TileWords::tr("Today")
               : date.isValid() ? ClockWords::weekday(date, sources.locale, QLocale::ShortFormat)
                                : weather.days[i];
    const int code = weather.codes.value(i, -1);
    day.condition = WeatherCondition::label(code);
    day.picture = WeatherReading::pictureOf(WeatherCondition::symbol(code), false);
    day.high = weather.highs[i];
    day.low = weather.lows[i];
    day.highText = degreesText(day.high, sources);
    day.lowText = degreesText(day.low, sources);
    days.append(day);
  }
  return days;
}

/// The hours of a forecast count from midnight of the day that it was asked on, and some may be missing.
QList<WeatherFacts::Hour> hoursOf(const WeatherSnapshot& weather, const QDate& asked, const QDateTime& there,
                                  const TileSources& sources) {
  const qint64 current = asked.daysTo(there.date()) * kHoursADay + there.time().hour();
  QList<WeatherFacts::Hour> hours;
  qint64 day = 0;
  int before = -1;
  for (const auto& [text, degrees] : weather.hourly) {
    bool isNumber = false;
    const int hour = text.section(u':', 0, 0).toInt(&isNumber);
    if (!isNumber || hour < 0 || hour >= kHoursADay) continue;
    if (hour < before) ++day;
    before = hour;
    if (day * kHoursADay + hour < current) continue;
    if (hours.size() == WeatherFacts::kMostHours) break;
    hours.append({hour, degrees, degreesText(degrees, sources)});
  }
  return hours;
}

}  // namespace

WeatherFacts WeatherFacts::of(const RemoteValue& value, const TileSources& sources) {
  WeatherFacts facts;
  if (!value.weather) return facts;
  const WeatherSnapshot& weather = *value.weather;
  const QDateTime there = WeatherReading::momentAt(weather, sources.now);
  const QDateTime asked = value.updated.isValid() ? value.updated : sources.now;
  facts.days = daysOf(weather, there.date(), sources);
  facts.hours = hoursOf(weather, WeatherReading::momentAt(weather, asked).date(), there, sources);
  facts.wind = wholeText(weather.wind, sources);
  facts.gusts = wholeText(weather.windGusts, sources);
  facts.windDirection = weather.windDirection;
  if (weather.windDirection) facts.windFrom = compassPoint(*weather.windDirection);
  if (weather.humidity) facts.humidity = LocalFigures::percent(whole(*weather.humidity), sources.locale);
  if (weather.precipitation) {
    const double most = std::clamp(*weather.precipitation, 0.0, 1e6);
    facts.precipitation =
        TileWords::tr("%1 mm").arg(LocalFigures::of(QString::number(most, 'f', most < 10 ? 1 : 0), sources.locale));
  }
  facts.sun = SunTimes::of(weather);
  facts.clock = QTime(there.time().hour(), there.time().minute());
  return facts;
}

QString WeatherFacts::range(bool shortest) const {
  const auto today = std::ranges::find(days, true, &Day::isToday);
  if (today == days.end()) return {};
  return shortest ? today->highText : TileWords::tr("%1 / %2").arg(today->highText, today->lowText);
}

QString WeatherFacts::sunLeft() const {
  if (!sun) return {};
  constexpr int minute = 60;
  constexpr int minutesADay = 24 * 60;
  if (sun->isUpAt(clock)) return TileWords::tr("%1 left").arg(ClockWords::span(clock.secsTo(sun->set) / minute));
  const int until = (clock.secsTo(sun->rise) / minute + minutesADay) % minutesADay;
  return TileWords::tr("Rises in %1").arg(ClockWords::span(until));
}

QString WeatherFacts::windText() const { return wind.isEmpty() ? QString() : TileWords::tr("%1 km/h").arg(wind); }

QString WeatherFacts::windWords() const {
  if (gusts.isEmpty()) return windFrom;
  return windFrom.isEmpty() ? TileWords::tr("Gusts %1").arg(gusts) : TileWords::tr("%1, gusts %2").arg(windFrom, gusts);
}

QString briefHour(int hour, const TileSources& sources) {
  const ClockTime time = ClockWords::time(QTime(hour, 0), sources.locale, sources.use24Hour);
  return time.halfOfDay.isEmpty() ? time.hours : time.hours + u' ' + time.halfOfDay;
}

}  // namespace tarnwick
