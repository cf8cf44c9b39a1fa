#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

#include "services/RemoteValue.h"
#include "views/theme/WeatherPictures.h"
#include "views/tiles/WeatherReading.h"

namespace tarnwick {

/// What a forecast says beyond the temperature, from one moment on, ready to be shown. What the service did not tell is
/// absent or empty.
struct WeatherFacts {
  struct Day {
    QString name;  ///< A short weekday, or "Today".
    QString condition;
    WeatherPicture picture = WeatherPicture::Cloud;
    double high = 0;
    double low = 0;
    QString highText;
    QString lowText;
    bool isToday = false;

    bool operator==(const Day&) const = default;
  };
  struct Hour {
    int hour = 0;  ///< Of the day, there.
    double degrees = 0;
    QString text;  ///< Of the degrees.

    bool operator==(const Hour&) const = default;
  };
  static constexpr qsizetype kMostHours = 25;

  QList<Day> days;    ///< From today on.
  QList<Hour> hours;  ///< From the current one on.
  QString wind;       ///< Kilometres an hour, like the gusts.
  QString gusts;
  QString windFrom;  ///< "SW".
  std::optional<double> windDirection;
  QString humidity;       ///< With its sign.
  QString precipitation;  ///< With its unit.
  std::optional<SunTimes> sun;
  QTime clock;  ///< There, to the minute.

  static WeatherFacts of(const RemoteValue& value, const TileSources& sources);

  /// "8° / 2°", today; empty where that is not known. `shortest` leaves the low one out.
  QString range(bool shortest = false) const;
  /// "5 h 30 left", or when the sun rises.
  QString sunLeft() const;
  /// "14 km/h".
  QString windText() const;
  /// "SW, gusts 26"; one or none of them where the other is not known.
  QString windWords() const;

  bool operator==(const WeatherFacts&) const = default;
};

/// An hour of the day in as few letters as can be: "14", "2 PM".
QString briefHour(int hour, const TileSources& sources);

}  // namespace tarnwick
