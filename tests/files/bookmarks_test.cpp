#include <lz4.h>

#include <QtEndian>

#include "files/Bookmarks.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

std::string summary(const QList<Bookmark>& list) {
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

constexpr const char* kFirefox = R"json({"type": "text/x-moz-place-container", "root": "placesRoot", "children": [
  {"title": "menu", "root": "bookmarksMenuFolder", "children": [
    {"type": "text/x-moz-place", "title": "Menu", "uri": "https://menu.example/"},
    {"type": "text/x-moz-place-separator"},
    {"title": "Kept", "type": "text/x-moz-place-container", "children": [
      {"type": "text/x-moz-place", "title": "In", "uri": "https://in.example/"},
      {"type": "text/x-moz-place", "title": "Query", "uri": "place:sort=8"}]}]},
  {"title": "toolbar", "root": "toolbarFolder", "children": [
    {"type": "text/x-moz-place", "title": "Bar", "uri": "https://bar.example/"}]}, 5]})json";

/// A backup that claims to hold so many bytes.
QByteArray packed(const QByteArray& text, qsizetype claimed) {
  QByteArray block(LZ4_compressBound(static_cast<int>(text.size())), Qt::Uninitialized);
  block.truncate(LZ4_compress_default(text.constData(), block.data(), static_cast<int>(text.size()),
                                      static_cast<int>(block.size())));
  QByteArray head("mozLz40\0    ", 12);
  qToLittleEndian(static_cast<quint32>(claimed), head.data() + 8);
  return head + block;
}
QByteArray packed(const QByteArray& text) { return packed(text, text.size()); }

TEST(BookmarkTextTest, UnpacksBackupsAndRefusesDamagedOnes) {
  const QByteArray whole = packed(kFirefox);
  EXPECT_EQ(summary(BookmarkText::fromFirefox(whole)), "Bar[]bar.example Menu[]menu.example In[Kept]in.example");
  const qsizetype size = QByteArray(kFirefox).size();
  for (const QByteArray& broken :
       {packed(kFirefox, size - 1), packed(kFirefox, size + 1), packed(kFirefox, 0), packed(kFirefox, 0xffffffff),
        packed(kFirefox, BookmarkText::mostUnpacked), whole.first(whole.size() / 2), whole.first(12), whole.first(5),
        QByteArray(kFirefox), packed("[1, 2")})
    EXPECT_TRUE(BookmarkText::fromFirefox(broken).isEmpty());
}

TEST(BookmarkTextTest, ReadsBrowsersFilesAndNothingThatWouldRun) {
  const QList<Bookmark> list = BookmarkText::fromChromium(kChromium);
  EXPECT_EQ(summary(list), "Two words[]one.example named.example[Deep]named.example Late[]late.example");
  EXPECT_EQ(
      summary(BookmarkText::fromXbel("<xbel><title>Mine</title><bookmark href=\"https://a.example/\"><title>A</title>"
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
  const QString backups =
      u"home/snap/firefox/common/.mozilla/firefox/ab.default/bookmarkbackups/bookmarks-2026-11-%1"_s;
  put(backups.arg(u"09_9_x==.jsonlz4"_s), "old");
  put(backups.arg(u"10_3_y==.jsonlz4"_s), packed(kFirefox));
  EXPECT_EQ(Bookmarks::files(places).size(), 5);

  Bookmarks bookmarks(places, scheduler);
  EXPECT_TRUE(bookmarks.list().isEmpty());
  ASSERT_TRUE(waitFor([&] { return bookmarks.loaded(); }));
  EXPECT_EQ(bookmarks.list().size(), 8) << "an address that two browsers keep counts once";

  put(u"config/chromium/Default/Bookmarks"_s, one);
  ASSERT_TRUE(waitFor([&] { return scheduler.waiting() > 0; }));
  scheduler.advance(FileWatch::kQuiet);
  ASSERT_TRUE(waitFor([&] { return bookmarks.list().first().title == u"N"_s; }));

  put(backups.arg(u"11_1_z==.jsonlz4"_s), packed(R"({"children": [{"children": [{"uri": "https://new.example/"}]}]})"));
  ASSERT_TRUE(waitFor([&] { return scheduler.waiting() > 0; }));
  scheduler.advance(FileWatch::kQuiet);
  ASSERT_TRUE(waitFor([&] { return summary(bookmarks.list()).find("new.example") != std::string::npos; }));
}

}  // namespace
}  // namespace tarnwick
