#pragma once

#include <QString>
#include <optional>

#include "config/DockWidget.h"
#include "services/RemoteReading.h"
#include "views/theme/WeatherPictures.h"

namespace tarnwick {

struct TileSources;

/// The weather at the place of a widget, ready to be shown. Figures are in the user's digits.
struct WeatherReading {
  QString temperature;  ///< With its sign and "°".
  QString place;
  QString condition;  ///< Empty where it is not known any more.
  WeatherPicture picture = WeatherPicture::CloudSun;
  bool isNight = false;  ///< There.
  bool isLoading = false;
  bool isFailed = false;
  QString problem;  ///< Why this is not what there is now, as a finished sentence; empty where it is.
  QString age;      ///< How old it is; empty where that need not be told.

  /// Absent where no temperature was ever read.
  static std::optional<WeatherReading> of(const DockWidget& widget, const TileSources& sources);

  /// What a widget without a value shows: why there is none; empty where one is on its way.
  static QString problemOf(const std::optional<RemoteReading>& reading, const TileSources& sources);
  /// What the place of a widget is called as long as nothing was read there; empty where none is chosen.
  static QString placeOf(const DockWidget& widget);
  /// The picture of a symbol of WeatherCondition.
  static WeatherPicture pictureOf(const QString& symbol, bool atNight);
  /// The clocks at the place; the user's where it is not known how they go.
  static QDateTime momentAt(const WeatherSnapshot& weather, const QDateTime& now);
  /// "−4°" of what a service wrote as "-4°".
  static QString degrees(const QString& ascii, const TileSources& sources);

  bool operator==(const WeatherReading&) const = default;
};

/// When the sun is up at a place on one day.
struct SunTimes {
  QTime rise;
  QTime set;

  /// Absent where the service told none: near the poles the sun may stay where it is.
  static std::optional<SunTimes> of(const WeatherSnapshot& weather);
  /// How much of the day has passed, from 0 to 1; less before it and more behind.
  double shareAt(QTime time) const;
  bool isUpAt(QTime time) const { return time >= rise && time < set; }

  bool operator==(const SunTimes&) const = default;
};

}  // namespace tarnwick
