#include "files/Bookmarks.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

std::string told(const QList<Bookmark>& list) {
  QStringList all;
  for (const Bookmark& each : list) all << u"%1[%2]%3"_s.arg(each.title, each.folder, each.address.host());
  return all.join(u' ').toStdString();
}

constexpr const char* kChromium = R"json({"roots": {
  "other": {"type": "folder", "children": [{"type": "url", "name": "Late", "url": "https://late.example/"}]},
  "bookmark_bar": {"type": "folder", "children": [
    {"type": "url", "name": "  Two\n words ", "url": "https://one.example/a"},
    {"type": "folder", "name": "Deep", "children": [
      {"type": "url", "name": "", "url": "http://named.example/x"},
      {"type": "url", "name": "Script", "url": "javascript:alert(1)"},
      {"type": "url", "name": "File", "url": "file:///etc/passwd"},
      {"type": "url", "name": 7, "url": 8}, 9, null]}]},
  "broken": 5}})json";

TEST(BookmarkTextTest, ReadsBrowsersFilesAndNothingThatWouldRun) {
  const QList<Bookmark> list = BookmarkText::fromChromium(kChromium);
  EXPECT_EQ(told(list), "Two words[]one.example named.example[Deep]named.example Late[]late.example");
  EXPECT_EQ(
      told(BookmarkText::fromXbel("<xbel><title>Mine</title><bookmark href=\"https://a.example/\"><title>A</title>"
                                  "</bookmark><folder><title>F</title><bookmark href=\"https://b.example/\">"
                                  "<info/></bookmark></folder><bookmark href=\"https://c.example/\"><title>C")),
      "A[]a.example b.example[F]b.example");
  for (const QByteArray& nonsense :
       {QByteArray("{\"roots\": []}"), QByteArray("[1, 2"), QByteArray(), QByteArray("<a>")})
    EXPECT_TRUE(BookmarkText::fromChromium(nonsense).isEmpty() && BookmarkText::fromXbel(nonsense).isEmpty());
}

TEST(BookmarkTextTest, EndsWhereAFileIsTooDeepOrTooLong) {
  QByteArray inner = R"({"type": "url", "name": "X", "url": "https://x.example/"})";
  for (int i = 0; i < BookmarkText::deepest + 1; ++i) inner = R"({"type": "folder", "children": [)" + inner + "]}";
  EXPECT_TRUE(BookmarkText::fromChromium(R"({"roots": {"a": )" + inner + "}}").isEmpty());
  QByteArray many;
  for (int i = 0; i <= BookmarkText::most; ++i)
    many += "<bookmark href=\"https://e.example/" + QByteArray::number(i) + "\"/>";
  EXPECT_EQ(BookmarkText::fromXbel("<xbel>" + many + "</xbel>").size(), BookmarkText::most);
}

class BookmarksTest : public FolderTest {};

TEST_F(BookmarksTest, GathersEveryProfileOnceAndFollowsThem) {
  test::TestScheduler scheduler;
  const BookmarkPlaces places{at(u"home"_s), at(u"config"_s), at(u"data"_s)};
  const QByteArray one =
      R"({"roots": {"a": {"children": [{"type": "url", "name": "N", "url": "https://n.example/"}]}}})";
  put(u"config/chromium/Default/Bookmarks"_s, kChromium);
  put(u"config/vivaldi/Profile 2/Bookmarks"_s, kChromium);
  put(u"home/.var/app/com.brave.Browser/config/BraveSoftware/Brave-Browser/Default/Bookmarks"_s, one);
  put(u"data/konqueror/bookmarks.xml"_s,
      "<xbel><bookmark href=\"https://k.example/\"><title>K</title></bookmark></xbel>");
  EXPECT_EQ(Bookmarks::files(places).size(), 4);

  Bookmarks bookmarks(places, scheduler);
  EXPECT_TRUE(bookmarks.list().isEmpty());
  ASSERT_TRUE(waitFor([&] { return bookmarks.loaded(); }));
  EXPECT_EQ(bookmarks.list().size(), 5) << "an address that two browsers keep counts once";

  put(u"config/chromium/Default/Bookmarks"_s, one);
  ASSERT_TRUE(waitFor([&] { return scheduler.waiting() > 0; }));
  scheduler.advance(FileWatch::kQuiet);
  ASSERT_TRUE(waitFor([&] { return bookmarks.list().first().title == u"N"_s; }));
}

}  // namespace
}  // namespace tarnwick
