#include "widgets/HabitMath.h"

#include <algorithm>

#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

QString keyOf(const QDate& day, const QCalendar& calendar) {
  const QCalendar::YearMonthDay parts = calendar.partsFromDate(day);
  const auto digits = [](int value, int width) { return QString::number(value).rightJustified(width, u'0'); };
  return digits(parts.year, 4) + u'-' + digits(parts.month, 2) + u'-' + digits(parts.day, 2);
}

}  // namespace

QString HabitMath::key(const QDateTime& date, const QCalendar& calendar) { return keyOf(date.date(), calendar); }

QSet<QString> HabitMath::completed(const DockWidget& widget) {
  const QStringList keys = widget.options.value(option::history).split(u',', Qt::SkipEmptyParts);
  return {keys.begin(), keys.end()};
}

int HabitMath::streak(const DockWidget& widget, const QDateTime& at, const QCalendar& calendar) {
  const QSet<QString> days = completed(widget);
  QDate day = at.date();
  if (!days.contains(keyOf(day, calendar))) day = day.addDays(-1);
  int length = 0;
  for (; days.contains(keyOf(day, calendar)); day = day.addDays(-1)) ++length;
  return length;
}

DockWidget HabitMath::toggled(const DockWidget& widget, const QDateTime& at, const QCalendar& calendar) {
  QSet<QString> days = completed(widget);
  const QString today = key(at, calendar);
  if (!days.remove(today)) days.insert(today);
  QStringList sorted(days.begin(), days.end());
  sorted.sort();
  DockWidget result = widget;
  result.options.insert(option::history, sorted.join(u','));
  return result;
}

int WaterMath::count(const DockWidget& widget, const QDateTime& at) {
  if (widget.options.value(option::day) != HabitMath::key(at)) return 0;
  return static_cast<int>(std::clamp(widget.number(option::glasses, 0), 0.0, double(kMostGlasses)));
}

int WaterMath::goal(const DockWidget& widget) {
  return static_cast<int>(std::clamp(widget.number(option::goal, 8), 1.0, 100.0));
}

DockWidget WaterMath::drunk(const DockWidget& widget, const QDateTime& at, int glasses) {
  DockWidget result = widget;
  const int total = std::clamp(count(widget, at) + glasses, 0, kMostGlasses);
  result.options.insert(option::glasses, QString::number(total));
  result.options.insert(option::day, HabitMath::key(at));
  return result;
}

}  // namespace tarnwick
