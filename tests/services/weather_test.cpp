#include <gtest/gtest.h>

#include <QJsonArray>
#include <QUrlQuery>
#include <cmath>

#include "base/DomainError.h"
#include "services/CustomEndpoint.h"
#include "services/JSONMetric.h"
#include "services/RemoteFetch.h"
#include "services/ServiceHTTPError.h"
#include "services/Weather.h"
#include "services/WeatherCondition.h"
#include "support/ForeignTexts.h"
#include "support/ScriptedSession.h"
#include "support/TestScheduler.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// One fetch after the other against a scripted service, and what the last came to.
struct Asked : ::testing::Test {
  void run(RemoteFetch::Work work) {
    value.reset();
    sentence.clear();
    fetch = std::make_unique<RemoteFetch>(
        time, std::move(work), [this](const RemoteValue& got) { value = got; },
        [this](const FetchFailure& failure) { sentence = failure.sentence; });
    time.advance(0);
  }
  const ServiceCall& call() const { return session->asked.constLast()->call; }
  QString query(const QString& key) const { return QUrlQuery(call().url).queryItemValue(key, QUrl::FullyDecoded); }

  test::TestScheduler time;
  std::shared_ptr<test::ScriptedSession> session = std::make_shared<test::ScriptedSession>();
  Weather weather{session, {QUrl(u"https://places.example"_s), QUrl(u"https://sky.example/base/"_s)}};
  std::unique_ptr<RemoteFetch> fetch;
  std::optional<RemoteValue> value;
  QString sentence;
};

QJsonValue place(const QString& name, double latitude = 51.9, double longitude = 4.5) {
  const QJsonObject found{{u"latitude"_s, latitude}, {u"longitude"_s, longitude}, {u"name"_s, name}};
  return QJsonObject{{u"results"_s, QJsonArray{found}}};
}

QJsonObject sky() {
  return {{u"current"_s, QJsonObject{{u"temperature_2m"_s, -0.4},
                                     {u"weather_code"_s, 99},
                                     {u"wind_speed_10m"_s, 14.5},
                                     {u"relative_humidity_2m"_s, QJsonValue::Null}}},
          {u"daily"_s, QJsonObject{{u"time"_s, QJsonArray{u"2026-11-27"_s}},
                                   {u"temperature_2m_max"_s, QJsonArray{2.5, QJsonValue::Null, 7}},
                                   {u"temperature_2m_min"_s, QJsonArray{-2.5, 1, 3}},
                                   {u"weather_code"_s, QJsonArray{3, 0, 61}},
                                   {u"sunrise"_s, QJsonArray{u"2026-11-27T08:21"_s}},
                                   {u"sunset"_s, QJsonArray{u"2026-11-27T16:36"_s}}}},
          {u"hourly"_s, QJsonObject{{u"time"_s, QJsonArray{u"2026-11-27T00:00"_s, u"2026-11-27T01:30"_s}},
                                    {u"temperature_2m"_s, QJsonArray{1.5, QJsonValue::Null}}}}};
}

TEST_F(Asked, ACityIsLookedUpOnceAndItsSkyRead) {
  const auto inCity = [&](const QString& city, bool fahrenheit) {
    run([&, city, fahrenheit](std::stop_token stop) { return weather.at(city, fahrenheit, stop); });
  };
  inCity(u" Sky & Sea+1 "_s, false);
  EXPECT_EQ(call().url.host() + call().url.path(), u"places.example/v1/search"_s);
  EXPECT_EQ(query(u"name"_s), u"Sky & Sea+1"_s);
  EXPECT_EQ(query(u"count"_s) + query(u"language"_s), u"1en"_s);
  session->answer(place(u"Skysea"_s));
  EXPECT_EQ(call().url.host() + call().url.path(), u"sky.example/base/v1/forecast"_s);
  EXPECT_EQ(query(u"latitude"_s) + u' ' + query(u"longitude"_s), u"51.9 4.5"_s);
  EXPECT_EQ(query(u"forecast_days"_s) + query(u"timezone"_s), u"5auto"_s);
  EXPECT_TRUE(query(u"temperature_unit"_s).isEmpty());
  session->answer(sky());
  ASSERT_TRUE(value);
  EXPECT_EQ(value->value, u"0°"_s);
  EXPECT_EQ(value->subtitle, u"Thunderstorm with hail"_s);
  EXPECT_EQ(value->symbol, u"cloud.bolt.rain.fill"_s);
  EXPECT_EQ(value->detail, u"3° · -3° · 14.5 km/h · 08:21 · Sunset 16:36"_s);
  EXPECT_EQ(value->updated, session->time);
  const WeatherSnapshot& read = *value->weather;
  EXPECT_EQ(read.city, u"Skysea"_s);
  EXPECT_EQ(read.highs, (QList<double>{2.5, 7}));
  EXPECT_EQ(read.lows, (QList<double>{-2.5, 3}));
  EXPECT_EQ(read.days, (QStringList{u"2026-11-27"_s, u"Day 3"_s}));
  EXPECT_EQ(read.codes, (QList<int>{3, 61}));
  EXPECT_EQ(read.hourly, (QList<std::pair<QString, double>>{{u"00:00"_s, 1.5}}));
  EXPECT_FALSE(read.humidity);

  const qsizetype before = session->asked.size();
  inCity(u"SKY & sea+1"_s, true);
  EXPECT_EQ(session->asked.size(), before + 1) << "a known place is looked up again";
  EXPECT_EQ(query(u"temperature_unit"_s), u"fahrenheit"_s);
  session->answer(QJsonObject{{u"current"_s, QJsonObject{{u"temperature_2m"_s, 50}}}});
  EXPECT_EQ(sentence, u"Weather response is missing current conditions."_s);
}

TEST_F(Asked, FiguresThatAreNoWeatherAreLeftOut) {
  struct Case {
    const char* name;
    double degrees, code;
    bool isWeather;
  };
  const Case cases[] = {{"a heat wave", 54.4, 0, true},
                        {"huge", 1e300, 0, false},
                        {"hugely cold", -1e308, 0, false},
                        {"half a condition", 20, 2.7, true},
                        {"no such condition", 20, 1e10, true}};
  for (const Case& each : cases) {
    QJsonObject answer = sky();
    const QJsonArray degrees{each.degrees};
    answer[u"current"_s] = QJsonObject{{u"temperature_2m"_s, each.degrees}, {u"weather_code"_s, each.code}};
    answer[u"hourly"_s] = QJsonObject{{u"time"_s, QJsonArray{u"2026-11-27T00:00"_s}}, {u"temperature_2m"_s, degrees}};
    answer[u"daily"_s] = QJsonObject{{u"temperature_2m_max"_s, degrees}, {u"temperature_2m_min"_s, degrees}};
    run([&](std::stop_token stop) { return weather.at(GeocodeCache::Place{1, 2, u"x"_s}, false, stop); });
    session->answer(answer);
    EXPECT_EQ(value.has_value(), each.isWeather) << each.name;
    const bool isKnown = each.code == 0;
    if (value) {
      EXPECT_EQ(value->subtitle.contains(u"Conditions unavailable"_s), !isKnown) << value->subtitle.toStdString();
    }
    // With a temperature of its own, the days and hours are what is left.
    answer[u"current"_s] = sky()[u"current"_s];
    run([&](std::stop_token stop) { return weather.at(GeocodeCache::Place{1, 2, u"x"_s}, false, stop); });
    session->answer(answer);
    ASSERT_TRUE(value) << each.name;
    const bool isSane = std::abs(each.degrees) < 100;
    EXPECT_EQ(value->weather->highs.size() + value->weather->hourly.size(), isSane ? 2 : 0) << each.name;
  }
}

TEST_F(Asked, WhatIsNoPlaceIsSaid) {
  run([&](std::stop_token stop) { return weather.at(u"  "_s, false, stop); });
  EXPECT_EQ(sentence, u"Choose a city."_s);
  run([&](std::stop_token stop) { return weather.at(u"Nowhere"_s, false, stop); });
  session->answer(QJsonObject{{u"generationtime_ms"_s, 1}});
  EXPECT_EQ(sentence, u"City not found. Try a nearby city."_s);
  for (const test::ForeignSample& sample : test::foreignSamples()) {
    QList<GeocodeCache::Place> found;
    run([&](std::stop_token stop) -> QCoro::Task<RemoteValue> {
      found = co_await weather.search(u"Par"_s, 8, stop);
      co_return RemoteValue();
    });
    session->answer(place(sample.text));
    ASSERT_EQ(found.size(), 1);
    EXPECT_TRUE(found[0].name.contains(sample.seen) && test::ForeignSample::isHarmless(found[0].name))
        << qPrintable(found[0].name.left(80));
  }
  const qsizetype before = session->asked.size();
  for (const auto& [latitude, longitude] : {std::pair(91.0, 0.0), {0.0, -181.0}, {qQNaN(), 0.0}, {0.0, qInf()}}) {
    run([&, latitude, longitude](std::stop_token stop) {
      return weather.at(GeocodeCache::Place{latitude, longitude, u"x"_s}, false, stop);
    });
    EXPECT_EQ(sentence, u"Invalid weather location."_s);
  }
  EXPECT_EQ(session->asked.size(), before);
}

TEST(GeocodeCache, ForgetsTheOldest) {
  GeocodeCache cache;
  for (int number = 0; number < 32; ++number) cache.store(u"City %1"_s.arg(number), {1.0 * number, 0, {}});
  cache.store(u"CITY 0"_s, {99, 0, {}});
  cache.store(u"Another"_s, {});
  EXPECT_EQ(cache.place(u"city 0"_s)->latitude, 99);
  EXPECT_FALSE(cache.place(u"City 1"_s));
  EXPECT_TRUE(cache.place(u"City 2"_s));
}

TEST(WeatherCondition, KnowsTheCodes) {
  EXPECT_EQ(WeatherCondition::label(77), u"Snow"_s);
  EXPECT_EQ(WeatherCondition::symbol(56), u"cloud.drizzle.fill"_s);
  for (const std::optional<int> unknown : {std::optional<int>(), std::optional(4), std::optional(-1)})
    EXPECT_EQ(WeatherCondition::label(unknown), u"Conditions unavailable"_s);
}

TEST_F(Asked, AFieldOfOnesOwnAddressIsShown) {
  const QJsonObject answer{
      {u"data"_s, QJsonArray{QJsonObject{{u"total"_s, 1e14}, {u"7"_s, u"seven"_s}}, 0.000001, true}},
      {u"list"_s, QJsonArray{1, 2, 3}},
      {u"nothing"_s, QJsonValue::Null},
      {u"word"_s, u""_s}};
  const auto missing = [](const QString& field) { return u"Metric field '"_s + field + u"' was not returned."_s; };
  const QString unfit = u"Select a numeric or text field to display."_s;
  struct Case {
    QString field;
    QString shown;  ///< Null where `sentence` is said.
    QString sentence;
  };
  const Case cases[] = {
      {u"data.0.total"_s, u"$100000000000000 a year"_s, {}},
      {u".data..0.7"_s, u"$seven a year"_s, {}},
      {u"data.+1"_s, u"$0.000001 a year"_s, {}},
      {u"list"_s, u"$3 a year"_s, {}},
      {u"word"_s, u"$ a year"_s, {}},
      {u"data.3"_s, {}, missing(u"data.3"_s)},
      {u"data.-1"_s, {}, missing(u"data.-1"_s)},
      {u"data. 1"_s, {}, missing(u"data. 1"_s)},
      {u"data.1 "_s, {}, missing(u"data.1 "_s)},
      {u"list.0.x"_s, {}, missing(u"list.0.x"_s)},
      {u"gone"_s, {}, missing(u"gone"_s)},
      {QString(u"a."_s).repeated(10'000), {}, missing(QString(u"a."_s).repeated(10'000))},
      {u"nothing"_s, {}, unfit},
      {u"data.2"_s, {}, unfit},
      {u"data.0"_s, {}, unfit},
      {{}, {}, unfit},
  };
  DockWidget widget{QUuid::createUuid(), kind::revenueStripe.toString(), {}, {}};
  const auto ask = [&] { run([&](std::stop_token stop) { return CustomEndpoint::fetch(widget, session, stop); }); };
  ask();
  EXPECT_EQ(sentence, u"Connect this widget in its settings."_s);
  widget.options = {
      {option::endpoint, u"https://own.example/x"_s}, {option::prefix, u"$"_s}, {option::suffix, u" a year"_s}};
  for (const Case& each : cases) {
    widget.options[option::field] = each.field;
    ask();
    session->answer(u"key"_s);
    EXPECT_EQ(call().token, u"key"_s);
    session->answer(answer);
    EXPECT_EQ(sentence, each.sentence);
    EXPECT_EQ(value ? value->value.value_or(QString()) : QString(), each.shown) << qPrintable(each.field.left(50));
    if (value) {
      EXPECT_EQ(value->subtitle, u"Updated just now"_s);
    }
  }
  // Where a credential may be kept that cannot be read, nothing is asked without it.
  session->unread = u"Keychain access unavailable (-2)."_s;
  const qsizetype before = session->asked.size();
  ask();
  EXPECT_EQ(sentence, session->unread);
  EXPECT_EQ(session->asked.size(), before);
  session->hasNoKeyring = true;
  ask();
  EXPECT_EQ(session->asked.size(), before + 1) << "where there is no keyring nothing is kept";
  session->fail(ServiceHTTPError(401));
  EXPECT_EQ(sentence, session->unread) << "it may be for want of what cannot be kept here";
  session->unread.clear();
  widget.options[option::metricLabel] = QString();
  widget.options[option::field] = u"list"_s;
  ask();
  session->answer({});
  session->answer(answer);
  EXPECT_EQ(value->subtitle, QString()) << "a label that is there and empty is one";

  EXPECT_EQ(JSONMetric::display(answer, u"list"_s), u"3"_s);
  EXPECT_THROW(JSONMetric::display(answer, u"nothing"_s), DomainError);
  EXPECT_EQ(JSONMetric::number(1e15), u"1e+15"_s);
  EXPECT_EQ(JSONMetric::number(-0.0), u"0"_s);
}

}  // namespace
}  // namespace tarnwick
