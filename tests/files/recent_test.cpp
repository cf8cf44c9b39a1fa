#include "files/RecentFiles.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QByteArray bookmark(const QByteArray& address, const QByteArray& visited, const QByteArray& inside = {}) {
  return "<bookmark href=\"" + address + "\" added=\"2026-01-01T00:00:00Z\" visited=\"" + visited + "\">" + inside +
         "</bookmark>";
}
QByteArray list(const QByteArray& bookmarks) {
  return "<?xml version=\"1.0\"?><xbel version=\"1.0\" xmlns:b=\"http://example.org/b\">" + bookmarks + "</xbel>";
}

std::string paths(const QByteArray& text) {
  QStringList all;
  for (const RecentFile& file : RecentFiles::parse(text)) all << file.path;
  return all.join(u' ').toStdString();
}

TEST(RecentFilesTest, ReadsWhatMayBeShown) {
  const QByteArray old = bookmark("file:///old.txt", "2026-02-01T10:00:00Z");
  const QByteArray fresh = bookmark("file:///with%20blank%20%C3%A4.txt", "2026-03-01T10:00:00.123456Z");
  const QByteArray again = bookmark("file:///old.txt", "2026-04-01T10:00:00Z");
  const QByteArray hidden =
      bookmark("file:///private.txt", "2026-05-01T10:00:00Z", "<info><metadata><b:private/></metadata></info>");
  struct Case {
    QByteArray text;
    std::string paths;
  };
  const std::vector<Case> cases = {
      {list(old + fresh), "/with blank ä.txt /old.txt"},
      {list(old + fresh + again), "/old.txt /with blank ä.txt"},
      {list(hidden + old), "/old.txt"},
      {list(bookmark("https://example.org/a", "2026-02-01T10:00:00Z") + old), "/old.txt"},
      {list(bookmark("file://server/share/x", "2026-02-01T10:00:00Z") + old), "/old.txt"},
      {list("<bookmark href=\"file:///never.txt\"/>" + old), "/old.txt"},
      {list(old + fresh).left(list(old).size() - 7 + 20), "/old.txt"},
      {"<xbel><bookmark", ""},
      {"no list at all", ""},
      {{}, ""},
  };
  for (const Case& each : cases) EXPECT_EQ(paths(each.text), each.paths) << each.text.toStdString();
}

class RecentListTest : public FolderTest {};

TEST_F(RecentListTest, ListsWhatIsStillThereAndFollowsAReplacedList) {
  test::TestScheduler scheduler;
  const auto entry = [&](const QString& name) {
    return bookmark("file://" + at(name).toUtf8(), "2026-02-01T10:00:00Z");
  };
  put(u"a.txt"_s, "a");
  put(u"list"_s, list(entry(u"a.txt"_s) + entry(u"gone.txt"_s)));
  RecentFiles recent(at(u"list"_s), scheduler);
  EXPECT_TRUE(recent.list().isEmpty());
  ASSERT_TRUE(waitFor([&] { return recent.loaded(); }));
  ASSERT_EQ(recent.list().size(), 1);
  EXPECT_EQ(recent.list().first().path, at(u"a.txt"_s));

  for (int round = 0; round < 2; ++round) {
    // As applications do it: another file takes the name.
    put(u"next"_s, list(round == 0 ? QByteArray() : entry(u"a.txt"_s)));
    ASSERT_EQ(::rename(encoded(u"next"_s).constData(), encoded(u"list"_s).constData()), 0);
    ASSERT_TRUE(waitFor([&] { return scheduler.waiting() > 0; })) << round;
    scheduler.advance(FileWatch::kQuiet);
    ASSERT_TRUE(waitFor([&] { return recent.list().size() == round; })) << round;
  }
}

}  // namespace
}  // namespace tarnwick
