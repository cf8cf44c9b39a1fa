#include <gtest/gtest.h>

#include "base/UuidText.h"
#include "commandbar/CommandSources.h"
#include "commandbar/WebSearch.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Kind = CommandItem::Kind;

const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);

CommandItem row(Kind kind, const QString& id, const QString& title, const QString& subtitle, const QString& symbol,
                const QString& path, const QString& payload) {
  CommandItem item;
  item.id = id;
  item.kind = kind;
  item.title = title;
  item.subtitle = subtitle;
  item.symbol = symbol;
  item.path = path;
  item.payload = payload;
  return item;
}

TEST(CommandSources, CalculatesWhatIsACalculation) {
  EXPECT_EQ(
      CommandSources::calculation(u" 1000*2.5 "_s, kEnglish),
      row(Kind::Calculation, u"calc:2,500"_s, u"2,500"_s, u"1000*2.5 · copy"_s, u"equal.square"_s, {}, u"2,500"_s));
  EXPECT_FALSE(CommandSources::calculation(u"42"_s));
}

TEST(CommandSources, MakesARowOfAnApplication) {
  DesktopEntry entry;
  entry.path = u"/apps/editor.desktop"_s;
  entry.name = u"Schreiber"_s;
  entry.genericName = u"Textprogramm"_s;
  entry.keywords = QStringList{u"Wort"_s, u"Satz"_s};
  entry.untranslatedName = u"Editor"_s;
  DesktopEntry plain;
  plain.path = u"/apps/x.desktop"_s;
  plain.name = plain.untranslatedName = u"X"_s;

  const auto rows = CommandSources::apps({entry, plain});
  ASSERT_EQ(rows.size(), 2);
  CommandItem expected =
      row(Kind::App, u"app:/apps/editor.desktop"_s, u"Schreiber"_s, u"Application"_s, u"app"_s, entry.path, {});
  expected.otherTexts = QStringList{u"Textprogramm"_s, u"Wort"_s, u"Satz"_s, u"Editor"_s};
  EXPECT_EQ(rows[0], expected);
  EXPECT_EQ(rows[1].otherTexts, QStringList());
}

TEST(CommandSources, MakesARowOfAWidget) {
  WidgetDefinition clock;
  clock.id = u"clock"_s;
  clock.name = u"Clock"_s;
  clock.category = u"Time"_s;
  clock.symbol = u"clock.fill"_s;
  EXPECT_EQ(CommandSources::widgets({clock}).value(0),
            row(Kind::Widget, u"widget:clock"_s, u"Clock"_s, u"Add to dock · Time"_s, u"clock.fill"_s, {}, u"clock"_s));
}

TEST(CommandSources, FindsSymbolsByTheBeginningOfAWordOrAPartOfTheName) {
  const struct {
    const char16_t* query;
    const char16_t* characters;
  } cases[] = {
      {u"rock", u"🚀"},
      {u" ROCK\t", u"🚀"},
      {u"bulb", u"💡"},
      {u"ight v", u""},
      {u"igh", u"🙂⚡💡➡️→”’©"},
      {u"aunch", u""},
      {u"currency", u"€£¥"},
      {u"r", u""},
      {u"é", u""},
      {u"", u""},
  };
  for (const auto& each : cases) {
    QString found;
    for (const CommandItem& item : CommandSources::symbols(QString::fromUtf16(each.query))) found += item.title;
    EXPECT_EQ(found, QString::fromUtf16(each.characters)) << QString::fromUtf16(each.query).toStdString();
  }
  CommandItem fire = row(Kind::Symbol, u"symbol:🔥"_s, u"🔥"_s, u"fire · copy"_s, {}, {}, u"🔥"_s);
  fire.matchText = u"fire fire hot lit flame"_s;
  EXPECT_EQ(CommandSources::symbols(u"flame"_s), QList{fire});
}

TEST(CommandSources, ShowsTheBeginningOfWhatWasCopied) {
  using Copied = ClipboardEntry::Kind;
  QList<ClipboardEntry> entries;
  const auto copy = [&](const QString& value, Copied kind = Copied::Text) {
    ClipboardEntry entry;
    entry.id = QUuid::createUuid();
    entry.kind = kind;
    entry.value = value;
    entries.append(entry);
  };
  copy(u" \n one\ntwo\r\nthree\n"_s);
  copy({}, Copied::Image);
  copy(u"\n \n"_s);
  copy({});
  copy(u"🇩🇪"_s.repeated(130));
  copy(u"x"_s.repeated(100'000));
  while (entries.size() < 32) copy(u"#000000"_s, Copied::Color);

  const auto rows = CommandSources::clipboard(entries);
  ASSERT_EQ(rows.size(), 29);
  CommandItem first = row(Kind::Clipboard, "clip:"_L1 + UuidText::write(entries[0].id), u"one two three"_s, u"Copy"_s,
                          u"doc.on.clipboard"_s, {}, u" \n one\ntwo\r\nthree\n"_s);
  first.sourceRank = 0.3;
  EXPECT_EQ(rows[0], first);
  EXPECT_EQ(rows[1].title, u"🇩🇪"_s.repeated(120));
  EXPECT_DOUBLE_EQ(rows[1].sourceRank, 0.3 - 0.01 * 4);  // What has no row still has its place.
  EXPECT_EQ(rows[2].title, u"x"_s.repeated(120));
  EXPECT_EQ(rows[2].payload.size(), 100'000);
  EXPECT_GT(rows[26].sourceRank, 0);
  EXPECT_NEAR(rows[27].sourceRank, 0, 1e-9);
  EXPECT_EQ(rows[28].sourceRank, 0);
}

TEST(CommandSources, MakesRowsOfFiles) {
  const auto rows = CommandSources::files({{u"/home/u/a.txt"_s, u"a.txt"_s}, {u"/b"_s, u"b"_s, true}});
  CommandItem first =
      row(Kind::File, u"file:/home/u/a.txt"_s, u"a.txt"_s, u"/home/u"_s, u"doc"_s, u"/home/u/a.txt"_s, {});
  first.sourceRank = 0.25;
  EXPECT_EQ(rows[0], first);
  EXPECT_EQ(rows[1].subtitle, u"/"_s);
  EXPECT_TRUE(rows[1].isFolder);
  EXPECT_DOUBLE_EQ(rows[1].sourceRank, 0.24);
}

TEST(CommandSources, OpensAddressesAndSearchesForTheRest) {
  EXPECT_EQ(CommandSources::web(u" example.dev/a "_s, {}, kEnglish),
            row(Kind::Web, u"web:https://example.dev/a"_s, u"example.dev/a"_s, u"Open"_s, u"globe"_s, {},
                u"https://example.dev/a"_s));
  EXPECT_EQ(CommandSources::web(u"a %1+b&c"_s, {}, kEnglish),
            row(Kind::Web, u"web:search"_s, u"Search the web for “a %1+b&c”"_s, u"duckduckgo.com"_s,
                u"magnifyingglass"_s, {}, u"https://duckduckgo.com/?q=a%20%251%2Bb%26c"_s));
  EXPECT_FALSE(CommandSources::web(u" \t"_s));
  for (const auto& query : {u"https://a b"_s, u"example.invalid"_s, u"a..b"_s})
    EXPECT_EQ(CommandSources::web(query).value_or(CommandItem()).id, u"web:search"_s) << query.toStdString();
  EXPECT_EQ(CommandSources::address(u" foo.js "_s), QUrl(u"https://foo.js"_s));
}

TEST(CommandSources, OffersTheBestOfTheOpenWindows) {
  RunningApp browser;
  browser.name = u"Browser"_s;
  browser.path = u"/apps/browser.desktop"_s;
  browser.windows = {1, 2, 3};
  RunningApp editor;
  editor.name = u"Editor"_s;
  editor.windows = {4, 5, 6, 7};
  QList<ClientWindow> windows;
  for (const auto& [id, title] : {std::pair{1, u"News of the day"_s},
                                  {2, u"day"_s},
                                  {3, u"Today"_s},
                                  {4, u"Days"_s},
                                  {5, {}},
                                  {6, u"day"_s},
                                  {7, u"night"_s}}) {
    ClientWindow window;
    window.id = static_cast<quint64>(id);
    window.title = title;
    windows.append(window);
  }
  const auto rows = CommandSources::windows({browser, editor}, windows, {6}, u" day"_s);
  QStringList ids;
  for (const CommandItem& item : rows) ids += item.id;
  EXPECT_EQ(ids.join(u' '), u"window:2 window:4 window:1 window:3"_s);
  EXPECT_EQ(rows[0], row(Kind::App, u"window:2"_s, u"day"_s, u"Switch to · Browser"_s, u"app"_s,
                         u"/apps/browser.desktop"_s, u"2"_s));
  EXPECT_EQ(CommandSources::windows({browser, editor}, windows, {}, u"day"_s).size(), CommandSources::kMostWindows);
}

TEST(WebSearch, AsksWhomTheUserChose) {
  const QLocale german(QLocale::German, QLocale::Germany);
  const QLocale none = QLocale::c();
  const struct {
    QString choice;
    QLocale locale;
    QString address;
  } cases[] = {
      {{}, none, u"https://duckduckgo.com/?q=a%20b"_s},
      {u"unknown"_s, none, u"https://duckduckgo.com/?q=a%20b"_s},
      {u"http://x.org/%s"_s, none, u"https://duckduckgo.com/?q=a%20b"_s},
      {u"wikipedia"_s, german, u"https://de.wikipedia.org/w/index.php?search=a%20b"_s},
      {u"wikipedia"_s, none, u"https://en.wikipedia.org/w/index.php?search=a%20b"_s},
      {u"https://x.org/find/%s/now"_s, none, u"https://x.org/find/a%20b/now"_s},
  };
  for (const auto& each : cases)
    EXPECT_EQ(WebSearch::address(each.choice, u"a b"_s, each.locale).toString(QUrl::FullyEncoded), each.address)
        << each.choice.toStdString();
  for (const WebSearch::Engine& engine : WebSearch::engines()) {
    const QUrl url = WebSearch::address(QString::fromLatin1(engine.id), u"x"_s);
    EXPECT_TRUE(url.isValid() && url.scheme() == u"https"_s && url.query().endsWith(u"=x"_s)) << engine.id;
  }
}

TEST(WebSearch, RefusesAddressesThatCannotBeUsed) {
  const std::pair<QString, bool> cases[] = {
      {u"https://x.org/?q=%s"_s, true},
      {u"https://x.org:8443/?q=%s#top"_s, true},
      {u"https://x.org/"_s + u"a"_s.repeated(484) + u"%s"_s, true},
      {u"https://x.org/"_s + u"a"_s.repeated(485) + u"%s"_s, false},
      {u"https://x.org/"_s, false},
      {u"https://x.org/%s/%s"_s, false},
      {u"http://x.org/?q=%s"_s, false},
      {u"https:///?q=%s"_s, false},
      {u"https://%s"_s, false},
      {u"https://%s.org/"_s, false},
      {u"https://me@x.org/?q=%s"_s, false},
      {u"https://me:pw@x.org/?q=%s"_s, false},
      {u"https://@x.org/?q=%s"_s, false},
      {u"x.org/?q=%s"_s, false},
      {u"%s"_s, false},
      {{}, false},
  };
  for (const auto& [address, isGood] : cases)
    EXPECT_EQ(WebSearch::problemWith(address).isEmpty(), isGood) << address.toStdString();
}

}  // namespace
}  // namespace tarnwick
