#include <gtest/gtest.h>

#include "commandbar/Calculator.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The value of a text; "none" for what is no calculation.
std::string valueOf(const QString& text) {
  const auto value = Calculator::evaluate(text);
  return value ? QString::number(*value, 'g', 12).toStdString() : "none";
}

TEST(Calculator, GivesValuesForCalculationsAlone) {
  const struct {
    const char16_t* text;
    const char* value;
  } cases[] = {
      {u"2+2", "4"},           {u"(1+2)*3", "9"},
      {u" \t7 - 2 - 1 ", "4"}, {u"8/4/2", "1"},
      {u"2^3^2", "512"},       {u"-2^2", "4"},
      {u"2^-1", "0.5"},        {u"--+-2", "-2"},
      {u"2*-(1 + 1)", "-4"},   {u"50%", "0.5"},
      {u"50%+10", "10.5"},     {u"50%-10", "0"},
      {u"50 % -10", "0"},      {u"7%3", "1"},
      {u"-7%3", "-1"},         {u"7.5%2", "1.5"},
      {u"7%(1+2)", "1"},       {u"7%.5", "0"},
      {u"200*5%", "10"},       {u"-50%", "-0.5"},
      {u"10%*10%", "0.01"},    {u"2^50%", "1.41421356237"},
      {u".5+.5", "1"},         {u"5.+1", "6"},
      {u"(5)", "5"},           {u"-5", "-5"},
      {u"0*-1", "0"},          {u"", "none"},
      {u"42", "none"},         {u"foo bar", "none"},
      {u"a-b", "none"},        {u"--", "none"},
      {u"()", "none"},         {u"1+", "none"},
      {u"*1", "none"},         {u"(1+2", "none"},
      {u"1+2)", "none"},       {u"1/0", "none"},
      {u"1%0", "none"},        {u"1/-0", "none"},
      {u"1/(2-2)", "none"},    {u"10^400", "none"},
      {u"0^-1", "none"},       {u"(-8)^.5", "none"},
      {u"1.2.3+1", "none"},    {u".+1", "none"},
      {u"2(3)", "none"},       {u"1 000+1", "none"},
      {u"1e3+1", "none"},      {u"1,5+1", "none"},
      {u"50%%", "none"},       {u"50% 3+x", "none"},
      {u"٣+1", "none"},        {u"1d+1", "none"},
      {u"1+2\n", "none"},      {u"2×3+1", "none"},
      {u"2\u0301+1", "none"},  {u"2+2\u0301", "none"},
      {u"2+\u0301 2", "none"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(valueOf(QString::fromUtf16(each.text)), each.value) << QString::fromUtf16(each.text).toStdString();
}

TEST(Calculator, BearsTextsOfEveryLength) {
  const QString huge = u"1"_s.repeated(400);
  EXPECT_EQ(valueOf(huge + u"+1"_s), "none");
  EXPECT_EQ(valueOf(u"1/"_s + huge), "0");
  EXPECT_EQ(valueOf(u"1"_s + u"+1"_s.repeated(9'999)), "10000");
  EXPECT_EQ(valueOf(u"-"_s.repeated(10'000) + u"1"_s), "1");
  EXPECT_EQ(valueOf(u"("_s.repeated(900) + u"1"_s + u")"_s.repeated(900)), "1");
  EXPECT_EQ(valueOf(u"("_s.repeated(200'000) + u"1"_s), "none");
  EXPECT_EQ(valueOf(u"1"_s + u"^1"_s.repeated(200'000)), "none");
  EXPECT_EQ(valueOf(u"2+2"_s + QChar(u'\0') + u"x"_s), "none");
}

TEST(Calculator, WritesNumbersAsTheUserDoes) {
  const QLocale english(QLocale::English, QLocale::UnitedStates);
  const QLocale german(QLocale::German, QLocale::Germany);
  const struct {
    double value;
    QLocale locale;
    const char16_t* text;
  } cases[] = {
      {4, english, u"4"},
      {1234567, english, u"1,234,567"},
      {1234567.5, german, u"1.234.567,5"},
      {0.1 + 0.2, english, u"0.3"},
      {1.0 / 3, english, u"0.3333333333"},
      {2.0 / 3, german, u"0,6666666667"},
      {-5, english, u"-5"},
      {-0.0, english, u"0"},
      {-1e-12, english, u"0"},
      {999999999999999, english, u"999,999,999,999,999"},
      {1e15, english, u"1,000,000,000,000,000"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(Calculator::format(each.value, each.locale), QString::fromUtf16(each.text)) << each.value;
}

}  // namespace
}  // namespace tarnwick
