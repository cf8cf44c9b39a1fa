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
  qint64 today = 0;
  qint64 lastSevenDays = 0;
  qint64 total = 0;

  /// `days` are objects with `date` and `contributionCount`. Days whose date is malformed are left out. Throws
  /// DomainError for a count that is none, and when no day is left.
  static ContributionSummary decode(const QJsonArray& days, const QDateTime& now);
  /// "1,234 in the last year".
  QString totalText(const QLocale& locale = QLocale()) const;
  bool operator==(const ContributionSummary&) const = default;
};

}  // namespace tarnwick
