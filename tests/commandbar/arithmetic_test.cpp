#include <gtest/gtest.h>

#include <limits>

#include "base/DomainError.h"
#include "commandbar/Arithmetic.h"
#include "commandbar/UnitConversion.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// What is shown for a text: the number, or the sentence in its place.
std::string answer(const QString& text) {
  try {
    return QString::number(Arithmetic(text).evaluate(), 'g', 12).toStdString();
  } catch (const DomainError& failure) {
    return failure.message().toStdString();
  }
}

TEST(ArithmeticTest, AnswersOrSaysWhatIsWrong) {
  const std::string empty = "Enter an expression.";
  const std::string invalid = "Invalid expression.";
  const std::string zero = "Cannot divide by zero.";
  const std::string number = "Expected a number.";
  const std::string parenthesis = "Missing closing parenthesis.";
  const struct {
    QString text;
    std::string answer;
  } cases[] = {
      {u"12 × 4 + 2"_s, "50"},
      {u"4 ÷ 2 × 3"_s, "6"},
      {u"2 − 3 − 4"_s, "-5"},
      {u"8 / 4 / 2"_s, "1"},
      {u"2 + 3 * -(1 + 1)"_s, "-4"},
      {u"--+-2"_s, "-2"},
      {u"1\t0\u00A00 0"_s, "1000"},
      {u".5 + 5."_s, "5.5"},
      {{}, empty},
      {u" \n "_s, empty},
      {u"1"_s.repeated(501), empty},
      {u"1 "_s.repeated(300), "1.11111111111e+299"},
      {u"1"_s.repeated(400), invalid},
      {u"1"_s.repeated(400) + u"-"_s + u"1"_s.repeated(80), invalid},
      {u"2^3"_s, invalid},
      {u"2(3)"_s, invalid},
      {u"(1+2))"_s, invalid},
      {u"50%"_s, invalid},
      {u"1/0"_s, zero},
      {u"1/(2-2)"_s, zero},
      {u"1/-0"_s, zero},
      {u"1+"_s, number},
      {u"."_s, number},
      {u"1.2.3+1"_s, number},
      {u"x"_s, number},
      {u"٣+1"_s, number},
      {u"()"_s, number},
      {u"(1+2"_s, parenthesis},
      {u"("_s.repeated(499) + u"1"_s, parenthesis},
  };
  for (const auto& each : cases) EXPECT_EQ(answer(each.text), each.answer) << each.text.left(40).toStdString();

  Arithmetic twice(u"1+2"_s);
  EXPECT_EQ(twice.evaluate(), twice.evaluate());
}

TEST(UnitConversionTest, ConvertsWithinAGroup) {
  const struct {
    double value;
    const char16_t* from;
    const char16_t* to;
    double result;
  } cases[] = {
      {0, u"°C", u"K", 273.15},         {32, u"°F", u"°C", 0},    {-40, u"°C", u"°F", -40},   {0, u"K", u"°F", -459.67},
      {1, u"mi", u"km", 1.609344},      {1, u"TB", u"KB", 1e9},   {1, u"day", u"min", 1440},  {36, u"km/h", u"m/s", 10},
      {1, u"US gal", u"US fl oz", 128}, {1, u"ha", u"m²", 10000}, {7.25, u"oz", u"oz", 7.25},
  };
  for (const auto& each : cases)
    EXPECT_NEAR(UnitConversion::convert(each.value, QString::fromUtf16(each.from), QString::fromUtf16(each.to)),
                each.result, 1e-9)
        << QString::fromUtf16(each.from).toStdString();

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  for (const auto& [value, from, to] : {std::tuple{1.0, u"kg"_s, u"m"_s},
                                        {1.0, u"kg"_s, u"stone"_s},
                                        {1.0, u"KM"_s, u"m"_s},
                                        {nan, u"m"_s, u"km"_s},
                                        {infinite, u"K"_s, u"K"_s},
                                        {1.0, QString(), QString()}}) {
    try {
      UnitConversion::convert(value, from, to);
      ADD_FAILURE() << from.toStdString();
    } catch (const DomainError& failure) {
      EXPECT_EQ(failure.message(), u"Choose compatible units."_s);
    }
  }
}

TEST(UnitConversionTest, OffersUnitsThatBelongToOneGroupOnly) {
  QStringList all;
  QStringList names;
  for (const auto& group : UnitConversion::groups()) {
    names << group.name;
    all << group.units;
    for (const QString& unit : group.units)
      EXPECT_NEAR(UnitConversion::convert(UnitConversion::convert(3, group.units[0], unit), unit, group.units[0]), 3,
                  1e-9);
  }
  EXPECT_EQ(names.join(u' '), u"Length Mass Temperature Data Time Speed Volume Area"_s);
  EXPECT_EQ(all.size(), 37);
  EXPECT_EQ(all.removeDuplicates(), 0);
}

}  // namespace
}  // namespace tarnwick
