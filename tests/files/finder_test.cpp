#include "files/FileFinder.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class FinderTest : public FolderTest {
 protected:
  static std::string names(const QList<FolderEntry>& found) {
    QStringList all;
    for (const FolderEntry& entry : found) all << entry.name;
    return all.join(u' ').toStdString();
  }
};

TEST_F(FinderTest, FindsByNameTheNearestFirst) {
  put(u"deep/er/Report.txt"_s, {});
  put(u"my report.txt"_s, {});
  put(u"Résumé.odt"_s, {});
  put(u".secret/report.txt"_s, {});
  put(u"node_modules/report.js"_s, {});
  QDir().mkpath(at(u"reports"_s));
  ASSERT_EQ(::symlink(".", encoded(u"loop"_s).constData()), 0);
  const auto find = [&](const QString& text) { return names(FileFinder::search(folder_.path(), text)); };
  EXPECT_EQ(find(u"REPORT"_s), "reports Report.txt my report.txt");
  EXPECT_EQ(find(u"resume"_s), "Résumé.odt");
  EXPECT_EQ(find(u"nothing"_s), "");
  for (int i = 0; i < 30; ++i) put(u"many %1"_s.arg(i), {});
  EXPECT_EQ(FileFinder::search(folder_.path(), u"many"_s).size(), FileFinder::most);
}

TEST_F(FinderTest, WaitsForTheLastKeyAndForgetsWhatWasAskedBefore) {
  test::TestScheduler scheduler;
  put(u"apple"_s, {});
  put(u"apricot"_s, {});
  FileFinder finder(folder_.path(), scheduler);
  finder.find(u"appl"_s);
  finder.find(u" apri "_s);
  EXPECT_TRUE(finder.busy());
  EXPECT_EQ(scheduler.waiting(), 1);
  scheduler.advance(FileFinder::kPatience);
  ASSERT_TRUE(waitFor([&] { return !finder.busy(); }));
  EXPECT_EQ(names(finder.found()), "apricot");
  finder.find(u"a"_s);
  EXPECT_FALSE(finder.busy());
  EXPECT_TRUE(finder.found().isEmpty());
}

}  // namespace
}  // namespace tarnwick
