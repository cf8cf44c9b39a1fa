#include <gtest/gtest.h>

#include "commandbar/QuickAnswer.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(QuickAnswer, AnswersWhatPeopleWriteBesideCalculations) {
  const struct {
    const char16_t* query;
    const char* locale;
    const char16_t* answer;  ///< Empty for none.
  } cases[] = {
      {u"12 cm in in", "en_US", u"4.7244 in"},
      {u"12in to cm", "en_US", u"30.48 cm"},
      {u" 5 Miles in km ", "en_US", u"8.0467 km"},
      {u"72°F to C", "en_US", u"22.2222 °C"},
      {u"-40 c as f", "en_US", u"-40 °F"},
      {u"1 US gal to L", "en_US", u"3.7854 L"},
      {u"100 km/h in mph", "en_US", u"62.1371 mph"},
      {u"1 mm in mi", "en_US", u"0.0000006214 mi"},
      {u"1,500 mb to gb", "en_US", u"1.5 GB"},
      {u"1.500,5 m in km", "de_DE", u"1,5005 km"},
      {u"12 cm in kg", "en_US", u""},
      {u"12 cm", "en_US", u""},
      {u"12 cm of in", "en_US", u""},
      {u"born in 1984 in ma", "en_US", u""},
      {u"10% of 50", "en_US", u"5"},
      {u"12.5 % of 80 + 1", "en_US", u"11"},
      {u"sqrt(2)", "en_US", u"1.4142135624"},
      {u"2*SQRT(sqrt(16)+5)", "en_US", u"6"},
      {u"√16 + √(9)", "en_US", u"7"},
      {u"-sqrt(4)", "en_US", u"-2"},
      {u"sqrt(-1)", "en_US", u""},
      {u"sqrt(2", "en_US", u""},
      {u"2*pi", "en_US", u"6.2831853072"},
      {u"2*pie", "en_US", u""},
      {u"4 × 3 − 2", "en_US", u"10"},
      {u"1,234*2", "en_US", u"2,468"},
      {u"12,5*2", "de_DE", u"25"},
      {u"1.000*2,5", "de_DE", u"2.500"},
      // What Calculator answers stands among the ranked rows.
      {u"2+2", "en_US", u""},
      {u"12.5*2", "de_DE", u""},
      {u"42", "en_US", u""},
      {u"meeting 3-4", "en_US", u""},
      {u"", "en_US", u""},
  };
  for (const auto& each : cases)
    EXPECT_EQ(
        QuickAnswer::of(QString::fromUtf16(each.query), QLocale(QString::fromLatin1(each.locale))).value_or(QString()),
        QString::fromUtf16(each.answer))
        << qPrintable(QString::fromUtf16(each.query));
  EXPECT_FALSE(QuickAnswer::of(u"sqrt("_s.repeated(60) + u"4"_s + u")"_s.repeated(60)));
}

}  // namespace
}  // namespace tarnwick
