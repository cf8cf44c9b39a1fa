#include "files/NameIndexKeeper.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <atomic>

#include "files/NameSearch.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class NameIndexKeeperTest : public FolderTest {
 protected:
  /// Asked on another thread.
  struct Power {
    std::atomic<bool> isBattery = false;
    std::atomic<int> asked = 0;
  };
  void SetUp() override {
    make(u"a/one.txt"_s);
    make(u"b/two.txt"_s);
    watchesBefore_ = watches();
  }
  QString file() const { return at(u"cache/deep/names"_s); }
  QByteArray root() const { return encoded(u"home"_s); }
  void make(const QString& name) const { put(u"home/"_s + name, "x"); }
  void date(const QString& name, time_t changed) const {
    const timeval times[] = {{changed, 0}, {changed, 0}};
    ASSERT_EQ(::utimes(encoded(u"home/"_s + name).constData(), times), 0);
  }
  std::unique_ptr<NameIndexKeeper> keeper(const QString& path) {
    return std::make_unique<NameIndexKeeper>(path, root(), clock_, [power = power_] {
      ++power->asked;
      return power->isBattery.load();
    });
  }
  std::unique_ptr<NameIndexKeeper> keeper() { return keeper(file()); }
  static void rest(const NameIndexKeeper& keeper) {
    ASSERT_TRUE(waitFor([&] { return !keeper.isBusy(); }));
  }
  /// Opens the bar and waits until nothing is left to do.
  static void open(NameIndexKeeper& keeper) {
    keeper.opened();
    rest(keeper);
  }
  static void openAgain(NameIndexKeeper& keeper) {
    keeper.closed();
    open(keeper);
  }
  static std::string found(const NameIndexKeeper& keeper, const QString& text) {
    const auto names = keeper.names()->get();
    QStringList found;
    if (names)
      for (const auto& entry : NameSearch::newest(*names->index, text, keeper.changes(), 25)) found << entry.name;
    found.sort();
    return found.join(u' ').toStdString();
  }
  /// Whether a map of the index is in this process.
  bool isMapped() const {
    QFile maps(u"/proc/self/maps"_s);
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(QFile::encodeName(file()));
  }
  static qsizetype watches() {
    qsizetype count = 0;
    const QDir folder(u"/proc/self/fdinfo"_s);
    for (const QString& name : folder.entryList(QDir::Files)) {
      QFile file(folder.filePath(name));
      if (file.open(QIODevice::ReadOnly)) count += file.readAll().count("inotify wd:");
    }
    return count;
  }

  test::TestScheduler clock_{QDateTime::currentDateTime()};
  std::shared_ptr<Power> power_ = std::make_shared<Power>();
  qsizetype watchesBefore_ = 0;
};

TEST_F(NameIndexKeeperTest, BuildsAtTheFirstOpeningAndLeavesNothingBehind) {
  auto kept = keeper();
  EXPECT_FALSE(kept->isBusy());
  EXPECT_EQ(found(*kept, u"txt"_s), "");
  QList<bool> growing;
  QObject::connect(kept.get(), &NameIndexKeeper::growingChanged, kept.get(), [&] { growing << kept->isGrowing(); });
  open(*kept);
  EXPECT_EQ(growing, (QList{true, false}));
  EXPECT_EQ(found(*kept, u"txt"_s), "one.txt two.txt");
  EXPECT_EQ(mode(u"cache/deep/names"_s), 0600U);
  EXPECT_TRUE(isMapped());
  EXPECT_EQ(kept->watched(), 3);
  EXPECT_EQ(watches(), watchesBefore_ + 3);

  kept->closed();
  EXPECT_EQ(kept->watched(), 0);
  EXPECT_TRUE(waitFor([&] { return !isMapped() && watches() == watchesBefore_; }));
  EXPECT_EQ(found(*kept, u"txt"_s), "");
  EXPECT_EQ(clock_.waiting(), 0);
  // Another one finds it there.
  auto later = keeper();
  later->opened();
  EXPECT_EQ(found(*later, u"txt"_s), "one.txt two.txt");
  EXPECT_FALSE(later->isGrowing());
}

TEST_F(NameIndexKeeperTest, IsBroughtUpToDateOnceAMinute) {
  auto kept = keeper();
  open(*kept);
  kept->closed();
  make(u"a/new.txt"_s);
  clock_.advance(NameIndexKeeper::kBetweenWalks - 1);
  open(*kept);
  EXPECT_EQ(found(*kept, u"new"_s), "");
  clock_.advance(2);
  openAgain(*kept);
  EXPECT_EQ(found(*kept, u"new"_s), "new.txt");
}

TEST_F(NameIndexKeeperTest, SeesWhatComesWhileItIsOpen) {
  make(u"node_modules/m"_s);
  make(u".hidden/h"_s);
  auto kept = keeper();
  open(*kept);
  make(u"a/fresh.txt"_s);
  make(u"node_modules/fresh"_s);
  make(u".hidden/fresh"_s);
  make(u"b/fresh too"_s);
  ASSERT_TRUE(waitFor([&] { return kept->changes().contains(at(u"home/b/fresh too"_s)); }));
  EXPECT_EQ(kept->changes(), (QStringList{at(u"home/b/fresh too"_s), at(u"home/a/fresh.txt"_s)}));
  EXPECT_EQ(found(*kept, u"fresh"_s), "fresh too fresh.txt");
  for (int i = 0; i < 300; ++i) make(u"a/many %1"_s.arg(i));
  make(u"b/last"_s);
  ASSERT_TRUE(waitFor([&] { return kept->changes().contains(at(u"home/b/last"_s)); }));
  EXPECT_EQ(kept->changes().size(), NameIndexKeeper::kMostChanges);
  kept->closed();
  EXPECT_TRUE(kept->changes().isEmpty());
}

TEST_F(NameIndexKeeperTest, GoesOnAfterItWasClosedInTheMiddle) {
  for (int i = 0; i < 200; ++i) make(u"f%1/g/x%1"_s.arg(i));
  auto kept = keeper();
  for (int i = 0; i < 10; ++i) {
    // Wherever the walk is by now, it is ended and nothing is left of it but what it wrote.
    kept->opened();
    ASSERT_TRUE(waitFor([&] { return kept->isGrowing() || !kept->isBusy(); }));
    kept->closed();
    EXPECT_FALSE(kept->isGrowing());
    if (i % 2 == 0) rest(*kept);
    EXPECT_EQ(found(*kept, u"txt"_s), "");
  }
  open(*kept);
  EXPECT_EQ(found(*kept, u"txt"_s), "one.txt two.txt");
  const auto names = kept->names()->get();
  ASSERT_TRUE(names);
  EXPECT_FALSE(kept->isGrowing());
  EXPECT_TRUE(names->index->isWhole());
  EXPECT_EQ(names->index->size(), 605);
}

TEST_F(NameIndexKeeperTest, LooksAtFewFoldersOnBattery) {
  const qint64 now = clock_.now().toSecsSinceEpoch();
  constexpr qint64 kDay = 24 * 60 * 60;
  date(u"a"_s, now - 29 * kDay);
  date(u"b"_s, now - 31 * kDay);
  power_->isBattery = true;
  auto kept = keeper();
  open(*kept);  // The first one is made whole.
  EXPECT_EQ(found(*kept, u"txt"_s), "one.txt two.txt");
  make(u"a/near"_s);
  make(u"b/far"_s);
  clock_.advance(NameIndexKeeper::kBetweenWalks);
  openAgain(*kept);
  EXPECT_EQ(found(*kept, u"near"_s), "near");
  EXPECT_EQ(found(*kept, u"far"_s), "");
  power_->isBattery = false;
  clock_.advance(NameIndexKeeper::kBetweenWalks);
  openAgain(*kept);
  EXPECT_EQ(found(*kept, u"far"_s), "far");
  EXPECT_EQ(power_->asked, 3);
}

TEST_F(NameIndexKeeperTest, IsRemovedWhenItIsSwitchedOff) {
  auto kept = keeper();
  open(*kept);
  kept->setOn(false);
  rest(*kept);
  EXPECT_FALSE(QFile::exists(file()));
  EXPECT_EQ(kept->watched(), 0);
  openAgain(*kept);
  EXPECT_FALSE(QFile::exists(file()));
  kept->setOn(true);  // While the bar is open.
  rest(*kept);
  EXPECT_EQ(found(*kept, u"txt"_s), "one.txt two.txt");
  // There and back at once.
  clock_.advance(NameIndexKeeper::kBetweenWalks);
  kept->closed();
  kept->opened();
  kept->setOn(false);
  kept->setOn(true);
  rest(*kept);
  EXPECT_EQ(found(*kept, u"txt"_s), "one.txt two.txt");
  // While it is built.
  put(u"cache/deep/names"_s, "damaged");
  auto other = keeper();
  other->opened();
  other->setOn(false);
  rest(*other);
  EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(NameIndexKeeperTest, MakesADamagedFileAnew) {
  for (const auto& folder : {u"a"_s, u"b"_s, u""_s}) date(folder, 1'000'000);
  auto kept = keeper();
  open(*kept);
  const QByteArray whole = QByteArray::fromStdString(content(u"cache/deep/names"_s));
  QByteArray changed = whole;
  changed[changed.size() - 3] = 'Q';  // In the text of a name, where nothing but the sum tells.
  for (const QByteArray& damaged : {QByteArray(), whole.first(40), whole + 'x', changed, QByteArray(5'000, '\0')}) {
    kept->closed();
    put(u"cache/deep/names"_s, damaged);
    clock_.advance(NameIndexKeeper::kBetweenWalks);
    open(*kept);
    EXPECT_EQ(found(*kept, u"txt"_s), "one.txt two.txt") << damaged.size();
    EXPECT_EQ(content(u"cache/deep/names"_s), whole.toStdString()) << damaged.size();
  }
}

TEST_F(NameIndexKeeperTest, BearsAFileThatCannotBeWritten) {
  put(u"blocked"_s, "a file where a folder has to be");
  auto kept = keeper(at(u"blocked/names"_s));
  open(*kept);
  EXPECT_FALSE(kept->isGrowing());
  EXPECT_EQ(found(*kept, u"txt"_s), "");
  NameIndexKeeper nowhere(file(), encoded(u"nowhere"_s), clock_);
  open(nowhere);
  EXPECT_FALSE(nowhere.isGrowing());
}

TEST_F(NameIndexKeeperTest, MayGoWhileItWorks) {
  for (int i = 0; i < 20; ++i) {
    auto kept = keeper();
    kept->opened();
  }
  auto last = keeper();
  open(*last);
  EXPECT_EQ(found(*last, u"txt"_s), "one.txt two.txt");
}

}  // namespace
}  // namespace tarnwick
