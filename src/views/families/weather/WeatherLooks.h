#pragma once

#include <QStringList>

#include "views/families/weather/WeatherFacts.h"
#include "views/tiles/TileText.h"
#include "views/tiles/WeatherReading.h"

namespace tarnwick {

class TileCanvas;
struct WeatherContent;

/// How a kind shows the weather: what it paints, which may be no more than the temperature where the rest is missing,
/// and what it says of it in words.
struct WeatherLook {
  bool (*has)(const WeatherContent& content);
  void (*paint)(TileCanvas& canvas, const WeatherContent& content);
  QStringList (*words)(const WeatherContent& content);
};

struct WeatherContent {
  const WeatherLook* look = nullptr;
  WeatherReading reading;
  WeatherFacts facts;
  QStringList hourNames;  ///< Of `facts.hours`.
  QString rise;
  QString set;

  bool operator==(const WeatherContent&) const = default;
};

TileText describe(const WeatherContent& content, const QString& name);
void paint(TileCanvas& canvas, const WeatherContent& content);
inline bool isLoading(const WeatherContent& content) { return content.reading.isLoading; }

/// The temperature and no more: what is left after a failure, and what was kept from an earlier run.
void paintTemperature(TileCanvas& canvas, const WeatherContent& content);
/// The temperature and the condition.
QStringList temperatureWords(const WeatherContent& content);

namespace weatherLook {

extern const WeatherLook current;
extern const WeatherLook details;
extern const WeatherLook condition;
extern const WeatherLook forecast;
extern const WeatherLook today;
extern const WeatherLook hourly;
extern const WeatherLook wind;
extern const WeatherLook sun;

}  // namespace weatherLook

}  // namespace tarnwick
