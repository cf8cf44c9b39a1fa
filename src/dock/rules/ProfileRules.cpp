#include "dock/rules/ProfileRules.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

namespace tarnwick {
namespace {

struct ProfileRulesWords {
  Q_DECLARE_TR_FUNCTIONS(ProfileRules)
};

using namespace Qt::StringLiterals;

constexpr int kDaysInWeek = 7;

QString timeText(int minutes) { return QString::asprintf("%02d:%02d", minutes / 60, minutes % 60); }

/// What is before the times, its separator included.
QString daysText(const QList<int>& days, const QLocale& locale) {
  QStringList names;
  for (int day = 1; day <= kDaysInWeek; ++day) {
    // The toolkit counts from Monday.
    const int named = day == 1 ? Qt::Sunday : day - 1;
    if (days.contains(day)) names.append(locale.dayName(named, QLocale::ShortFormat));
  }
  if (names.size() == kDaysInWeek) return ProfileRulesWords::tr("Every day, ");
  if (names.isEmpty()) return ProfileRulesWords::tr("No day, ");
  return names.join(", "_L1) + ", "_L1;
}

bool inWindow(int minutes, int start, int end) {
  if (start == end) return false;
  if (start < end) return minutes >= start && minutes < end;
  return minutes >= start || minutes < end;
}

}  // namespace

ProfileRules::Components ProfileRules::components(const QDateTime& date, const QCalendar& calendar) {
  const QTime time = date.time();
  return {calendar.dayOfWeek(date.date()) % kDaysInWeek + 1, time.hour() * 60 + time.minute()};
}

QString ProfileRules::describe(const ProfileRule& rule, const QLocale& locale) {
  if (rule.trigger == ProfileRule::Trigger::Focus) {
    const QString focus = rule.focusIdentifier.value_or(QString());
    return focus.isEmpty() ? ProfileRulesWords::tr("While a Focus is on")
                           : ProfileRulesWords::tr("While “%1” is on").arg(focus);
  }
  return daysText(rule.days, locale) +
         ProfileRulesWords::tr("%1 to %2").arg(timeText(rule.startMinutes), timeText(rule.endMinutes));
}

std::optional<QUuid> ProfileRules::matching(const QList<ProfileRule>& rules, const QList<DockProfile>& profiles,
                                            const Components& now) {
  for (const ProfileRule& rule : rules) {
    const bool holds = rule.enabled && rule.trigger == ProfileRule::Trigger::Schedule &&
                       rule.days.contains(now.weekday) && inWindow(now.minutes, rule.startMinutes, rule.endMinutes);
    const bool known = holds && std::ranges::any_of(
                                    profiles, [&](const DockProfile& profile) { return profile.id == rule.profileID; });
    if (known) return rule.profileID;
  }
  return std::nullopt;
}

}  // namespace tarnwick
