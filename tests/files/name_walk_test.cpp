#include "files/NameWalk.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <algorithm>
#include <ctime>

#include "files/NameIndex.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class NameWalkTest : public FolderTest {
 protected:
  QString home() const { return at(u"home"_s); }
  void make(const QString& name) const { put(u"home/"_s + name, "x"); }
  QByteArray root() const { return QFile::encodeName(home()); }
  /// Makes a folder look as if it had been changed so many seconds after the epoch.
  void date(const QString& name, time_t changed) const {
    const timeval times[] = {{changed, 0}, {changed, 0}};
    ASSERT_EQ(::utimes(encoded(u"home/"_s + name).constData(), times), 0);
  }
  std::unique_ptr<NameIndex> kept() const { return NameIndex::open(at(u"names"_s), root()); }
  /// A walk that keeps what it finds.
  NameWalk::Result walk(NameWalk::Request request, const std::stop_token& stop = {}) const {
    const auto known = kept();
    request.root = root();
    request.known = known.get();
    const auto result = NameWalk::read(request, stop);
    EXPECT_TRUE(result);
    if (result && !result->file.isEmpty()) put(u"names"_s, result->file);
    return result.value_or(NameWalk::Result());
  }
  QByteArrayList names() const {
    walk({});
    return keptNames();
  }
  /// Everything that the index names, relative to the home.
  QByteArrayList keptNames() const {
    const auto index = kept();
    EXPECT_TRUE(index);
    QByteArrayList names;
    for (quint32 place = 1; index && place < index->size(); ++place)
      names << index->path(place).mid(home().size() + 1) + (index->traits(place).isHidden ? " (hidden)" : "");
    std::ranges::sort(names);
    return names;
  }
};

TEST_F(NameWalkTest, NamesWhatPeopleLookFor) {
  for (const auto& name :
       {u"a.txt"_s, u"Papers/b.txt"_s, u"Papers/deep/er/c.txt"_s, u".config/d.conf"_s, u"code/.git/objects/e"_s,
        u"code/node_modules/f/g"_s, u"code/__pycache__/h"_s, u".cache/i"_s, u"Papers/.cache/j"_s,
        u".local/share/Trash/files/k"_s, u".Trash-1000/files/l"_s, u"cache/m"_s, u"nocache/n"_s})
    make(name);
  put(u"home/cache/CACHEDIR.TAG"_s, "Signature: 8a477f597d28d172789f06886806bc55\n# of a program");
  put(u"home/nocache/CACHEDIR.TAG"_s, "Signature: none");
  ASSERT_TRUE(QFile::link(home(), home() + u"/loop"_s));
  ASSERT_TRUE(QFile::link(u"nowhere"_s, home() + u"/Papers/dangling"_s));
  ASSERT_EQ(::mkfifo(encoded(u"home/pipe"_s).constData(), 0600), 0);
  EXPECT_EQ(names().join('\n').toStdString(),
            ".Trash-1000 (hidden)\n"
            ".cache (hidden)\n"
            ".config (hidden)\n"
            ".config/d.conf (hidden)\n"
            ".local (hidden)\n"
            ".local/share (hidden)\n"
            ".local/share/Trash (hidden)\n"
            "Papers\n"
            "Papers/.cache (hidden)\n"
            "Papers/.cache/j (hidden)\n"
            "Papers/b.txt\n"
            "Papers/dangling\n"
            "Papers/deep\n"
            "Papers/deep/er\n"
            "Papers/deep/er/c.txt\n"
            "a.txt\n"
            "cache\n"
            "code\n"
            "code/.git (hidden)\n"
            "code/__pycache__\n"
            "code/node_modules\n"
            "loop\n"
            "nocache\n"
            "nocache/CACHEDIR.TAG\n"
            "nocache/n");
}

TEST_F(NameWalkTest, BearsWhatItCannotRead) {
  make(u"open/a"_s);
  make(u"closed/b"_s);
  const QByteArray bad = encoded(u"home"_s) + "/bad\xff";
  FILE* file = std::fopen(bad.constData(), "w");
  ASSERT_TRUE(file);
  std::fclose(file);
  setMode(u"home/closed"_s, 0);
  for (const auto& folder : {u"open"_s, u"closed"_s, u""_s}) date(folder, 1'000);
  {
    const AsPlainUser plain(folder_.path());
    EXPECT_EQ(names().join(' ').toStdString(), "closed open open/a");
    EXPECT_EQ(NameWalk::read({.root = root()}).value_or(NameWalk::Result()).leftOut, 1);
    const NameWalk::Result again = walk({});
    EXPECT_TRUE(again.isWhole && again.file.isEmpty());
  }
  setMode(u"home/closed"_s, 0700);
  EXPECT_TRUE(names().contains("closed/b"));
  ::unlink(bad.constData());  // The toolkit cannot name it, so nor can it remove it.
  EXPECT_FALSE(NameWalk::read({.root = encoded(u"nowhere"_s)}));
  EXPECT_FALSE(NameWalk::read({.root = encoded(u"home/open/a"_s)}));
}

TEST_F(NameWalkTest, ReadsAgainWhatWasChanged) {
  make(u"a/one"_s);
  make(u"a/b/two"_s);
  make(u"c/d/three"_s);
  make(u"c/d/Größe"_s);
  for (const auto& folder : {u"a/b"_s, u"a"_s, u"c/d"_s, u"c"_s, u""_s}) date(folder, 1'000);
  EXPECT_EQ(walk({}).foldersRead, 5);
  const std::string before = keptNames().join(' ').toStdString();
  const NameWalk::Result same = walk({});
  EXPECT_EQ(same.foldersRead, 0);
  EXPECT_TRUE(same.file.isEmpty());
  EXPECT_TRUE(same.isDone && same.isWhole);

  make(u"a/b/four"_s);
  date(u"a/b"_s, 2'000);
  ASSERT_TRUE(QDir(home() + u"/c/d"_s).removeRecursively());
  date(u"c"_s, 900);  // As after a backup was put back.
  EXPECT_EQ(walk({}).foldersRead, 2);
  EXPECT_EQ(keptNames().join(' ').toStdString(), "a a/b a/b/four a/b/two a/one c");

  // Only what was changed lately is looked at, and what was never read.
  make(u"c/five"_s);
  date(u"c"_s, 950);
  make(u"a/b/six"_s);
  date(u"a/b"_s, 2'100);
  EXPECT_EQ(walk({.since = 1'500}).foldersRead, 1);
  EXPECT_EQ(keptNames().join(' ').toStdString(), "a a/b a/b/four a/b/six a/b/two a/one c");
  EXPECT_NE(before, keptNames().join(' ').toStdString());

  // A cache from now on.
  put(u"home/c/CACHEDIR.TAG"_s, "Signature: 8a477f597d28d172789f06886806bc55");
  EXPECT_EQ(walk({}).foldersRead, 1);
  EXPECT_FALSE(keptNames().contains("c/five"));
}

TEST_F(NameWalkTest, TrustsNoTimeThatIsNow) {
  const time_t soon = std::time(nullptr) + 1'000;
  make(u"a/one"_s);
  date(u"a"_s, soon);
  walk({});
  make(u"a/two"_s);
  date(u"a"_s, soon);  // Within the same second.
  EXPECT_TRUE(names().contains("a/two"));
}

TEST_F(NameWalkTest, GoesOnFromWhereItWas) {
  for (int i = 0; i < 30; ++i) make(u"f%1/%1/x"_s.arg(i));
  for (int i = 0; i < 30; ++i) {
    date(u"f%1/%1"_s.arg(i), 1'000);
    date(u"f%1"_s.arg(i), 1'000);
  }
  date({}, 1'000);
  std::stop_source now;
  now.request_stop();
  NameWalk::Result part = walk({}, now.get_token());
  EXPECT_FALSE(part.isWhole || part.isDone);
  EXPECT_FALSE(kept()->isWhole());

  // Stopped again and again, always behind some more folders.
  qsizetype read = 0;
  int rounds = 0;
  for (; !part.isDone && rounds < 100; ++rounds) {
    std::stop_source later;
    int asked = 0;
    const auto known = kept();
    part = NameWalk::read({.root = root(),
                           .known = known.get(),
                           .from = part.from,
                           .grown =
                               [&](const NameIndex::Builder&) {
                                 if (++asked == 1) later.request_stop();
                               },
                           .firstGrown = static_cast<quint32>(40 + 7 * rounds)},
                          later.get_token())
               .value_or(NameWalk::Result());
    read += part.foldersRead;
    if (!part.file.isEmpty()) put(u"names"_s, part.file);
  }
  EXPECT_GT(rounds, 1);
  EXPECT_EQ(read, 61);  // None of them twice.
  EXPECT_TRUE(kept()->isWhole());
  EXPECT_EQ(keptNames().size(), 90);

  // One that was stopped loses nothing, and what it had looked at is not looked at again.
  make(u"f3/new"_s);
  date(u"f3"_s, 2'000);
  part = walk({}, now.get_token());
  EXPECT_TRUE(part.file.isEmpty());
  EXPECT_FALSE(part.isDone);
  EXPECT_EQ(walk({.from = 1'000}).foldersRead, 0);
  EXPECT_EQ(walk({.from = part.from}).foldersRead, 1);
  EXPECT_EQ(keptNames().size(), 91);
}

TEST_F(NameWalkTest, KnowsWhereOtherMachinesAre) {
  EXPECT_EQ(NameWalk::farMounts("22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
                                "30 22 0:50 / /home/u/My\\040Server rw shared:2 master:3 - nfs4 server:/x rw\n"
                                "31 22 0:51 / /home/u/ssh rw - fuse.sshfs u@host: rw\n"
                                "32 22 8:17 / /home/u/stick rw - fuseblk /dev/sdb1 rw\n"
                                "33 22 0:52 / /home/u/share rw - cifs //server/share rw\n"
                                "34 22 0:53 / /tmp rw - tmpfs tmpfs rw\n"
                                "35 22 0:54 / /broken\n")
                .join('|')
                .toStdString(),
            "/home/u/My Server|/home/u/ssh|/home/u/share");
}

}  // namespace
}  // namespace tarnwick
