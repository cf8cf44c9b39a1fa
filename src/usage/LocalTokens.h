#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include "services/RemoteValue.h"

namespace tarnwick {

/// One answer of a model, as a program on this machine noted it.
struct LocalTokenRecord {
  QString id;  ///< Of the answer; the same one noted twice counts once.
  QDateTime time;
  double tokens = 0;

  bool operator==(const LocalTokenRecord&) const = default;
};

/// What is shown of such records.
struct LocalTokens {
  static constexpr double kMost = 1'000'000'000'000'000;
  /// Whether a number can be one of tokens.
  static bool isCount(double number) { return number >= 0 && number <= kMost; }
  /// A whole number in groups, in ASCII as all figures of values: what shows it writes it as the locale does.
  static QString formatted(double number);
  /// The totals of the month and the day in which `now` is, in its zone.
  static RemoteValue thisMonth(const QList<LocalTokenRecord>& records, const QDateTime& now, const QString& detail);
};

}  // namespace tarnwick
