#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// A time of day in the parts that clocks set apart.
struct ClockTime {
  QString hours;
  QString separator;  ///< What the locale writes between hours and minutes.
  QString minutes;
  QString halfOfDay;  ///< "AM" or "PM"; empty where hours count to 24.

  /// Hours and minutes.
  QString text() const { return hours + separator + minutes; }
  /// With the half of the day.
  QString full() const { return halfOfDay.isEmpty() ? text() : text() + u' ' + halfOfDay; }
  bool operator==(const ClockTime&) const = default;
};

/// Times, dates and distances in the words of a locale. Pure.
struct ClockWords {
  static ClockTime time(const QTime& time, const QLocale& locale, bool use24Hour);
  /// Whether hours count to 24 where the locale has the word: its times have no mark for morning and evening.
  static bool writes24Hours(const QLocale& locale);
  /// "Tuesday, 24 November" and shorter forms of it, without the year.
  static QStringList dates(const QDate& date, const QLocale& locale);
  /// "24 Nov": the day and the short month in the locale's order.
  static QString dayAndMonth(const QDate& date, const QLocale& locale);
  /// "24 November".
  static QString dayWithMonth(const QDate& date, const QLocale& locale);
  static QString weekday(const QDate& date, const QLocale& locale, QLocale::FormatType format = QLocale::LongFormat);
  /// "November 2026".
  static QString monthAndYear(const QDate& date, const QLocale& locale);

  /// The week of the year: where weeks begin on Monday the one that holds most of its first days (ISO 8601), elsewhere
  /// the week of 1 January is the first.
  static int weekNumber(const QDate& date, Qt::DayOfWeek firstDay);

  /// The moment in a zone; unchanged for an empty name and for one that is no zone.
  static QDateTime inZone(const QDateTime& at, const QString& zone);
  static bool isZone(const QString& zone);
  /// The place that a zone is named after: "New York".
  static QString city(const QString& zone);
  /// How far the clocks of `there` are from those of `here`: "9 h ahead", "3 h 30 min behind", "same time".
  static QString ahead(const QDateTime& there, const QDateTime& here);
  /// "tomorrow" or "yesterday" where the date there is another one; else empty.
  static QString dayThere(const QDateTime& there, const QDateTime& here);
  /// Whether the sun is up at that time of day, roughly, as far as a symbol needs it.
  static bool isDay(const QDateTime& there);

  /// "in 36 min", "in 2 h 15 min", "now" for what has begun; in whole minutes of the clock.
  static QString until(const QDateTime& at, const QDateTime& now);
  /// Whole minutes of the clock from now on, negative for the past.
  static qint64 minutesUntil(const QDateTime& at, const QDateTime& now);
  /// "36 min", "2 h", "2 h 15 min".
  static QString span(qint64 minutes);
  /// "Today", "Tomorrow", "Yesterday", a weekday of the next six days, or day and month.
  static QString day(const QDate& date, const QDate& today, const QLocale& locale);
};

/// The zones of a world clock's option, without those that are none; a few well-known ones for an empty option.
QStringList worldZones(const QString& option);

}  // namespace tarnwick
