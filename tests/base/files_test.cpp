#include <gmock/gmock.h>

#include <cstring>

#include "base/DurableFile.h"
#include "base/FileTestSupport.h"
#include "base/ProgramKeys.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using testing::EndsWith;
using testing::HasSubstr;

class Files : public FolderTest {};

TEST_F(Files, AreReplacedWithTheModeThatIsAskedFor) {
  const mode_t mask = ::umask(0027);
  const struct {
    std::optional<mode_t> before;
    std::optional<unsigned> wanted;
    mode_t after;
  } cases[] = {{{}, {}, 0640}, {{}, 0600U, 0600}, {0604, {}, 0604}, {0644, 0600U, 0600}, {0600, 0666U, 0666}};
  for (const auto& c : cases) {
    QFile::remove(at(u"f"_s));
    if (c.before) {
      put(u"f"_s, "older and longer");
      setMode(u"f"_s, *c.before);
    }
    DurableFile::writeAtomically("new", at(u"f"_s), c.wanted);
    EXPECT_EQ(content(u"f"_s), "new");
    EXPECT_EQ(mode(u"f"_s), c.after);
  }
  ::umask(mask);
  EXPECT_EQ(entries(), QStringList{u"f"_s});
}

TEST_F(Files, StayAsTheyWereWhenTheDiskIsFull) {
  put(u"f"_s, "old");
  std::string failure;
  {
    const AsFullDisk full(1000);
    failure = failureOf([&] { DurableFile::writeAtomically(QByteArray(5000, 'x'), at(u"f"_s)); });
  }
  EXPECT_EQ(failure, std::string("The file “f” could not be written: ") + std::strerror(EFBIG) + ".");
  EXPECT_EQ(content(u"f"_s), "old");
  EXPECT_EQ(entries(), QStringList{u"f"_s});
}

TEST_F(Files, BehindLinksAreReplacedAndTheLinksStay) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"real"_s));
  ASSERT_TRUE(QFile::link(u"real/f"_s, at(u"direct"_s)));
  ASSERT_TRUE(QFile::link(u"direct"_s, at(u"twice"_s)));
  for (const QByteArray data : {"dangling", "existing"}) {
    DurableFile::write(data, at(u"twice"_s));
    EXPECT_EQ(content(u"real/f"_s), data.toStdString());
    EXPECT_TRUE(QFileInfo(at(u"direct"_s)).isSymLink());
    EXPECT_TRUE(QFileInfo(at(u"twice"_s)).isSymLink());
  }
}

TEST_F(Files, OnlyTakeThePlaceOfFiles) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
  ASSERT_EQ(::mkfifo(QFile::encodeName(at(u"pipe"_s)).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link(u"loop"_s, at(u"loop"_s)));
  const QStringList before = entries();
  const struct {
    QString name;
    int reason;
  } cases[] = {{u"folder"_s, EISDIR}, {u"pipe"_s, EINVAL}, {u"loop"_s, ELOOP}, {u"missing/f"_s, ENOENT}};
  for (const auto& c : cases) {
    const auto failure = failureOf([&] { DurableFile::writeAtomically("x", at(c.name)); });
    EXPECT_THAT(failure, EndsWith(std::string(": ") + std::strerror(c.reason) + "."));
  }
  EXPECT_EQ(entries(), before);
}

TEST_F(Files, ForJournalsMakeTheirFolders) {
  DurableFile::write("journal", at(u"a/b/c.json"_s));
  EXPECT_EQ(content(u"a/b/c.json"_s), "journal");
  EXPECT_EQ(mode(u"a/b/c.json"_s), 0600);
  EXPECT_EQ(mode(u"a/b"_s), 0700);

  put(u"file"_s, "");
  EXPECT_EQ(failureOf([&] { DurableFile::write("x", at(u"file/c.json"_s)); }),
            std::string("The folder “file” could not be created: ") + std::strerror(ENOTDIR) + ".");
}

TEST_F(Files, ForJournalsFailWhenTheDiskCannotConfirm) {
  const QString path = at(u"f"_s);
  const AsPlainUser user(folder_.path());
  // A folder that can be entered and changed but not opened can't be synchronised either.
  setMode(u"."_s, 0300);
  EXPECT_EQ(failureOf([&] { DurableFile::write("x", path); }),
            std::string("The file “f” could not be written: ") + std::strerror(EIO) + ".");
  setMode(u"."_s, 0500);
  EXPECT_THAT(failureOf([&] { DurableFile::write("y", path); }), HasSubstr(std::strerror(EACCES)));
  setMode(u"."_s, 0700);
  EXPECT_EQ(content(u"f"_s), "x");
  EXPECT_EQ(entries(), QStringList{u"f"_s});
}

TEST_F(Files, AreReadOrMissingOrUnreadable) {
  put(u"f"_s, "data");
  put(u"empty"_s, "");
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
  ASSERT_EQ(::mkfifo(QFile::encodeName(at(u"pipe"_s)).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link(u"loop"_s, at(u"loop"_s)));
  put(u"huge"_s, "");
  ASSERT_EQ(::truncate(QFile::encodeName(at(u"huge"_s)).constData(), off_t{64} * 1024 * 1024 + 1), 0);

  EXPECT_EQ(DurableFile::readIfPresent(at(u"f"_s)), "data");
  EXPECT_EQ(DurableFile::readIfPresent(at(u"empty"_s)), "");
  for (const auto& name : {u"missing"_s, u"missing/f"_s, u"f/below"_s}) {
    EXPECT_EQ(DurableFile::readIfPresent(at(name)), std::nullopt);
    EXPECT_THAT(failureOf([&] { DurableFile::read(at(name)); }), HasSubstr("could not be read"));
  }
  for (const auto& name : {u"folder"_s, u"pipe"_s, u"loop"_s, u"huge"_s}) {
    EXPECT_THAT(failureOf([&] { DurableFile::readIfPresent(at(name)); }), HasSubstr("could not be read"));
  }
}

TEST_F(Files, HoldTheKeysOfTheProgram) {
  put(u"keys.json"_s, R"({"name": "Other", "number": 5, "none": null})");
  const ProgramKeys keys(at(u"keys.json"_s));
  EXPECT_EQ(keys.string(u"name"_s), u"Other"_s);
  for (const auto& key : {u"number"_s, u"none"_s, u"absent"_s}) EXPECT_EQ(keys.string(key), std::nullopt);

  put(u"broken.json"_s, "{");
  for (const auto& name : {u"broken.json"_s, u"missing.json"_s}) {
    EXPECT_EQ(ProgramKeys(at(name)).string(u"name"_s), std::nullopt);
  }
}

}  // namespace
}  // namespace tarnwick
