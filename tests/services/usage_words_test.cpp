// What is said of an allowance.

#include <gtest/gtest.h>

#include <QTimeZone>
#include <limits>

#include "services/UsageWords.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QLocale kBritish(QLocale::English, QLocale::UnitedKingdom);
const QDateTime kMorning(QDate(2026, 11, 24), QTime(10, 24, 36), QTimeZone::utc());

TEST(UsageWords, SayHowMuchIsUsedAndWhenItBeginsAnew) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const std::optional<QDateTime> never;
  const struct {
    double used;
    std::optional<QDateTime> reset;
    QString line;
    QString left;
    bool isAlarming;
  } cases[] = {
      {42, kMorning.addSecs(8000), u"5 hours · 42% used · resets 24 Nov 2026, 12:37"_s, u"58% left"_s, false},
      {84.6, never, u"5 hours · 85% used · reset unavailable"_s, u"15% left"_s, false},
      {85.4, QDateTime(), u"5 hours · 85% used · reset unavailable"_s, u"15% left"_s, true},
      {-3, never, u"5 hours · 0% used · reset unavailable"_s, u"100% left"_s, false},
      {1e300, never, u"5 hours · 100% used · reset unavailable"_s, u"0% left"_s, true},
      {nan, never, u"5 hours · 0% used · reset unavailable"_s, u"100% left"_s, false},
  };
  for (const auto& each : cases) {
    const UsageWindow window{u"5h"_s, u"5 hours"_s, each.used, {}, each.reset};
    EXPECT_EQ(UsageWords::line(window, kBritish, true), each.line);
    EXPECT_EQ(UsageWords::leftWords(window), each.left);
    EXPECT_EQ(UsageWords::isAlarming(window), each.isAlarming) << each.used;
  }
  const UsageWindow window{{}, {}, 5, {}, QDateTime(QDate(2026, 12, 1), QTime(15, 4), QTimeZone::utc())};
  EXPECT_EQ(UsageWords::resets(window, QLocale(QLocale::English, QLocale::UnitedStates), false),
            u" · resets Dec 1, 2026, 3:04 PM"_s);
  EXPECT_EQ(UsageWords::resets(window, QLocale(QLocale::German), true), u" · resets 1. Dez. 2026, 15:04"_s);
}

TEST(UsageWords, CountDownToTheResetInOneUnit) {
  const struct {
    qint64 seconds;
    QString left;
  } cases[] = {{-1, {}},
               {0, {}},
               {1, u"1 min"_s},
               {2880, u"48 min"_s},
               {3540, u"59 min"_s},
               {3599, u"1 h"_s},
               {3600, u"1 h"_s},
               {7140, u"1 h"_s},
               {172700, u"47 h"_s},
               {172800, u"2 days"_s},
               {864000, u"10 days"_s}};
  for (const auto& each : cases) {
    const UsageWindow window{{}, {}, 5, {}, kMorning.addSecs(each.seconds)};
    EXPECT_EQ(UsageWords::countdown(window, kMorning, kBritish), each.left) << each.seconds;
  }
  EXPECT_EQ(UsageWords::countdown({}, kMorning, kBritish), QString());
}

}  // namespace
}  // namespace tarnwick
