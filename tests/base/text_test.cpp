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

TEST(Text, CutsBetweenCharacters) {
  const QString family = u"👨‍👩‍👧"_s;
  const QString stacked = u"e"_s + u"\u0301"_s.repeated(1'000);
  const struct {
    QString text;
    qsizetype characters;
    QString beginning;
  } cases[] = {
      {u"abc"_s, 2, u"ab"_s},
      {u"abc"_s, 3, u"abc"_s},
      {u"abc"_s, 4, u"abc"_s},
      {u"ae\u0301b"_s, 2, u"ae\u0301"_s},
      {family.repeated(200), 120, family.repeated(120)},
      {u"🔥🇩🇪🇫🇷x"_s, 2, u"🔥🇩🇪"_s},
      {u"漢字"_s.repeated(200), 3, u"漢字漢"_s},
      {u"a\r\nb"_s, 2, u"a\r\n"_s},
      {{}, 3, {}},
      {u"ab"_s, 0, {}},
  };
  for (const auto& each : cases)
    EXPECT_EQ(Text::beginning(each.text, each.characters), each.beginning) << each.text.left(20).toStdString();
  EXPECT_LE(Text::beginning(stacked, 2).size(), stacked.size());

  // What is said to stand alone is told apart as the slow way does.
  QString alone;
  for (char32_t unit = 0x20; unit < 0xD800; ++unit)
    if (Text::standsAlone(QChar(static_cast<char16_t>(unit)))) alone += QChar(static_cast<char16_t>(unit));
  EXPECT_EQ(Text::characters(alone).size(), alone.size());
}

TEST(Text, TakesBlanksButNoNewLinesFromTheEnds) {
  EXPECT_EQ(Text::withoutOuterBlanks(u" \t\u00A0a b\u3000 "), u"a b");
  EXPECT_EQ(Text::withoutOuterBlanks(u" \na\n "), u"\na\n");
  EXPECT_EQ(Text::withoutOuterBlanks(u" \t "), u"");
}

TEST(Text, IsFoldedAlikeWhereverALetterStands) {
  const struct {
    QString text;
    QString folded;
  } cases[] = {
      {u"Äpfel’s"_s, u"apfel's"_s},
      {u"A\u0308"_s, u"a"_s},
      {u"STRASSE ß"_s, u"strasse ß"_s},
      {u"\U0001D400\U00010400"_s, u"a\U00010428"_s},
      {u"İ"_s, u"i"_s},
      {u"ﬁn"_s, u"fin"_s},
  };
  // Long texts are folded in pieces, whose borders must not show.
  for (const auto& each : cases)
    for (const int before : {0, 61, 62, 63, 64, 65, 500}) {
      EXPECT_EQ(Text::folded(QString(before, u'É') + each.text), QString(before, u'e') + each.folded)
          << each.text.toStdString() << " after " << before;
    }
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
