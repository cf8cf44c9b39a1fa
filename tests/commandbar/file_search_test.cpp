#include "commandbar/IndexedFileSearch.h"
#include "files/NameWalk.h"
#include "support/FileTest.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class IndexedFileSearchTest : public FolderTest {
 protected:
  QByteArray root() const { return encoded(u"home"_s); }
  void index() const { put(u"names"_s, NameWalk::read({.root = root()}).value_or(NameWalk::Result()).file); }
};

TEST_F(IndexedFileSearchTest, AnswersTheLatestQueryAlone) {
  put(u"home/a/Report.pdf"_s, "x");
  put(u"home/notes"_s, "x");
  index();
  IndexedFileSearch search(at(u"names"_s), root());
  int outdated = 0;
  std::optional<QList<FoundFile>> found;
  search.start(u"notes"_s, [&](const auto&) { ++outdated; });
  search.start(u"report"_s, [&](const auto& files) { found = files; });
  ASSERT_TRUE(waitFor([&] { return found.has_value(); }));
  EXPECT_EQ(*found, (QList{FoundFile{at(u"home/a/Report.pdf"_s), u"Report.pdf"_s}}));

  search.start(u"notes"_s, [&](const auto&) { ++outdated; });
  search.stop();
  found.reset();
  search.start(u"x"_s, [&](const auto& files) { found = files; });
  ASSERT_TRUE(waitFor([&] { return found.has_value(); }));
  EXPECT_EQ(*found, QList<FoundFile>());
  EXPECT_EQ(outdated, 0);
}

TEST_F(IndexedFileSearchTest, FindsNothingWithoutAnIndex) {
  put(u"names"_s, "damaged");
  for (const auto& name : {u"names"_s, u"nowhere"_s}) {
    IndexedFileSearch search(at(name), root());
    std::optional<QList<FoundFile>> found;
    search.start(u"a"_s, [&](const auto& files) { found = files; });
    ASSERT_TRUE(waitFor([&] { return found.has_value(); }));
    EXPECT_TRUE(found->isEmpty());
  }
}

}  // namespace
}  // namespace tarnwick
