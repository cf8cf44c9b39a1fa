#include <gtest/gtest.h>

#include <QTimeZone>
#include <algorithm>

#include "commandbar/CommandRanking.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Kind = CommandItem::Kind;

const QDateTime kNow(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());
constexpr qint64 kWeek = 7 * 86'400;

CommandItem item(Kind kind, const QString& id, const QString& title) {
  CommandItem made;
  made.id = id;
  made.kind = kind;
  made.title = title;
  return made;
}

CommandItem app(const QString& id, const QString& title, const QStringList& others = {}) {
  CommandItem made = item(Kind::App, id, title);
  made.otherTexts = others;
  return made;
}

std::string ranked(const QList<CommandItem>& items, const QString& query, const CommandUsage& usage = {},
                   qsizetype limit = CommandRanking::kLimit) {
  QStringList ids;
  for (const CommandItem& row : CommandRanking::rank(items, query, usage, kNow, limit)) ids += row.id;
  return ids.join(u' ').toStdString();
}

/// A row of a kind that nothing else decides about: with `rank` it scores exactly that.
CommandItem mark(double rank) {
  CommandItem made = item(Kind::App, u"mark"_s, u"anything"_s);
  made.matchText = u"\u2603"_s;
  made.sourceRank = rank;
  return made;
}

/// What a row scores, found by where another one of a known score stands: between the two given bounds.
void expectScore(const CommandItem& row, const QString& query, double score, const CommandUsage& usage = {}) {
  constexpr double kLittle = 1e-9;
  CommandItem other = mark(0);
  other.kind = Kind::Web;  // Answers every query.
  const double base = query.isEmpty() ? 0.05 : 0.1;
  other.id = u"~"_s;
  for (const bool isBelow : {true, false}) {
    other.sourceRank = score - base + (isBelow ? -kLittle : kLittle);
    EXPECT_EQ(ranked({other, row}, query, usage), isBelow ? row.id.toStdString() + " ~" : "~ " + row.id.toStdString())
        << query.toStdString() << " for " << row.title.toStdString() << ", not " << score;
  }
}

TEST(CommandRanking, WeighsTextKindUseAndSource) {
  struct Case {
    Kind kind;
    const char16_t* title;
    const char16_t* matchText;
    const char16_t* query;
    int uses;
    qint64 age;
    double rank;
    double score;
  };
  const Case cases[] = {
      {Kind::App, u"Mail", u"", u"mail", 0, 0, 0, 1},
      {Kind::App, u"Mail", u"", u" MAIL\t", 0, 0, 0, 1},
      {Kind::App, u"Mail", u"", u"ma", 0, 0, 0, 0.9},
      {Kind::App, u"Mail", u"", u"", 0, 0, 0, 0.5},
      {Kind::App, u"Mail", u"", u"mail", 1, kWeek, 0, 1.5},
      {Kind::App, u"Mail", u"", u"mail", 3, 0, 0, 3},
      {Kind::App, u"Mail", u"", u"mail", 300, kWeek, 0, 2},
      {Kind::App, u"Mail", u"", u"mail", 1, -kWeek, 0, 2},
      {Kind::File, u"mail.txt", u"", u"mail", 0, 0, 0.25, 0.7},
      {Kind::Widget, u"World Mail", u"", u"mail", 0, 0, 0, 0.6},
      {Kind::Clipboard, u"mail", u"", u"mail", 0, 0, 0.3, 1},
      {Kind::Calculation, u"4", u"", u"2+2", 0, 0, 0, 3},
      {Kind::Symbol, u"→", u"rightwards arrow arrow right to", u"arr", 0, 0, 0, 0.45},
      {Kind::Web, u"Search", u"", u"zz", 0, 0, 0, 0.1},
      {Kind::Web, u"zz.com", u"", u"zz", 0, 0, 0, 0.09},
      {Kind::App, u"xterm", u"", u"term", 0, 0, 0, 4.0 / 4 * 0.45 * 0.7 + 0.1 + (1 - 1.0 / 5) * 0.45 * 0.3},
  };
  for (const Case& each : cases) {
    CommandItem row = item(each.kind, u"row"_s, QString::fromUtf16(each.title));
    row.matchText = QString::fromUtf16(each.matchText);
    row.sourceRank = each.rank;
    CommandUsage usage;
    if (each.uses > 0) usage.records.insert(row.id, {each.uses, CommandUsage::seconds(kNow.addSecs(-each.age))});
    expectScore(row, QString::fromUtf16(each.query), each.score, usage);
  }
}

TEST(CommandRanking, LetsOtherTextsBringAnApplicationInForLess) {
  const QStringList others{u"Web Browser"_s, u"internet"_s, u"www"_s};
  const struct {
    const char16_t* title;
    const char16_t* query;
    double score;
  } cases[] = {
      {u"Firefox", u"www", 0.675},
      {u"Firefox", u"inter", 0.6075},
      {u"Firefox", u"brow", 0.50625},
      {u"Firefox", u"web browser", 0.675},
      {u"Internet", u"internet", 1},
      {u"My Internet", u"inter", 0.75},
      // A title that answers by scattered characters gives way, unless it is worth more.
      {u"b-r-o-w", u"brow", 0.50625},
      {u"abrowabcdefgh", u"brow", 4.0 / 4 * 0.45 * 0.7 + 0.1 + (1 - 1.0 / 13) * 0.45 * 0.3},
      {u"Firefox", u"fx", 2.0 / 7 * 0.45 * 0.7 + 0.1 + 0.45 * 0.3},
  };
  for (const auto& each : cases)
    expectScore(app(u"row"_s, QString::fromUtf16(each.title), others), QString::fromUtf16(each.query), each.score);
  EXPECT_EQ(ranked({app(u"a"_s, u"Firefox"_s, others)}, u"wbb"_s), "");
  // Whatever its name brings in by a word goes before what another text brings in.
  EXPECT_EQ(ranked({app(u"a"_s, u"Firefox"_s, {u"term"_s}), app(u"b"_s, u"My Terminal"_s)}, u"term"_s), "b a");
  // But no word of "XTerm" begins so.
  EXPECT_EQ(ranked({app(u"a"_s, u"XTerm"_s), app(u"b"_s, u"Foot"_s, {u"Terminal"_s})}, u"term"_s), "b a");
}

TEST(CommandRanking, OrdersWhatScoresAlikeByCodePoint) {
  EXPECT_EQ(ranked({app(u"b"_s, u"X"_s), app(u"a"_s, u"X"_s), app(u"B"_s, u"X"_s)}, u"x"_s), "B a b");
  EXPECT_EQ(ranked({app(u"ab"_s, u"X"_s), app(u"a"_s, u"X"_s)}, u"x"_s), "a ab");
  // U+FF5E is a smaller code point than U+1F600, though a larger unit of UTF-16.
  EXPECT_EQ(ranked({app(u"😀"_s, u"X"_s), app(u"～"_s, u"X"_s)}, u"x"_s), "～ 😀");
  CommandItem first = app(u"a"_s, u"X"_s);
  CommandItem second = first;
  first.subtitle = u"first"_s;
  const auto rows = CommandRanking::rank({first, second}, u"x"_s, {}, kNow);
  EXPECT_EQ(rows, (QList{first, second}));
}

TEST(CommandRanking, KeepsTheBest) {
  QList<CommandItem> items;
  for (int i = 0; i < 30; ++i) items.append(app(QString::number(100 + i), u"Mail"_s + u"x"_s.repeated(i % 2)));
  EXPECT_EQ(CommandRanking::rank(items, u"mail"_s, {}, kNow).size(), 12);
  EXPECT_EQ(ranked(items, u"mail"_s, {}, 3), "100 102 104");
  EXPECT_EQ(ranked(items, u"mail"_s, {}, 0), "");
  EXPECT_EQ(ranked(items, u"mails"_s), "");
  EXPECT_EQ(ranked({mark(0), item(Kind::Web, u"web"_s, u"Search"_s)}, u"qqqqzz"_s), "web");
  EXPECT_EQ(ranked(items, u"m"_s.repeated(10'000)), "");
}

TEST(CommandRanking, EmphasisesWhyARowIsThere) {
  using Spans = QList<CommandMatch::Span>;
  EXPECT_EQ(CommandRanking::emphasis(app(u"a"_s, u"My Mail"_s), u" mail "_s), (Spans{{3, 4}}));
  EXPECT_EQ(CommandRanking::emphasis(app(u"a"_s, u"b-r-o-w"_s, {u"Browser"_s}), u"brow"_s), Spans());
  EXPECT_EQ(CommandRanking::emphasis(item(Kind::Web, u"web"_s, u"mail.com"_s), u"mail.com"_s), Spans());
  CommandItem symbol = item(Kind::Symbol, u"symbol:→"_s, u"→"_s);
  symbol.matchText = u"arrow"_s;
  EXPECT_EQ(CommandRanking::emphasis(symbol, u"arrow"_s), Spans());
}

TEST(CommandUsage, CountsUseAndForgetsWhatIsWorthLeast) {
  CommandUsage usage;
  usage.record(u"a"_s, kNow.addSecs(-kWeek));
  usage.record(u"a"_s, kNow);
  EXPECT_EQ(usage.records.value(u"a"_s), (CommandUsage::Record{2, CommandUsage::seconds(kNow)}));
  EXPECT_EQ(CommandUsage::seconds(QDateTime(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc())), 0);

  const double now = CommandUsage::seconds(kNow);
  EXPECT_DOUBLE_EQ(usage.boostOf(u"never"_s, now), 0);
  EXPECT_DOUBLE_EQ(CommandUsage::boost({0, now}, now), 0);
  EXPECT_DOUBLE_EQ(CommandUsage::boost({-3, now}, now), 0);
  EXPECT_DOUBLE_EQ(CommandUsage::boost({1, now}, now), 1);
  EXPECT_DOUBLE_EQ(CommandUsage::boost({3, now}, now), CommandUsage::boost({300, now}, now));
  EXPECT_DOUBLE_EQ(CommandUsage::boost({1, now - 14 * 86'400}, now), 0.25);
  EXPECT_DOUBLE_EQ(CommandUsage::boost({1, now + 1'000}, now), 1);

  CommandUsage full;
  for (int i = 0; i < 500; ++i) full.record(QString::number(i), kNow.addSecs(i - 500));
  EXPECT_EQ(full.records.size(), 500);
  full.record(u"499"_s, kNow);
  EXPECT_EQ(full.records.size(), 500);
  full.record(u"new"_s, kNow);
  ASSERT_EQ(full.records.size(), 375);
  EXPECT_TRUE(full.records.contains(u"new"_s) && full.records.contains(u"126"_s));
  EXPECT_FALSE(full.records.contains(u"125"_s));

  // One use now is not enough beside 500 that were used more.
  CommandUsage strong;
  for (int i = 0; i < 500; ++i) strong.records.insert(QString::number(i), {3, now});
  strong.record(u"new"_s, kNow);
  EXPECT_EQ(strong.records.size(), 375);
  EXPECT_FALSE(strong.records.contains(u"new"_s));
}

/// The same order, found the long way: each row is judged by itself, and all of them are sorted.
QStringList sortedOut(const QList<CommandItem>& items, const QString& query, const CommandUsage& usage) {
  QList<std::pair<double, QString>> found;
  for (const CommandItem& row : items) {
    auto score = CommandMatch::score(query, row.title);
    for (const QString& text : row.otherTexts)
      if (const auto words = CommandMatch::byWords(FoldedText(query), FoldedText(text)))
        score = std::max(score.value_or(0), 0.675 * *words);
    if (score)
      found.append({*score * CommandRanking::weight(row.kind) + usage.boostOf(row.id, CommandUsage::seconds(kNow)),
                    row.id + row.title});
  }
  std::ranges::sort(found, [](const auto& left, const auto& right) {
    return left.first != right.first ? left.first > right.first : left.second < right.second;
  });
  QStringList order;
  for (const auto& row : std::as_const(found)) order << row.second;
  return order;
}

TEST(CommandRanking, RowsOfManySourcesRankAsOneList) {
  const QStringList titles{
      u"Mail"_s,      u"my mail"_s,    u"Über-Mail"_s, u"e\u0301mail"_s, u"👨‍👩‍👧 mail"_s,
      u"lima"_s,      u"a.mail_box"_s, u"m a i l"_s,   u"MAIL"_s,        u"Maps"_s,
      u"日本 mail"_s, u"Сообщения"_s};
  QList<CommandItem> all;
  QList<ReadyRows> sources{ReadyRows()};
  CommandUsage usage;
  for (int source = 0; source < 4; ++source) {
    QList<CommandItem> items;
    for (const QString& title : titles) {
      items << item(static_cast<Kind>(source), u"%1 %2 "_s.arg(items.size(), 2).arg(source), title);
      items.last().otherTexts = QStringList{u"post"_s, u"é %1"_s.arg(source)};
      if (items.size() % 4 == source) usage.record(items.last().id, kNow.addDays(-items.size()));
    }
    all += items;
    sources << ReadyRows(items);
  }
  for (const QString& query :
       {u"mail"_s, u"m"_s, u"é"_s, u"ml"_s, u"👨‍👩‍👧"_s, u"post"_s, u"日"_s, u"с"_s, u"zz"_s})
    for (const qsizetype limit : {0, 1, 12, 100}) {
      QStringList order;
      for (const CommandItem& row : CommandRanking::rank(sources, query, usage, kNow, limit))
        order << row.id + row.title;
      EXPECT_EQ(order, sortedOut(all, query, usage).mid(0, limit)) << query.toStdString();
    }
}

}  // namespace
}  // namespace tarnwick
