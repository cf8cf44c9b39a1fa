#include "services/Weather.h"

#include <QCoroTask>
#include <QJsonArray>
#include <QUrlQuery>
#include <algorithm>
#include <cmath>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/ForeignText.h"
#include "services/JSONMetric.h"
#include "services/ServiceSession.h"
#include "services/ServiceWords.h"
#include "services/WeatherCondition.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

std::optional<double> numberIn(const QJsonValue& value) {
  if (!value.isDouble() || !std::isfinite(value.toDouble())) return std::nullopt;
  return value.toDouble();
}

/// Any number is a code; one that no weather has is unknown.
std::optional<int> codeIn(const QJsonValue& value) {
  constexpr int kUnknown = -1;
  const auto number = numberIn(value);
  if (!number) return std::nullopt;
  return std::abs(*number) > 1000 || std::trunc(*number) != *number ? kUnknown : static_cast<int>(*number);
}

/// Far beyond any weather there is nothing to be shown, in whatever unit.
std::optional<double> temperatureIn(const QJsonValue& value) {
  const auto number = numberIn(value);
  return number && std::abs(*number) <= 1000 ? number : std::nullopt;
}

std::optional<int> offsetIn(const QJsonValue& value) {
  constexpr double mostSeconds = 24 * 3600;
  const auto seconds = numberIn(value);
  if (!seconds || std::abs(*seconds) > mostSeconds) return std::nullopt;
  return static_cast<int>(*seconds);
}

/// Half away from zero, and never a zero below nothing.
QString degrees(double value) { return QString::number(static_cast<qint64>(std::round(value))) + u'°'; }

/// "2026-11-27T07:43" without its day.
QString timeOfDay(const QString& moment) {
  return moment.section(u'T', 1).isEmpty() ? moment : moment.section(u'T', 1);
}

QString hourOf(const QString& moment) {
  const QString hour = timeOfDay(moment).section(u':', 0, 0);
  return hour.isEmpty() ? hour : hour + ":00"_L1;
}

/// Days for which one of the figures is missing are left out: the lists belong together.
void readDays(WeatherSnapshot& weather, const QJsonValue& daily) {
  const QJsonArray names = daily["time"_L1].toArray();
  const QJsonArray highs = daily["temperature_2m_max"_L1].toArray();
  const QJsonArray lows = daily["temperature_2m_min"_L1].toArray();
  const QJsonArray codes = daily["weather_code"_L1].toArray();
  for (qsizetype day = 0; day < std::min(highs.size(), lows.size()); ++day) {
    const auto high = temperatureIn(highs.at(day));
    const auto low = temperatureIn(lows.at(day));
    if (!high || !low) continue;
    weather.highs << *high;
    weather.lows << *low;
    const QString name = names.at(day).toString();
    weather.days << (name.isEmpty() ? ServiceWords::tr("Day %1").arg(day + 1) : name);
    weather.codes << codeIn(codes.at(day)).value_or(-1);
  }
  weather.sunrise = timeOfDay(daily["sunrise"_L1].toArray().at(0).toString());
  weather.sunset = timeOfDay(daily["sunset"_L1].toArray().at(0).toString());
}

void readHours(WeatherSnapshot& weather, const QJsonValue& hourly) {
  const QJsonArray times = hourly["time"_L1].toArray();
  const QJsonArray temperatures = hourly["temperature_2m"_L1].toArray();
  for (qsizetype hour = 0; hour < std::min(times.size(), temperatures.size()); ++hour) {
    const auto temperature = temperatureIn(temperatures.at(hour));
    if (temperature) weather.hourly.append({hourOf(times.at(hour).toString()), *temperature});
  }
}

QString detailOf(const WeatherSnapshot& weather) {
  QStringList parts;
  if (!weather.highs.isEmpty()) parts << degrees(weather.highs.constFirst()) << degrees(weather.lows.constFirst());
  parts << (weather.wind ? JSONMetric::number(*weather.wind) + " km/h"_L1 : u"—"_s);
  QString detail = parts.join(u" · "_s);
  if (!weather.sunrise.isEmpty() && !weather.sunset.isEmpty())
    detail += u" · "_s + weather.sunrise + ServiceWords::tr(" · Sunset ") + weather.sunset;
  return detail;
}

/// "Texas, United States".
QString regionOf(const QJsonValue& place) {
  QStringList parts;
  for (const auto key : {"admin1"_L1, "country"_L1})
    if (const QString part = ForeignText::line(place[key].toString()); !part.isEmpty() && !parts.contains(part))
      parts << part;
  return parts.join(u", "_s);
}

bool isOnEarth(const GeocodeCache::Place& place) {
  return std::isfinite(place.latitude) && std::isfinite(place.longitude) && std::abs(place.latitude) <= 90 &&
         std::abs(place.longitude) <= 180;
}

ServiceCall call(QUrl url, const QString& path, std::initializer_list<std::pair<QString, QString>> query) {
  QString full = url.path();
  while (full.endsWith(u'/')) full.chop(1);
  url.setPath(full + path);
  QUrlQuery items;
  // What a user typed must not end an item: '+' and '&' have meanings in a query.
  for (const auto& [key, value] : query)
    items.addQueryItem(key, QString::fromLatin1(QUrl::toPercentEncoding(value, ",:"_ba)));
  url.setQuery(items);
  ServiceCall made;
  made.url = url;
  return made;
}

}  // namespace

struct Weather::Shared {
  std::shared_ptr<ServiceSession> session;
  Addresses addresses;
  GeocodeCache cache;
};

Weather::Weather(std::shared_ptr<ServiceSession> session, Addresses addresses)
    : shared_(std::make_shared<Shared>(Shared{std::move(session), std::move(addresses), {}})) {}

QCoro::Task<RemoteValue> Weather::at(QString city, bool fahrenheit, std::stop_token stop) const {
  return inCity(shared_, std::move(city), fahrenheit, stop);
}

QCoro::Task<RemoteValue> Weather::at(GeocodeCache::Place place, bool fahrenheit, std::stop_token stop) const {
  return forecast(shared_, std::move(place), fahrenheit, stop);
}

QCoro::Task<QList<GeocodeCache::Place>> Weather::search(QString name, int most, std::stop_token stop) const {
  return places(shared_, std::move(name), most, stop);
}

QCoro::Task<RemoteValue> Weather::inCity(std::shared_ptr<Shared> shared, QString city, bool fahrenheit,
                                         std::stop_token stop) {
  const QString name = city.trimmed();
  if (name.isEmpty()) throw DomainError::invalid(ServiceWords::tr("Choose a city."));
  std::optional<GeocodeCache::Place> place = shared->cache.place(name);
  if (!place) {
    const QList<GeocodeCache::Place> found = co_await places(shared, name, 1, stop);
    if (found.isEmpty()) throw DomainError::invalid(ServiceWords::tr("City not found. Try a nearby city."));
    place = found.constFirst();
    shared->cache.store(name, *place);
  }
  RemoteValue value = co_await forecast(shared, *place, fahrenheit, stop);
  co_return value;
}

QCoro::Task<QList<GeocodeCache::Place>> Weather::places(std::shared_ptr<Shared> shared, QString name, int most,
                                                        std::stop_token stop) {
  ServiceCall question = call(shared->addresses.geocoding, u"/v1/search"_s,
                              {{u"name"_s, name}, {u"count"_s, QString::number(most)}, {u"language"_s, u"en"_s}});
  const QJsonValue answer = co_await shared->session->json(std::move(question), stop);
  throwIfStopped(stop);
  QList<GeocodeCache::Place> found;
  const QJsonArray results = answer["results"_L1].toArray();
  for (const QJsonValue& result : results) {
    const auto latitude = numberIn(result["latitude"_L1]);
    const auto longitude = numberIn(result["longitude"_L1]);
    const QString called = ForeignText::line(result["name"_L1].toString());
    if (latitude && longitude && !called.isEmpty() && found.size() < most)
      found.append({*latitude, *longitude, called, regionOf(result)});
  }
  co_return found;
}

QCoro::Task<RemoteValue> Weather::forecast(std::shared_ptr<Shared> shared, GeocodeCache::Place place, bool fahrenheit,
                                           std::stop_token stop) {
  if (!isOnEarth(place)) throw DomainError::invalid(ServiceWords::tr("Invalid weather location."));
  ServiceCall question =
      call(shared->addresses.forecast, u"/v1/forecast"_s,
           {{u"latitude"_s, JSONMetric::number(place.latitude)},
            {u"longitude"_s, JSONMetric::number(place.longitude)},
            {u"current"_s,
             u"temperature_2m,weather_code,wind_speed_10m,wind_direction_10m,wind_gusts_10m,precipitation,"
             "relative_humidity_2m"_s},
            {u"daily"_s, u"temperature_2m_max,temperature_2m_min,sunrise,sunset,weather_code"_s},
            {u"hourly"_s, u"temperature_2m"_s},
            {u"forecast_days"_s, u"5"_s},
            {u"timezone"_s, u"auto"_s}});
  if (fahrenheit) {
    QUrlQuery query(question.url);
    query.addQueryItem(u"temperature_unit"_s, u"fahrenheit"_s);
    question.url.setQuery(query);
  }
  const QJsonValue answer = co_await shared->session->json(std::move(question), stop);
  throwIfStopped(stop);
  RemoteValue value = read(answer, place.name);
  value.updated = shared->session->now();
  co_return value;
}

RemoteValue Weather::read(const QJsonValue& answer, const QString& city) {
  const QJsonValue current = answer["current"_L1];
  const auto temperature = temperatureIn(current["temperature_2m"_L1]);
  const auto code = codeIn(current["weather_code"_L1]);
  if (!temperature || !code)
    throw DomainError::invalid(ServiceWords::tr("Weather response is missing current conditions."));
  WeatherSnapshot weather;
  weather.city = city;
  weather.wind = numberIn(current["wind_speed_10m"_L1]);
  weather.windDirection = numberIn(current["wind_direction_10m"_L1]);
  weather.windGusts = numberIn(current["wind_gusts_10m"_L1]);
  weather.precipitation = numberIn(current["precipitation"_L1]);
  weather.humidity = numberIn(current["relative_humidity_2m"_L1]);
  weather.utcOffset = offsetIn(answer["utc_offset_seconds"_L1]);
  readDays(weather, answer["daily"_L1]);
  readHours(weather, answer["hourly"_L1]);
  RemoteValue value;
  value.value = degrees(*temperature);
  value.subtitle = WeatherCondition::label(code);
  value.symbol = WeatherCondition::symbol(code);
  value.detail = detailOf(weather);
  value.weather = weather;
  return value;
}

}  // namespace tarnwick
