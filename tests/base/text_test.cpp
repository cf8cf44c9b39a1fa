#include <gtest/gtest.h>

#include "base/ProbeCounters.h"
#include "base/Text.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(Text, ReadsNumbersAsAWhole) {
  const struct {
    const char16_t* text;
    std::optional<double> value;
  } cases[] = {
      {u"0", 0},       {u"-12.5", -12.5}, {u"+3", 3},     {u".5", 0.5},   {u"5.", 5},     {u"1e3", 1000},
      {u"2E-2", 0.02}, {u"1e+2", 100},    {u"007", 7},    {u"1e-999", 0}, {u"1e999", {}}, {u"", {}},
      {u".", {}},      {u"-", {}},        {u"e5", {}},    {u"1e", {}},    {u"1e+", {}},   {u" 1", {}},
      {u"1 ", {}},     {u"1\n", {}},      {u"1,5", {}},   {u"1,000", {}}, {u"0x10", {}},  {u"inf", {}},
      {u"nan", {}},    {u"--1", {}},      {u"1.2.3", {}}, {u"1e2.5", {}}, {u"١", {}},     {u"1f", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(Text::number(c.text), c.value) << QString::fromUtf16(c.text).toStdString();
}

TEST(Text, KnowsWhatAUserPerceivesAsOneCharacter) {
  const QString family = u"👨‍👩‍👧"_s;
  EXPECT_EQ(Text::characters(u"e\u0301x"_s + family + u"🇩🇪"_s), (QStringList{u"e\u0301"_s, u"x"_s, family, u"🇩🇪"_s}));
  EXPECT_EQ(Text::characters(u"abc"_s, 2), (QStringList{u"a"_s, u"b"_s}));
  EXPECT_EQ(Text::characters({}), QStringList());
}

TEST(Text, TakesBlanksButNoNewLinesFromTheEnds) {
  EXPECT_EQ(Text::withoutOuterBlanks(u" \t\u00A0a b\u3000 "), u"a b");
  EXPECT_EQ(Text::withoutOuterBlanks(u" \na\n "), u"\na\n");
  EXPECT_EQ(Text::withoutOuterBlanks(u" \t "), u"");
}

TEST(ProbeCounters, CountOnlyWhileArmed) {
  for (const bool armed : {false, true, true, false}) {
    ProbeCounters::setArmed(armed);
    ProbeCounters::count("beat");
  }
  EXPECT_EQ(ProbeCounters::snapshot().value(u"beat"_s), 2);
  ProbeCounters::reset();
  EXPECT_EQ(ProbeCounters::snapshot().value(u"beat"_s, -1), 0);
}

}  // namespace
}  // namespace tarnwick
