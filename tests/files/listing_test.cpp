#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <thread>

#include "base/Background.h"
#include "files/FolderListing.h"
#include "files/FolderStacks.h"
#include "files/ScreenshotFolder.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class ListingTest : public FolderTest {
 protected:
  /// A file whose age is so many minutes.
  void aged(const QString& name, int minutes) const {
    put(name, "x");
    const time_t then = ::time(nullptr) - minutes * 60;
    const utimbuf times{then, then};
    ASSERT_EQ(::utime(encoded(name).constData(), &times), 0);
  }
  static std::string names(const FolderContents& contents) {
    QStringList list;
    for (const FolderEntry& entry : contents.entries) list << entry.name;
    return list.join(u' ').toStdString();
  }
  FolderContents read(FolderRequest request) const {
    request.folder = folder_.path();
    return FolderReading::read(request);
  }
};

TEST_F(ListingTest, SortsAsAskedAndTellsHowManyThereAre) {
  aged(u"b10.png"_s, 3);
  aged(u"B2.jpg"_s, 1);
  aged(u"old.txt"_s, 60);
  aged(u".hidden"_s, 0);
  aged(u"zoo/inside"_s, 0);
  ASSERT_EQ(::symlink("nowhere", encoded(u"broken"_s).constData()), 0);

  const FolderContents byName = read({{}, FolderOrder::Name});
  EXPECT_EQ(names(byName), "zoo B2.jpg b10.png broken old.txt");
  EXPECT_TRUE(byName.entries.first().isFolder);
  EXPECT_EQ(byName.entries[1].size, 1);

  put(u"a.txt"_s, "four");
  EXPECT_EQ(names(read({{}, FolderOrder::Kind})), "zoo broken B2.jpg b10.png a.txt old.txt");
  EXPECT_EQ(names(read({{}, FolderOrder::Size})), "zoo a.txt B2.jpg b10.png old.txt broken");

  FolderRequest pictures{{}, FolderOrder::Newest, true};
  EXPECT_EQ(names(read(pictures)), "B2.jpg b10.png");
  pictures.most = 1;
  EXPECT_EQ(names(read(pictures)), "B2.jpg");
  EXPECT_EQ(read(pictures).total, 2);
}

TEST_F(ListingTest, SaysWhyAFolderShowsNothing) {
  put(u"file"_s, "x");
  put(u"locked/secret"_s, "x");
  setMode(u"locked"_s, 0);
  {
    const AsPlainUser plain(folder_.path());
    const auto problem = [&](const QString& name) { return FolderReading::read({at(name)}).problem.toStdString(); };
    EXPECT_EQ(problem(u"gone"_s), "This folder no longer exists.");
    EXPECT_EQ(problem(u"file"_s), "This is not a folder.");
    EXPECT_EQ(problem(u"locked"_s), "You do not have permission to open this folder.");
  }
  setMode(u"locked"_s, 0700);
}

TEST_F(ListingTest, AHugeFolderIsCutAndCanBeLeft) {
  constexpr int many = 50'000;
  for (int i = 0; i < many; ++i) ASSERT_EQ(::mknod(encoded(u"file %1"_s.arg(i)).constData(), S_IFREG | 0600, 0), 0);
  const FolderContents some = read({{}, FolderOrder::Name, false, 20});
  EXPECT_EQ(some.entries.size(), 20);
  EXPECT_EQ(some.total, many);
  EXPECT_EQ(some.entries.last().name, u"file 19"_s);
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(FolderReading::read({folder_.path()}, stop.get_token()).entries.size(), 0);
}

TEST_F(ListingTest, WhatVanishesWhileItIsListedIsLeftOut) {
  constexpr int files = 3000;
  for (int i = 0; i < files; ++i) put(u"file %1"_s.arg(i), {});
  const std::jthread sweeper([this] {
    for (int i = files; i-- > 0;) ::unlink(encoded(u"file %1"_s.arg(i)).constData());
  });
  FolderContents contents;
  do {
    contents = read({});
    EXPECT_TRUE(contents.problem.isEmpty());
    EXPECT_TRUE(contents.entries.size() <= 200 && contents.entries.size() <= contents.total);
  } while (contents.total > 0);
}

TEST_F(ListingTest, FollowsTheFolderAndOnlyTheLatestRequest) {
  test::TestScheduler scheduler;
  put(u"one/a"_s, {});
  put(u"two/b"_s, {});
  FolderListing listing(scheduler);
  int changes = 0;
  QObject::connect(&listing, &FolderListing::changed, [&] { ++changes; });
  listing.show({at(u"one"_s)});
  listing.show({at(u"two"_s)});
  ASSERT_TRUE(waitFor([&] { return listing.loaded(); }));
  EXPECT_EQ(names(listing.contents()), "b");
  EXPECT_EQ(changes, 1);

  put(u"two/c"_s, {});
  ASSERT_TRUE(waitFor([&] { return scheduler.waiting() > 0; }));
  scheduler.advance(FileWatch::kQuiet);
  ASSERT_TRUE(waitFor([&] { return changes == 2; }));
  EXPECT_EQ(listing.contents().total, 2);
}

TEST_F(ListingTest, AnAnswerFindsNobodyWhoHasGone) {
  test::TestScheduler scheduler;
  for (int i = 0; i < 20; ++i) {
    FolderListing listing(scheduler);
    listing.show({folder_.path()});
  }
  bool turned = false;
  Background::run(Background::Lane::Reading, [&] { Background::answer([&] { turned = true; }); });
  EXPECT_TRUE(waitFor([&] { return turned; }));
}

TEST_F(ListingTest, ScreenshotsAreFoundWhereTheyWillBe) {
  test::TestScheduler scheduler;
  ScreenshotFolder shots(folder_.path(), scheduler);
  EXPECT_TRUE(shots.newest().isEmpty());
  EXPECT_EQ(shots.folder(), at(u"Screenshots"_s));
  ASSERT_TRUE(waitFor([&] { return shots.loaded(); }));
  put(u"Screenshots/shot.png"_s, "x");
  ASSERT_TRUE(waitFor([&] { return scheduler.waiting() > 0; }));
  scheduler.advance(FileWatch::kQuiet);
  ASSERT_TRUE(waitFor([&] { return shots.newest().size() == 1; }));

  shots.setChosen(at(u"elsewhere"_s));
  EXPECT_EQ(shots.folder(), at(u"elsewhere"_s));
}

TEST_F(ListingTest, AStackHoldsTheNewestFilesOfItsFolderForAsLongAsItIsShown) {
  for (const int minutes : {1, 2, 3, 4, 5}) aged(u"in/%1"_s.arg(minutes), minutes);
  put(u"in/folder/inside"_s, "x");
  put(u"other/one"_s, "x");
  test::TestScheduler scheduler;
  FolderStacks stacks(scheduler);
  const auto named = [&](const QString& folder) {
    QStringList found;
    for (const FolderEntry& entry : stacks.newest(folder)) found << entry.name;
    return found.join(u' ').toStdString();
  };
  EXPECT_EQ(named(at(u"in"_s)), "") << "nothing is known yet";
  ASSERT_TRUE(waitFor([&] { return named(at(u"in"_s)) == "1 2 3"; }));
  ASSERT_TRUE(waitFor([&] { return named(at(u"other"_s)) == "one"; }));
  aged(u"in/new"_s, 0);
  ASSERT_TRUE(waitFor([&] { return scheduler.waiting() > 0; }));
  scheduler.advance(FileWatch::kQuiet);
  ASSERT_TRUE(waitFor([&] { return named(at(u"in"_s)) == "new 1 2"; }));
  EXPECT_EQ(named({}), "");

  stacks.keep({at(u"other"_s)});
  EXPECT_EQ(named(at(u"other"_s)), "one");
  EXPECT_EQ(named(at(u"in"_s)), "") << "it is read anew";
}

}  // namespace
}  // namespace tarnwick
