#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include "services/RemoteValue.h"

namespace tarnwick {

/// What is said of an allowance. Pure; figures are in ASCII (see LocalFigures) where no locale is given.
struct UsageWords {
  /// Above so many percent an allowance is nearly used up.
  static constexpr double kAlarming = 85;

  /// Percent, 0 to 100 whatever was given.
  static double used(const UsageWindow& window);
  static bool isAlarming(const UsageWindow& window) { return used(window) > kAlarming; }
  /// "42%"
  static QString percent(const UsageWindow& window);
  /// What the window is called where there is little room: "Plan" of "Plan allowance". That it is one shows.
  static QString shortLabel(const UsageWindow& window);
  /// "42% used"
  static QString usedWords(const UsageWindow& window);
  /// "58% left"
  static QString leftWords(const UsageWindow& window);
  /// " · resets 24 Nov 2026, 10:30", in the zone of the date; " · reset unavailable" without one.
  static QString resets(const UsageWindow& window, const QLocale& locale, bool use24Hour);
  /// The label with both: "5 hours · 42% used · resets 24 Nov 2026, 10:30".
  static QString line(const UsageWindow& window, const QLocale& locale, bool use24Hour);
  /// How long it is until then, "48 min", "2 h" or "3 days"; empty without a date and once that has passed.
  static QString countdown(const UsageWindow& window, const QDateTime& now, const QLocale& locale);
};

}  // namespace tarnwick
