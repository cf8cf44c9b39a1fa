#include "platform/ical/module/Occasions.h"

#include <QElapsedTimer>
#include <algorithm>
#include <memory>

namespace tarnwick {
namespace {

constexpr qint64 kHour = 3600;
constexpr qsizetype kMostOccasions = 3000;
constexpr int kMostSteps = 100'000;
constexpr qsizetype kMostRules = 16;
constexpr qsizetype kMostDates = 10'000;

WallSeconds dayOf(WallSeconds wall) {
  const qint64 rest = wall % kDay;
  return wall - (rest < 0 ? rest + kDay : rest);
}

struct FreeIterator {
  void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};

template <class Visit>
void each(icalcomponent* component, icalproperty_kind kind, Visit visit) {
  qsizetype left = kMostDates;
  for (icalproperty* property = icalcomponent_get_first_property(component, kind); property && left > 0; --left) {
    visit(property);
    property = icalcomponent_get_next_property(component, kind);
  }
}

}  // namespace

Occasions::Occasions(icalcomponent* component, CalendarZones& zones, const CalendarTime& anchor, qint64 length,
                     WalkBudget& budget)
    : zones_(zones), budget_(budget), anchor_(anchor), length_(std::max<qint64>(0, length)) {
  each(component, ICAL_RRULE_PROPERTY, [this](icalproperty* property) { addRule(property); });
  each(component, ICAL_RDATE_PROPERTY, [this](icalproperty* property) {
    isSeries_ = true;
    const icaldatetimeperiodtype value = icalproperty_get_rdate(property);
    const auto time = zones_.time(property, icaltime_is_null_time(value.time) ? value.period.start : value.time);
    if (time) dates_.append(*time);
  });
  each(component, ICAL_EXDATE_PROPERTY, [this](icalproperty* property) {
    if (const auto time = zones_.time(property, icalproperty_get_exdate(property))) takeOut(*time);
  });
}

void Occasions::addRule(icalproperty* property) {
  icalrecurrencetype rule = icalproperty_get_rrule(property);
  isSeries_ = true;
  // What repeats every minute is no event, and a rule of that kind that never comes true would be looked for a
  // lifetime.
  const bool isTooDense = rule.freq == ICAL_SECONDLY_RECURRENCE || rule.freq == ICAL_MINUTELY_RECURRENCE ||
                          (rule.freq == ICAL_HOURLY_RECURRENCE && evenStep(rule) == 0);
  if (isTooDense || rule.freq == ICAL_NO_RECURRENCE || rules_.size() >= kMostRules) return;
  if (!icaltime_is_null_time(rule.until)) {
    // The library compares clock times; the end of a rule is given in universal time, or as a day that belongs to it.
    const auto own = CalendarZones::wallOf(rule.until);
    // Of a rule that ends on no day of the calendar only the first time is sure.
    if (!own) return;
    WallSeconds until = *own;
    if (rule.until.is_date) {
      until += kDay - 1;
    } else if (icaltime_is_utc(rule.until) && !anchor_.isDate) {
      until = anchor_.zone->wall(until);
    }
    rule.until = CalendarZones::valueOf(until, anchor_.isDate);
  }
  // The text of another calendar system is owned by the property; it is not followed.
  rule.rscale = nullptr;
  rules_.append(rule);
}

QList<Occasion> Occasions::within(UtcSeconds from, UtcSeconds until) const {
  // Clock times of all zones together span less than a day and a half around universal time.
  const WallSeconds first = from - length_ - 2 * kDay;
  const WallSeconds last = until + 2 * kDay;
  QSet<WallSeconds> found{anchor_.wall};
  for (const icalrecurrencetype& rule : rules_) walk(rule, first, last, found);
  for (const CalendarTime& date : dates_) {
    // A day alone stands for the series' time on that day.
    found.insert(date.isDate && !anchor_.isDate ? date.wall + anchor_.wall - dayOf(anchor_.wall) : meant(date));
  }
  QList<Occasion> touching;
  for (const WallSeconds wall : found) {
    if (wall < first || wall > last) continue;
    const Occasion occasion{wall, anchor_.zone->utc(wall)};
    // A day is a day, also where the clocks change within it.
    const UtcSeconds end = anchor_.isDate ? anchor_.zone->utc(wall + length_) : occasion.utc + length_;
    const bool isTouching = occasion.utc < until && (end > from || occasion.utc >= from);
    if (isTouching && !isTakenOut(occasion)) touching.append(occasion);
  }
  std::ranges::sort(touching, {}, &Occasion::utc);
  return touching;
}

/// Seconds from one occasion to the next of a rule that knows nothing but a number of days or hours, as most do; else
/// 0. Such a rule needs no walk through the years behind us.
qint64 Occasions::evenStep(const icalrecurrencetype& rule) const {
  const bool isWeekly = rule.freq == ICAL_WEEKLY_RECURRENCE;
  const bool isHourly = rule.freq == ICAL_HOURLY_RECURRENCE && !anchor_.isDate;
  if (!isWeekly && !isHourly && rule.freq != ICAL_DAILY_RECURRENCE) return 0;
  constexpr short kEnd = ICAL_RECURRENCE_ARRAY_MAX;
  for (const short* list : {rule.by_second, rule.by_minute, rule.by_hour, rule.by_month_day, rule.by_year_day,
                            rule.by_week_no, rule.by_month, rule.by_set_pos}) {
    if (list[0] != kEnd) return 0;
  }
  if (rule.by_day[0] != kEnd) {
    const int weekday = icaltime_day_of_week(CalendarZones::valueOf(anchor_.wall, true));
    if (!isWeekly || rule.by_day[1] != kEnd || rule.by_day[0] != weekday) return 0;
  }
  return std::max<qint64>(1, rule.interval) * (isHourly ? kHour : isWeekly ? 7 * kDay : kDay);
}

void Occasions::walk(const icalrecurrencetype& rule, WallSeconds from, WallSeconds until,
                     QSet<WallSeconds>& into) const {
  if (const qint64 step = evenStep(rule)) {
    WallSeconds end = until;
    if (!icaltime_is_null_time(rule.until)) end = std::min(end, CalendarZones::wallOf(rule.until).value_or(end));
    if (end < anchor_.wall) return;
    qint64 last = (end - anchor_.wall) / step;
    if (rule.count > 0) last = std::min<qint64>(last, rule.count - 1);
    const qint64 first = from > anchor_.wall ? (from - anchor_.wall + step - 1) / step : 0;
    for (qint64 i = first; i <= last && into.size() < kMostOccasions; ++i) into.insert(anchor_.wall + i * step);
    return;
  }
  if (budget_.leftMs <= 0) return;
  QElapsedTimer timer;
  timer.start();
  follow(rule, from, until, into);
  budget_.leftMs -= timer.elapsed();
}

void Occasions::follow(const icalrecurrencetype& rule, WallSeconds from, WallSeconds until,
                       QSet<WallSeconds>& into) const {
  const icaltimetype start = CalendarZones::valueOf(anchor_.wall, anchor_.isDate);
  const std::unique_ptr<icalrecur_iterator, FreeIterator> iterator(icalrecur_iterator_new(rule, start));
  if (!iterator) return;
  // A rule that counts has to be followed from its beginning; any other can begin near the range.
  if (rule.count == 0 && from > anchor_.wall) {
    icalrecur_iterator_set_start(iterator.get(), CalendarZones::valueOf(from, anchor_.isDate));
  }
  for (int step = 0; step < kMostSteps && into.size() < kMostOccasions; ++step) {
    const icaltimetype next = icalrecur_iterator_next(iterator.get());
    const auto wall = CalendarZones::wallOf(next);
    if (!wall || *wall > until) return;
    if (*wall >= from) into.insert(*wall);
  }
}

WallSeconds Occasions::meant(const CalendarTime& occasion) const {
  if (anchor_.isDate) return dayOf(occasion.wall);
  if (occasion.isDate || occasion.zone == anchor_.zone) return occasion.wall;
  return anchor_.zone->wall(occasion.utc());
}

void Occasions::takeOut(const CalendarTime& occasion) {
  // A day alone takes out whatever happens on it.
  if (occasion.isDate || anchor_.isDate) {
    takenDays_.insert(dayOf(occasion.wall));
  } else {
    takenOut_.insert(occasion.utc());
  }
}

bool Occasions::isTakenOut(const Occasion& occasion) const {
  return takenDays_.contains(dayOf(occasion.wall)) || (!anchor_.isDate && takenOut_.contains(occasion.utc));
}

}  // namespace tarnwick
