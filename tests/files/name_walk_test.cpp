#include "files/NameWalk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "files/NameIndex.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class NameWalkTest : public FolderTest {
 protected:
  QString home() const { return at(u"home"_s); }
  void make(const QString& name) const { put(u"home/"_s + name, "x"); }
  /// Everything that the index names, relative to the home.
  QByteArrayList names() const {
    const auto result = NameWalk::read(QFile::encodeName(home()));
    EXPECT_TRUE(result);
    if (!result) return {};
    put(u"names"_s, result->file);
    const auto index = NameIndex::open(at(u"names"_s), QFile::encodeName(home()));
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
  {
    const AsPlainUser plain(folder_.path());
    EXPECT_EQ(names().join(' ').toStdString(), "closed open open/a");
    EXPECT_EQ(NameWalk::read(QFile::encodeName(home())).value_or(NameWalk::Result()).leftOut, 1);
  }
  setMode(u"home/closed"_s, 0700);
  ::unlink(bad.constData());  // The toolkit cannot name it, so nor can it remove it.
  EXPECT_FALSE(NameWalk::read(encoded(u"nowhere"_s)));
  EXPECT_FALSE(NameWalk::read(encoded(u"home/open/a"_s)));
  std::stop_source stopped;
  stopped.request_stop();
  EXPECT_FALSE(NameWalk::read(QFile::encodeName(home()), stopped.get_token()));
}

}  // namespace
}  // namespace tarnwick
