#include "widgets/ClockWords.h"

#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QTimeZone>
#include <algorithm>
#include <cstdlib>

#include "base/LocalFigures.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMinutesInHour = 60;
constexpr int kSecondsInMinute = 60;
constexpr int kSunrise = 6;
constexpr int kSunset = 18;

/// How a locale writes a date, less the year and what only serves the year.
QString withoutYear(QString format) {
  static const QRegularExpression before(u"[\\s,./-]*(?:'[^']*'[\\s,]*)?y+(?:\\s*'[^']*')?"_s);
  format.remove(before);
  while (!format.isEmpty() && (format[0].isSpace() || format[0] == u',')) format.remove(0, 1);
  const QString rest = format.trimmed();
  return rest.startsWith(u'年') ? rest.sliced(1) : rest;
}

/// A date format less the weekday and what parts it from the rest, whatever kind of comma that is.
QString withoutWeekday(QString format) {
  static const QRegularExpression weekday(u"[\\s,\u060c]*(?:'[^']*'\\s*)?\\bdddd?\\b[\\s,\u060c]*(?:'[^']*')?"_s);
  return format.remove(weekday).trimmed();
}

QString separatorOf(const QLocale& locale) {
  static const QRegularExpression between(u"[hH]+([.:])m+"_s);
  const auto match = between.match(locale.timeFormat(QLocale::ShortFormat));
  return match.hasMatch() ? match.captured(1) : u":"_s;
}

/// Any word alone passes for the rule of a zone without an offset, but only few are zones.
bool isListed(const QString& name) {
  if (name.contains(u'/') || QTimeZone::isTimeZoneIdAvailable(name.toUtf8())) return true;
  const QStringList folders{u"/usr/share/zoneinfo/"_s, u"/usr/lib/zoneinfo/"_s};
  return std::ranges::any_of(folders, [&](const QString& folder) { return QFileInfo(folder + name).isFile(); });
}

/// A zone by its name. Kept, since clocks ask every second and names that are none would be looked for on the disk.
const QTimeZone& zoneNamed(const QString& name) {
  static QHash<QString, QTimeZone> known;
  constexpr qsizetype most = 256;
  const auto found = known.constFind(name);
  if (found != known.constEnd()) return *found;
  if (known.size() >= most) known.clear();
  return *known.insert(name, isListed(name) ? QTimeZone(name.toUtf8()) : QTimeZone());
}

QDate startOfWeek(const QDate& date, Qt::DayOfWeek firstDay) {
  return date.addDays(-((date.dayOfWeek() - firstDay + 7) % 7));
}

}  // namespace

ClockTime ClockWords::time(const QTime& time, const QLocale& locale, bool use24Hour) {
  ClockTime parts;
  parts.separator = separatorOf(locale);
  parts.minutes = locale.toString(time, u"mm"_s);
  if (use24Hour) {
    parts.hours = locale.toString(time, u"HH"_s);
    return parts;
  }
  parts.halfOfDay = time.hour() < 12 ? locale.amText() : locale.pmText();
  // Only with the mark in the format does the hour count to twelve.
  parts.hours = locale.toString(time, u"h AP"_s).remove(parts.halfOfDay, Qt::CaseInsensitive).trimmed();
  return parts;
}

bool ClockWords::writes24Hours(const QLocale& locale) {
  return !locale.timeFormat(QLocale::ShortFormat).contains("ap"_L1, Qt::CaseInsensitive);
}

QStringList ClockWords::dates(const QDate& date, const QLocale& locale) {
  const QString full = withoutYear(locale.dateFormat(QLocale::LongFormat));
  QString shortMonth = full;
  shortMonth.replace(u"MMMM"_s, u"MMM"_s);
  QString shortDay = shortMonth;
  shortDay.replace(u"dddd"_s, u"ddd"_s);
  QStringList dates;
  for (const QString& format : {full, shortMonth, shortDay})
    if (const QString text = locale.toString(date, format); !dates.contains(text)) dates.append(text);
  return dates;
}

QString ClockWords::dayAndMonth(const QDate& date, const QLocale& locale) {
  QString format = withoutWeekday(withoutYear(locale.dateFormat(QLocale::LongFormat)));
  format.replace(u"MMMM"_s, u"MMM"_s);
  return locale.toString(date, format);
}

QString ClockWords::dayWithMonth(const QDate& date, const QLocale& locale) {
  return locale.toString(date, withoutWeekday(withoutYear(locale.dateFormat(QLocale::LongFormat))));
}

QString ClockWords::weekday(const QDate& date, const QLocale& locale, QLocale::FormatType format) {
  return locale.standaloneDayName(date.dayOfWeek(), format);
}

QString ClockWords::monthAndYear(const QDate& date, const QLocale& locale) {
  return u"%1 %2"_s.arg(locale.standaloneMonthName(date.month()), locale.toString(date, u"yyyy"_s));
}

int ClockWords::weekNumber(const QDate& date, Qt::DayOfWeek firstDay) {
  if (firstDay == Qt::Monday) return date.weekNumber();
  const QDate week = startOfWeek(date, firstDay);
  // The last days of a year belong to the week of the next 1 January.
  const int year = week.addDays(6).year();
  return static_cast<int>(startOfWeek(QDate(year, 1, 1), firstDay).daysTo(week) / 7) + 1;
}

QDateTime ClockWords::inZone(const QDateTime& at, const QString& zone) {
  return isZone(zone) ? at.toTimeZone(zoneNamed(zone)) : at;
}

bool ClockWords::isZone(const QString& zone) { return !zone.isEmpty() && zoneNamed(zone).isValid(); }

QString ClockWords::city(const QString& zone) { return zone.section(u'/', -1).replace(u'_', u' '); }

QString ClockWords::ahead(const QDateTime& there, const QDateTime& here) {
  const int minutes = (there.offsetFromUtc() - here.offsetFromUtc()) / kSecondsInMinute;
  if (minutes == 0) return TileWords::tr("same time");
  return (minutes > 0 ? TileWords::tr("%1 ahead") : TileWords::tr("%1 behind")).arg(span(std::abs(minutes)));
}

QString ClockWords::dayThere(const QDateTime& there, const QDateTime& here) {
  const qint64 days = here.date().daysTo(there.date());
  return days > 0 ? TileWords::tr("tomorrow") : days < 0 ? TileWords::tr("yesterday") : QString();
}

bool ClockWords::isDay(const QDateTime& there) {
  const int hour = there.time().hour();
  return hour >= kSunrise && hour < kSunset;
}

qint64 ClockWords::minutesUntil(const QDateTime& at, const QDateTime& now) {
  const auto minuteOf = [](const QDateTime& moment) {
    return (moment.toSecsSinceEpoch() - moment.time().second()) / kSecondsInMinute;
  };
  return minuteOf(at) - minuteOf(now);
}

QString ClockWords::until(const QDateTime& at, const QDateTime& now) {
  const qint64 minutes = minutesUntil(at, now);
  return minutes <= 0 ? TileWords::tr("now") : TileWords::tr("in %1").arg(span(minutes));
}

QString ClockWords::span(qint64 minutes) {
  const qint64 hours = minutes / kMinutesInHour;
  const QString rest = TileWords::tr("%1 min").arg(LocalFigures::number(minutes % kMinutesInHour));
  if (hours == 0) return rest;
  const QString whole = TileWords::tr("%1 h").arg(LocalFigures::number(hours));
  return minutes % kMinutesInHour == 0 ? whole : whole + u' ' + rest;
}

QString ClockWords::day(const QDate& date, const QDate& today, const QLocale& locale) {
  constexpr int week = 7;
  switch (const qint64 days = today.daysTo(date)) {
    case -1:
      return TileWords::tr("Yesterday");
    case 0:
      return TileWords::tr("Today");
    case 1:
      return TileWords::tr("Tomorrow");
    default:
      return days > 1 && days < week ? weekday(date, locale, QLocale::ShortFormat) : dayAndMonth(date, locale);
  }
}

QStringList worldZones(const QString& option) {
  QStringList zones;
  for (const QString& part : option.split(u','))
    if (const QString zone = part.trimmed(); ClockWords::isZone(zone) && !zones.contains(zone)) zones << zone;
  if (!zones.isEmpty()) return zones;
  return {u"America/New_York"_s, u"Europe/London"_s, u"Asia/Tokyo"_s};
}

}  // namespace tarnwick
