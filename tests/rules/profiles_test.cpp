#include <gtest/gtest.h>

#include <QTimeZone>

#include "dock/rules/ProfileDirection.h"
#include "dock/rules/ProfileRules.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QList<int> kEveryDay{1, 2, 3, 4, 5, 6, 7};
constexpr int kMonday = 2, kTuesday = 3;

int at(int hour, int minute = 0) { return hour * 60 + minute; }

QList<DockProfile> profiles(qsizetype count) {
  QList<DockProfile> list;
  for (qsizetype i = 0; i < count; ++i) list.append({QUuid::createUuid(), u"P"_s, {}});
  return list;
}

ProfileRule rule(const QUuid& profile, int start, int end, const QList<int>& days = kEveryDay) {
  return {QUuid::createUuid(), profile, ProfileRule::Trigger::Schedule, true, days, start, end, {}};
}

TEST(ProfileRules, TakeTheDayAndMinuteOfTheDatesOwnZone) {
  const QDate sunday(2026, 11, 22);
  for (int day = 0; day < 7; ++day) {
    const QDateTime date(sunday.addDays(day), QTime(10, 24, 59), QTimeZone::utc());
    EXPECT_EQ(ProfileRules::components(date), (ProfileRules::Components{day + 1, 10 * 60 + 24}));
  }
  const QDateTime east = QDateTime(sunday, QTime(23, 30), QTimeZone::utc()).toOffsetFromUtc(3600);
  EXPECT_EQ(ProfileRules::components(east), (ProfileRules::Components{kMonday, 30}));
}

TEST(ProfileRules, HoldWithinTheirWindow) {
  struct Case {
    int start, end;
    QList<int> days;
    ProfileRules::Components now;
    bool expected;
  };
  const Case cases[] = {
      {at(9), at(17), kEveryDay, {1, at(8, 59)}, false},
      {at(9), at(17), kEveryDay, {1, at(9)}, true},
      {at(9), at(17), kEveryDay, {1, at(16, 59)}, true},
      {at(9), at(17), kEveryDay, {1, at(17)}, false},
      {at(22), at(2), kEveryDay, {7, at(21, 59)}, false},
      {at(22), at(2), kEveryDay, {7, at(22)}, true},
      {at(22), at(2), kEveryDay, {7, at(23, 59)}, true},
      {at(22), at(2), kEveryDay, {7, at(0)}, true},
      {at(22), at(2), kEveryDay, {7, at(1, 59)}, true},
      {at(22), at(2), kEveryDay, {7, at(2)}, false},
      {at(22), at(2), {kMonday}, {kMonday, at(1)}, true},
      {at(22), at(2), {kMonday}, {kMonday, at(22)}, true},
      {at(22), at(2), {kMonday}, {kTuesday, at(1)}, false},
      {at(9), at(9), kEveryDay, {1, at(9)}, false},
      {at(9), at(17), {}, {1, at(10)}, false},
  };
  const auto known = profiles(1);
  for (const Case& c : cases) {
    const auto found = ProfileRules::matching({rule(known[0].id, c.start, c.end, c.days)}, known, c.now);
    EXPECT_EQ(found.has_value(), c.expected)
        << c.start << "–" << c.end << ", " << c.now.weekday << " " << c.now.minutes;
  }
}

TEST(ProfileRules, TheFirstUsableRuleWins) {
  const auto known = profiles(2);
  const ProfileRules::Components noon{kMonday, at(12)};
  ProfileRule disabled = rule(known[0].id, at(9), at(17));
  disabled.enabled = false;
  ProfileRule focus = rule(known[0].id, at(9), at(17));
  focus.trigger = ProfileRule::Trigger::Focus;
  const ProfileRule gone = rule(QUuid::createUuid(), at(9), at(17));
  const ProfileRule second = rule(known[1].id, at(11), at(13));
  const ProfileRule first = rule(known[0].id, at(9), at(17));

  EXPECT_EQ(ProfileRules::matching({second, first}, known, noon), known[1].id);
  EXPECT_EQ(ProfileRules::matching({first, second}, known, noon), known[0].id);
  EXPECT_EQ(ProfileRules::matching({disabled, focus, gone, second}, known, noon), known[1].id);
  EXPECT_EQ(ProfileRules::matching({disabled, focus, gone}, known, noon), std::nullopt);
}

TEST(ProfileRules, AreDescribedInOneLine) {
  const QLocale english(QLocale::English, QLocale::UnitedKingdom);
  const auto described = [&english](const QList<int>& days, int start, int end) {
    return ProfileRules::describe(rule({}, start, end, days), english);
  };
  EXPECT_EQ(described(kEveryDay, at(9), at(17, 5)), u"Every day, 09:00 to 17:05"_s);
  EXPECT_EQ(described({6, 2, 1, 2}, at(22), at(0)), u"Sun, Mon, Fri, 22:00 to 00:00"_s);
  EXPECT_EQ(described({}, at(9), at(17)), u"No day, 09:00 to 17:00"_s);

  ProfileRule focus = rule({}, 0, 0);
  focus.trigger = ProfileRule::Trigger::Focus;
  EXPECT_EQ(ProfileRules::describe(focus), u"While a Focus is on"_s);
  focus.focusIdentifier = u"Work"_s;
  EXPECT_EQ(ProfileRules::describe(focus), u"While “Work” is on"_s);
}

TEST(ProfileDirection, TakesTheShorterWay) {
  struct Case {
    qsizetype from, to, count;
    bool expected;
  };
  const Case cases[] = {{0, 3, 4, false}, {3, 0, 4, true},  {0, 2, 4, true}, {3, 1, 4, false},
                        {0, 1, 2, true},  {1, 0, 2, false}, {4, 1, 5, true}, {1, 4, 5, false},
                        {2, 2, 5, true},  {0, 0, 1, true},  {0, 1, 0, true}};
  for (const Case& c : cases) {
    EXPECT_EQ(ProfileDirection::isForward(c.from, c.to, c.count), c.expected) << c.from << " to " << c.to;
  }
}

}  // namespace
}  // namespace tarnwick
