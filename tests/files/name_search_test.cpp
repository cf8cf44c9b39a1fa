#include "files/NameSearch.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include "files/NameWalk.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class NameSearchTest : public FolderTest {
 protected:
  QString home(const QString& name) const { return at(u"home/"_s + name); }
  /// A file that was changed so many seconds after the epoch.
  void make(const QString& name, time_t changed) const {
    put(u"home/"_s + name, "x");
    const timeval times[] = {{changed, 0}, {changed, 0}};
    ASSERT_EQ(::utimes(QFile::encodeName(home(name)).constData(), times), 0);
  }
  std::unique_ptr<NameIndex> indexed() const {
    const QByteArray root = QFile::encodeName(at(u"home"_s));
    put(u"names"_s, NameWalk::read({.root = root}).value_or(NameWalk::Result()).file);
    return NameIndex::open(at(u"names"_s), root);
  }
  static std::string names(const QList<FolderEntry>& entries) {
    QStringList names;
    for (const FolderEntry& entry : entries) names << entry.name;
    return names.join(u' ').toStdString();
  }
};

TEST_F(NameSearchTest, OrdersByWhatIsOnTheDiskNow) {
  make(u"a/report 1"_s, 100);
  make(u"b/report 2"_s, 200);
  make(u"report 3"_s, 300);
  make(u"report 4"_s, 400);
  const auto index = indexed();
  ASSERT_TRUE(index);
  EXPECT_EQ(names(NameSearch::newest(*index, u"report"_s, {}, 25)), "report 4 report 3 report 2 report 1");
  make(u"a/report 1"_s, 500);  // Saved.
  ASSERT_TRUE(QFile::remove(home(u"report 4"_s)));
  make(u"report 5"_s, 600);  // The index knows nothing of it.
  const QStringList recent{home(u"report 5"_s), home(u"a/report 1"_s), home(u"report 4"_s), u"/elsewhere/report"_s};
  const auto found = NameSearch::newest(*index, u"REPORT"_s, recent, 25);
  EXPECT_EQ(names(found), "report 5 report 1 report 3 report 2");
  EXPECT_EQ(found[1].path, home(u"a/report 1"_s));
  EXPECT_EQ(names(NameSearch::newest(*index, u"report"_s, recent, 2)), "report 5 report 1");
  EXPECT_EQ(names(NameSearch::newest(*index, {}, recent, 2)), "");
}

TEST_F(NameSearchTest, LooksAtWhatWasOpenLatelyBeforeAllElse) {
  for (int i = 0; i < 450; ++i) make(u"x%1"_s.arg(i), 1'000 + i);
  const auto index = indexed();
  ASSERT_TRUE(index);
  make(u"x3"_s, 9'000);  // Too old for the index to bring it in.
  EXPECT_EQ(names(NameSearch::newest(*index, u"x"_s, {}, 1)), "x449");
  EXPECT_EQ(names(NameSearch::newest(*index, u"x"_s, {home(u"x3"_s)}, 2)), "x3 x449");
  EXPECT_EQ(NameSearch::newest(*index, u"x"_s, {}, 1'000).size(), NameSearch::kMostCandidates);
}

TEST_F(NameSearchTest, LeavesHiddenThingsToThoseWhoAskForThem) {
  make(u".config/x.conf"_s, 1);
  const auto index = indexed();
  ASSERT_TRUE(index);
  const QStringList recent{home(u".config/x.conf"_s)};
  EXPECT_EQ(names(NameSearch::newest(*index, u"x"_s, recent, 9)), "");
  EXPECT_EQ(names(NameSearch::newest(*index, u".conf"_s, {}, 9)), ".config x.conf");
  EXPECT_EQ(NameSearch::newest(*index, u".config"_s, {}, 9).value(0).isFolder, true);
}

}  // namespace
}  // namespace tarnwick
