#include "commandbar/IndexedFileSearch.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class IndexedFileSearchTest : public FolderTest {
 protected:
  void SetUp() override {
    put(u"home/a/Report.pdf"_s, "x");
    put(u"home/notes"_s, "x");
  }
  void build() {
    search_.opened();
    ASSERT_TRUE(waitFor([&] { return !keeper_.isBusy(); }));
  }
  QList<FoundFile> found(const QString& query) {
    std::optional<QList<FoundFile>> found;
    search_.start(query, [&](const auto& files) { found = files; });
    EXPECT_TRUE(waitFor([&] { return found.has_value(); }));
    return found.value_or(QList<FoundFile>());
  }

  test::TestScheduler clock_;
  NameIndexKeeper keeper_{at(u"names"_s), encoded(u"home"_s), clock_};
  QStringList recent_;
  IndexedFileSearch search_{keeper_, [this] { return recent_; }};
};

TEST_F(IndexedFileSearchTest, AnswersTheLatestQueryAlone) {
  build();
  int outdated = 0;
  search_.start(u"notes"_s, [&](const auto&) { ++outdated; });
  EXPECT_EQ(found(u"report"_s), (QList{FoundFile{at(u"home/a/Report.pdf"_s), u"Report.pdf"_s}}));
  search_.start(u"notes"_s, [&](const auto&) { ++outdated; });
  search_.stop();
  EXPECT_EQ(found(u"x"_s), QList<FoundFile>());
  search_.start(u"notes"_s, [&](const auto&) { ++outdated; });
  search_.closed();
  EXPECT_EQ(found(u"notes"_s), QList<FoundFile>());
  EXPECT_EQ(outdated, 0);
}

TEST_F(IndexedFileSearchTest, TellsFoldersFromFiles) {
  put(u"home/report of may/page"_s, "x");
  build();
  QStringList told;
  for (const FoundFile& file : found(u"report"_s)) told << file.name + (file.isFolder ? u"/"_s : QString());
  told.sort();
  EXPECT_EQ(told, (QStringList{u"Report.pdf"_s, u"report of may/"_s}));
}

TEST_F(IndexedFileSearchTest, FindsWhatWasOpenLatelyToo) {
  build();
  search_.closed();
  put(u"home/notes of today"_s, "x");
  recent_ << at(u"home/notes of today"_s);
  build();  // Within the same minute, so the index does not know it.
  EXPECT_EQ(found(u"today"_s).size(), 1);
  recent_.clear();
  EXPECT_EQ(found(u"today"_s).size(), 0);
  put(u"home/notes now"_s, "x");
  ASSERT_TRUE(waitFor([&] { return !keeper_.changes().isEmpty(); }));
  EXPECT_EQ(found(u"now"_s).size(), 1);
}

TEST_F(IndexedFileSearchTest, FindsNothingWithoutAnIndex) {
  EXPECT_TRUE(found(u"notes"_s).isEmpty());
  build();
  search_.setOn(false);
  EXPECT_TRUE(found(u"notes"_s).isEmpty());
  ASSERT_TRUE(waitFor([&] { return !keeper_.isBusy(); }));
  EXPECT_FALSE(QFile::exists(at(u"names"_s)));
  search_.setOn(true);
  ASSERT_TRUE(waitFor([&] { return !keeper_.isBusy(); }));
  EXPECT_EQ(found(u"notes"_s).size(), 1);
}

}  // namespace
}  // namespace tarnwick
