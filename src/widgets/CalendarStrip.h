#pragma once

#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QList>
#include <QLocale>
#include <QString>

namespace tarnwick {

/// The seven days that a calendar tile shows.
struct CalendarStrip {
  /// The week of the date for `calendarWeek`, from the locale's first day; else seven days from the date on.
  static QList<QDate> days(const QString& kind, const QDateTime& date,
                           Qt::DayOfWeek firstDay = QLocale().firstDayOfWeek());
};

/// What a year of contributions comes to.
struct ContributionSummary {
  int today = 0;
  int lastSevenDays = 0;
  int total = 0;

  /// `days` are objects with `date` and `contributionCount`. Days whose date is malformed are left out. Throws
  /// DomainError for a count that is none, and when no day is left.
  static ContributionSummary decode(const QJsonArray& days, const QDateTime& now);
  bool operator==(const ContributionSummary&) const = default;
};

}  // namespace tarnwick
