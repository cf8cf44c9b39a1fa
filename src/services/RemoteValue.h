#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>
#include <utility>

namespace tarnwick {

/// A number with its name, both as texts that are shown.
struct ServiceMetric {
  QString label;
  QString value;

  bool operator==(const ServiceMetric&) const = default;
};

/// One line of a list that a service gave.
struct ServiceRow {
  QString id;  ///< Stable within one value.
  QString title;
  QString subtitle;
  std::optional<QUrl> url;                     ///< What a click on the line opens.
  std::optional<QDateTime> at = std::nullopt;  ///< When it happened, where it is told how long ago that is.

  bool operator==(const ServiceRow&) const = default;
};

/// One allowance of a subscription and how much of it is used up.
struct UsageWindow {
  QString id;  ///< Stable within a provider.
  QString label;
  double used = 0;  ///< Percent, 0 to 100.
  std::optional<double> durationMinutes;
  std::optional<QDateTime> resetsAt;

  bool operator==(const UsageWindow&) const = default;
};

/// The weather of one place: what is there besides the temperature, which is the headline of its RemoteValue.
struct WeatherSnapshot {
  QString city;
  std::optional<double> wind;  ///< km/h
  QString sunrise;
  QString sunset;
  QList<double> highs;  ///< By day, in the unit that was asked for.
  QList<double> lows;
  QStringList days;
  QList<std::pair<QString, double>> hourly;
  std::optional<double> windDirection;  ///< Degrees.
  std::optional<double> windGusts;      ///< km/h
  std::optional<double> precipitation;  ///< Millimetres.
  std::optional<double> humidity;       ///< Percent.
  QList<int> codes;                     ///< WMO weather codes, by day.
  std::optional<int> utcOffset;         ///< Seconds by which the clocks there are ahead of UTC.

  bool operator==(const WeatherSnapshot&) const = default;
};

/// Of what is at work somewhere, where that is all that a widget tells.
enum class Activity {
  Idle,
  Busy,
  Waiting,  ///< For somebody.
};

/// What a widget shows of something outside the program: a service's answer, a forecast, what a local reader found. The
/// store keeps one by widget; `loading` and `failed` are the store's, a fetch leaves them false.
struct RemoteValue {
  std::optional<QString> value;  ///< The headline; absent until there was a first one.
  QString subtitle;              ///< Also where the sentence of a failure is shown.
  bool loading = false;
  bool failed = false;
  QString symbol;
  QString detail;
  QList<double> numbers;  ///< The series behind a chart.
  QDateTime updated;
  std::optional<WeatherSnapshot> weather;
  QList<ServiceMetric> metrics;
  QList<ServiceRow> rows;
  QList<UsageWindow> usageWindows;
  std::optional<Activity> activity = std::nullopt;
  /// When each of the numbers was, where the service says so: a day, invalid for one of which that is not known, or a
  /// moment.
  QList<QDate> numberDays = {};
  QList<QDateTime> numberMoments = {};

  bool operator==(const RemoteValue&) const = default;
};

}  // namespace tarnwick
