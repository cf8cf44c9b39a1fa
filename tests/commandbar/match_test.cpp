#include <gtest/gtest.h>

#include "commandbar/CommandMatch.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Of a query whose characters stand apart.
double scattered(double characters, double span, double first, double length) {
  return characters / span * 0.45 * 0.7 + 0.1 + (1 - first / length) * 0.45 * 0.3;
}

TEST(CommandMatch, ScoresByHowATextAnswers) {
  constexpr double kNone = -1;
  const struct {
    const char16_t* query;
    const char16_t* text;
    double score;
  } cases[] = {
      {u"", u"Mail", 0.5},
      {u"", u"", 0.5},
      {u"a", u"", kNone},
      {u"mail", u"Mail", 1},
      {u"MAIL", u"mail", 1},
      {u"ma", u"Mail", 0.9},
      {u"cal", u"My Calendar", 0.75},
      {u"cal", u"my-calendar", 0.75},
      {u"cal", u"my_calendar", 0.75},
      {u"cal", u"my..calendar", 0.75},
      {u"cal", u"my/calendar", scattered(3, 3, 3, 11)},
      {u"my c", u"x my calendar", scattered(4, 4, 2, 13)},
      {u"-c", u"my -calendar", scattered(2, 2, 3, 12)},
      {u"vsc", u"Visual Studio Code", scattered(3, 15, 0, 18)},
      {u"aa", u"banana", scattered(2, 3, 1, 6)},
      {u"ab", u"acab", scattered(2, 4, 0, 4)},  // The first "a" is taken, not the nearer one.
      {u"term", u"xterm", scattered(4, 4, 1, 5)},
      {u"ba", u"ab", kNone},
      {u"mails", u"mail", kNone},
      {u"x", u"mail", kNone},
      // Characters as they are perceived, in composed form.
      {u"e\u0301", u"\u00C9", 1},
      {u"e", u"e\u0301", kNone},
      {u"x", u"x\u0323\u0302y", kNone},
      {u"x\u0323\u0302", u"X\u0323\u0302y", 0.9},
      {u"👨", u"👨‍👩‍👧 family", kNone},
      {u"fam", u"👨‍👩‍👧 family", 0.75},
      {u"fy", u"👨‍👩‍👧 family", scattered(2, 6, 2, 8)},
      {u"тер", u"Мой Терминал", 0.75},
      {u"日", u"日本", 0.9},
      {u"本", u"日本", scattered(1, 1, 1, 2)},
      {u"ss", u"ß", kNone},
  };
  for (const auto& each : cases) {
    const auto score = CommandMatch::score(QString::fromUtf16(each.query), QString::fromUtf16(each.text));
    EXPECT_DOUBLE_EQ(score.value_or(kNone), each.score)
        << QString::fromUtf16(each.query).toStdString() << " in " << QString::fromUtf16(each.text).toStdString();
  }
}

TEST(CommandMatch, PointsAtWhatAnswers) {
  using Spans = QList<CommandMatch::Span>;
  const struct {
    const char16_t* query;
    const char16_t* text;
    Spans spans;
  } cases[] = {
      {u"mail", u"Mail", {{0, 4}}},
      {u"cal", u"My Calendar", {{3, 3}}},
      {u"vsc", u"Visual Studio Code", {{0, 1}, {2, 1}, {14, 1}}},
      {u"é", u"xe\u0301y", {{1, 2}}},
      {u"fy", u"👨‍👩‍👧 family", {{9, 1}, {14, 1}}},
      {u"x", u"mail", {}},
      {u"", u"mail", {}},
  };
  for (const auto& each : cases)
    EXPECT_EQ(CommandMatch::spans(QString::fromUtf16(each.query), QString::fromUtf16(each.text)), each.spans)
        << QString::fromUtf16(each.query).toStdString();
}

}  // namespace
}  // namespace tarnwick
