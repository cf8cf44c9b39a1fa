#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/file.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "base/BuildSettings.h"
#include "base/DurableFile.h"
#include "base/FileDescriptor.h"
#include "base/SmallFile.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using testing::EndsWith;
using testing::HasSubstr;

class Files : public FolderTest {
 protected:
  /// Three names without a file that has content.
  void makeOddities() const {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
    ASSERT_EQ(::mkfifo(encoded(u"pipe"_s).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(u"loop"_s, at(u"loop"_s)));
  }
  static std::string because(int reason) { return std::string(": ") + std::strerror(reason) + "."; }
};

TEST_F(Files, AreReplacedWithTheModeThatIsAskedFor) {
  const mode_t mask = ::umask(0027);
  const struct {
    std::optional<mode_t> before;
    std::optional<unsigned> wanted;
    mode_t after;
  } cases[] = {{{}, {}, 0640}, {{}, 0600U, 0600}, {0604, {}, 0604}, {0644, 0600U, 0600}, {0600, 0666U, 0666}};
  for (const auto write : {&DurableFile::writeAtomically, &DurableFile::writeQuickly}) {
    for (const auto& c : cases) {
      QFile::remove(at(u"f"_s));
      if (c.before) {
        put(u"f"_s, "older and longer");
        setMode(u"f"_s, *c.before);
      }
      write("new", at(u"f"_s), c.wanted);
      EXPECT_EQ(content(u"f"_s), "new");
      EXPECT_EQ(mode(u"f"_s), c.after);
    }
  }
  ::umask(mask);
  EXPECT_EQ(entries(), QStringList{u"f"_s});
}

TEST_F(Files, StayAsTheyWereWhenTheDiskIsFull) {
  put(u"f"_s, "old");
  for (const auto write : {&DurableFile::writeAtomically, &DurableFile::writeQuickly}) {
    std::string failure;
    {
      const AsFullDisk full(1000);
      failure = failureOf([&] { write(QByteArray(5000, 'x'), at(u"f"_s), {}); });
    }
    EXPECT_EQ(failure, "The file “f” could not be written" + because(EFBIG));
    EXPECT_EQ(content(u"f"_s), "old");
    EXPECT_EQ(entries(), QStringList{u"f"_s});
  }
}

TEST_F(Files, BehindLinksAreReplacedAndTheLinksStay) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"real"_s));
  ASSERT_TRUE(QFile::link(u"real/f"_s, at(u"direct"_s)));
  ASSERT_TRUE(QFile::link(u"direct"_s, at(u"twice"_s)));
  for (const QByteArray data : {"dangling", "existing"}) {
    DurableFile::write(data, at(u"twice"_s));
    EXPECT_EQ(content(u"real/f"_s), data.toStdString());
    EXPECT_TRUE(QFileInfo(at(u"direct"_s)).isSymLink() && QFileInfo(at(u"twice"_s)).isSymLink());
  }
}

TEST_F(Files, ThatAnotherProgramChangedAreLeftToIt) {
  put(u"note"_s, "one");
  const auto before = DurableFile::stamp(at(u"note"_s));
  ASSERT_TRUE(before);
  put(u"note"_s, "another");
  EXPECT_FALSE(DurableFile::replace("ours", at(u"note"_s), *before));
  EXPECT_EQ(content(u"note"_s), "another");
  EXPECT_TRUE(DurableFile::replace("ours", at(u"note"_s), *DurableFile::stamp(at(u"note"_s))));
  EXPECT_EQ(content(u"note"_s), "ours");
  EXPECT_EQ(entries(), QStringList{u"note"_s}) << "what was not used is gone";
}

TEST_F(Files, OnlyTakeThePlaceOfFiles) {
  makeOddities();
  const QStringList before = entries();
  const std::pair<QString, int> cases[] = {
      {u"folder"_s, EISDIR}, {u"pipe"_s, EINVAL}, {u"loop"_s, ELOOP}, {u"missing/f"_s, ENOENT}};
  for (const auto& [name, reason] : cases) {
    EXPECT_THAT(failureOf([&, path = at(name)] { DurableFile::writeAtomically("x", path); }),
                EndsWith(because(reason)));
  }
  EXPECT_EQ(entries(), before);
}

TEST_F(Files, ForJournalsMakeTheirFoldersAndFailWhenTheDiskCannotConfirm) {
  DurableFile::write("journal", at(u"a/b/c.json"_s));
  EXPECT_EQ(content(u"a/b/c.json"_s), "journal");
  EXPECT_EQ(mode(u"a/b/c.json"_s), 0600);
  EXPECT_EQ(mode(u"a/b"_s), 0700);
  EXPECT_EQ(failureOf([&] { DurableFile::write("x", at(u"a/b/c.json/d"_s)); }),
            "The folder “c.json” could not be created" + because(ENOTDIR));

  const AsPlainUser user(folder_.path());
  // A folder that can be entered and changed but not opened can't be synchronised either.
  setMode(u"."_s, 0300);
  EXPECT_EQ(failureOf([&] { DurableFile::write("x", at(u"f"_s)); }),
            "The file “f” could not be written" + because(EIO));
  setMode(u"."_s, 0500);
  EXPECT_THAT(failureOf([&] { DurableFile::write("y", at(u"f"_s)); }), EndsWith(because(EACCES)));
  setMode(u"."_s, 0700);
  EXPECT_EQ(content(u"f"_s), "x");
  EXPECT_EQ(entries(), (QStringList{u"a"_s, u"f"_s}));
}

TEST_F(Files, ThatKilledWritesLeftBehindAreRemovedAndNothingElse) {
  const QStringList others{u".tarnwick-xyz.tmp"_s, u".tarnwick-.tmp"_s, u".tarnwick-12.tmp.old"_s,
                           u".tarnwick-0123456789abcdef0.tmp"_s, u"tarnwick-12.tmp"_s};
  for (const QString& name : others) put(name, "x");
  for (const auto& name : {u".tarnwick-12ab.tmp"_s, u".tarnwick-0123456789abcdef.tmp"_s}) put(name, "left");
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u".tarnwick-1.tmp"_s));
  ASSERT_TRUE(QFile::link(at(u"real"_s), at(u".tarnwick-2.tmp"_s)));
  ASSERT_EQ(::mkfifo(encoded(u".tarnwick-3.tmp"_s).constData(), 0600), 0);
  put(u".tarnwick-4.tmp"_s, "being written");
  const FileDescriptor writing(::open(encoded(u".tarnwick-4.tmp"_s).constData(), O_WRONLY));
  ASSERT_EQ(::flock(writing.number(), LOCK_EX), 0);
  put(u"real/.tarnwick-5.tmp"_s, "left behind a link");
  ASSERT_TRUE(QFile::link(u"real/f"_s, at(u"f"_s)));
  DurableFile::removeLeftovers(at(u"f"_s));
  QStringList expected = others;
  expected << u".tarnwick-1.tmp"_s << u".tarnwick-2.tmp"_s << u".tarnwick-3.tmp"_s << u".tarnwick-4.tmp"_s << u"f"_s
           << u"real"_s;
  QStringList left = entries();
  left.sort();
  expected.sort();
  EXPECT_EQ(left, expected);
  EXPECT_TRUE(QDir(at(u"real"_s)).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(Files, AreWrittenWhileSomebodyTidiesUp) {
  std::atomic<bool> done = false;
  std::thread tidying([&] {
    while (!done) DurableFile::removeLeftovers(at(u"f"_s));
  });
  std::string failure;
  for (int i = 0; i < 500 && failure.empty(); ++i) {
    failure = failureOf([&] { DurableFile::writeAtomically(QByteArray::number(i), at(u"f"_s)); });
  }
  done = true;
  tidying.join();
  EXPECT_EQ(failure, "");
  EXPECT_EQ(content(u"f"_s), "499");
}

TEST_F(Files, AreReadUpToALimit) {
  put(u"f"_s, "12345");
  makeOddities();
  EXPECT_EQ(SmallFile::read(at(u"f"_s), 5), "12345");
  const std::pair<QString, int> refused[] = {
      {u"f"_s, EFBIG}, {u"folder"_s, EISDIR}, {u"pipe"_s, EINVAL}, {u"missing"_s, ENOENT}};
  for (const auto& [name, reason] : refused) {
    errno = 0;
    EXPECT_EQ(SmallFile::read(at(name), 4), std::nullopt);
    EXPECT_EQ(errno, reason);
  }
  // It says that it is empty, and gives more at every reading.
  const auto status = SmallFile::read(u"/proc/self/status"_s, 1 << 20);
  ASSERT_TRUE(status);
  EXPECT_TRUE(status->startsWith("Name:") && status->contains("Threads:"));
  EXPECT_EQ(SmallFile::read(u"/proc/self/status"_s, 100), std::nullopt);
}

TEST_F(Files, AreReadOrMissingOrUnreadable) {
  makeOddities();
  put(u"f"_s, "data");
  put(u"empty"_s, "");
  put(u"huge"_s, "");
  ASSERT_EQ(::truncate(encoded(u"huge"_s).constData(), off_t{64} * 1024 * 1024 + 1), 0);

  EXPECT_EQ(DurableFile::readIfPresent(at(u"f"_s)), "data");
  EXPECT_EQ(DurableFile::readIfPresent(at(u"empty"_s)), "");
  for (const auto& name : {u"missing"_s, u"missing/f"_s, u"f/below"_s}) {
    EXPECT_EQ(DurableFile::readIfPresent(at(name)), std::nullopt);
    EXPECT_THAT(failureOf([&] { DurableFile::read(at(name)); }), HasSubstr("could not be read"));
  }
  ASSERT_TRUE(QFile::link(at(u"unmounted"_s), at(u"dangling"_s)));
  for (const auto& name : {u"folder"_s, u"pipe"_s, u"loop"_s, u"huge"_s, u"dangling"_s, u"dangling/f"_s}) {
    EXPECT_THAT(failureOf([&] { DurableFile::readIfPresent(at(name)); }), HasSubstr("could not be read"));
  }
}

TEST_F(Files, HoldTheBuildSettings) {
  put(u"build.json"_s, R"({"name": "Other", "number": 5, "none": null})");
  put(u"broken.json"_s, "{");
  EXPECT_EQ(BuildSettings(at(u"build.json"_s)).string(u"name"_s), u"Other"_s);
  for (const auto& name : {u"number"_s, u"none"_s, u"absent"_s}) {
    EXPECT_EQ(BuildSettings(at(u"build.json"_s)).string(name), std::nullopt);
  }
  for (const auto& name : {u"broken.json"_s, u"missing.json"_s}) {
    EXPECT_EQ(BuildSettings(at(name)).string(u"name"_s), std::nullopt);
  }
}

}  // namespace
}  // namespace tarnwick
