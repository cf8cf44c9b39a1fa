#include "widgets/TimeMath.h"

#include <QLocale>
#include <QTimeZone>
#include <cmath>

#include "base/Text.h"
#include "widgets/PhaseMath.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr double kLongest = 999'999'999;

/// Midnight in the zone of `like`. An offset is given only where it is the zone: the toolkit warns of any other.
QDateTime midnight(const QDate& day, const QDateTime& like) {
  if (like.timeSpec() == Qt::TimeZone) return day.startOfDay(like.timeZone());
  if (like.timeSpec() == Qt::OffsetFromUTC) return day.startOfDay(Qt::OffsetFromUTC, like.offsetFromUtc());
  return day.startOfDay(like.timeSpec());
}

/// Where the clocks go back to midnight it comes twice; the day begins with the first.
QDateTime startOf(const QDate& day, const QDateTime& like) {
  const QDateTime start = midnight(day, like);
  const QDateTime before = start.addSecs(-1);
  return before.date() == day ? start.addSecs(start.offsetFromUtc() - before.offsetFromUtc()) : start;
}

double share(const QDateTime& begin, const QDateTime& now, const QDateTime& end) {
  const auto length = static_cast<double>(begin.msecsTo(end));
  return length <= 0 ? 0 : std::clamp(static_cast<double>(begin.msecsTo(now)) / length, 0.0, 1.0);
}

}  // namespace

double TimeMath::remaining(const DockWidget& widget, const QDateTime& at) {
  if (const auto deadline = Text::number(widget.options.value(option::deadline))) {
    return std::max(0.0, *deadline - unixSeconds(at));
  }
  const double whole = KindTraits::of(widget.kind).run == TimerRun::Pomodoro
                           ? PomodoroMath::duration(widget, widget.options.value(option::phase))
                           : widget.number(option::minutes, kDefaultMinutes) * 60;
  return std::max(0.0, widget.number(option::remaining, whole));
}

double TimeMath::elapsed(const DockWidget& widget, const QDateTime& at) {
  const double before = widget.number(option::elapsed, 0);
  const auto started = Text::number(widget.options.value(option::started));
  return started ? before + std::max(0.0, unixSeconds(at) - *started) : before;
}

QString TimeMath::display(double seconds) {
  if (!std::isfinite(seconds)) return u"—"_s;
  const auto whole = static_cast<qint64>(std::clamp(seconds, 0.0, kLongest));
  const auto two = [](qint64 value) { return QString::number(value).rightJustified(2, u'0'); };
  const qint64 hours = whole / 3600;
  const QString minutes = two(whole / 60 % 60) + u':' + two(whole % 60);
  return hours == 0 ? minutes : QString::number(hours) + u':' + minutes;
}

double TimeMath::progress(const QDateTime& date, Component component, const QCalendar& calendar) {
  const QDate today = date.date();
  if (component == Component::Day) return share(startOf(today, date), date, startOf(today.addDays(1), date));
  const QCalendar::YearMonthDay parts = calendar.partsFromDate(today);
  const int month = component == Component::Month ? parts.month : 1;
  const QDate first = calendar.dateFromParts(parts.year, month, 1);
  const QDate next = component == Component::Month ? first.addMonths(1, calendar) : first.addYears(1, calendar);
  return share(startOf(first, date), date, startOf(next, date));
}

QString TimeMath::text(double number) { return QString::number(number, 'f', QLocale::FloatingPointShortest); }

}  // namespace tarnwick
