#include "files/NameIndex.h"

#include <gmock/gmock.h>

#include <QRandomGenerator>

#include "base/Text.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class NameIndexTest : public FolderTest {
 protected:
  std::unique_ptr<NameIndex> opened(NameIndex::Builder& builder) const {
    put(u"names"_s, builder.finish());
    return NameIndex::open(at(u"names"_s), "/home/u");
  }
  static std::string found(const NameIndex& index, const QString& text, qsizetype most = 100) {
    QByteArrayList paths;
    for (const NameIndex::Hit& hit : index.find(text, most)) paths << index.path(hit.place);
    return paths.join(' ').toStdString();
  }
};

TEST_F(NameIndexTest, FindsNamesByAPartOfThem) {
  NameIndex::Builder builder("/home/u");
  const auto papers = builder.add(0, "Papers", 50, {.isFolder = true});
  ASSERT_TRUE(papers);
  builder.add(*papers, "Résumé.pdf", 30, {});
  builder.add(*papers, "resume-old.pdf", 40, {});
  builder.add(0, "RESUME", 60, {});
  const auto hidden = builder.add(0, ".config", 70, {.isFolder = true, .isHidden = true});
  builder.add(*hidden, "resume.conf", 80, {.isHidden = true});
  builder.add(*hidden, ".resume", 90, {.isHidden = true});
  builder.add(0, "straße", 1, {});
  builder.add(0, "two words\nand a line", 2, {});
  EXPECT_FALSE(builder.add(0, "bad\xff", 1, {}));
  EXPECT_FALSE(builder.add(0, "", 1, {}));
  EXPECT_FALSE(builder.add(1'000, "lost", 1, {}));
  EXPECT_EQ(builder.leftOut(), 3);

  const auto index = opened(builder);
  ASSERT_TRUE(index);
  EXPECT_EQ(index->size(), 10);
  const struct {
    const char16_t* text;
    const char* paths;
  } cases[] = {
      {u"resume", "/home/u/RESUME /home/u/Papers/resume-old.pdf /home/u/Papers/Résumé.pdf"},
      {u"RÉS", "/home/u/RESUME /home/u/Papers/resume-old.pdf /home/u/Papers/Résumé.pdf"},
      {u"papers", "/home/u/Papers"},
      {u"s",
       "/home/u/RESUME /home/u/Papers /home/u/Papers/resume-old.pdf /home/u/Papers/Résumé.pdf "
       "/home/u/two words\nand a line /home/u/straße"},
      {u"STRAßE", "/home/u/straße"},
      {u".res", "/home/u/.config/.resume"},
      {u".pdf", "/home/u/Papers/resume-old.pdf /home/u/Papers/Résumé.pdf"},
      {u".conf", "/home/u/.config/resume.conf /home/u/.config"},
      {u"config", ""},
      {u"home", ""},
      {u"pdfresume", ""},
      {u"line", "/home/u/two words\nand a line"},
      {u"", ""},
      {u"\u0301", ""},
  };
  for (const auto& each : cases)
    EXPECT_EQ(found(*index, QString::fromUtf16(each.text)), each.paths) << QString::fromUtf16(each.text).toStdString();
  EXPECT_EQ(found(*index, u"resume"_s, 1), "/home/u/RESUME");
  EXPECT_EQ(found(*index, u"resume"_s, 0), "");
  EXPECT_EQ(index->traits(*papers), (NameIndex::Traits{.isFolder = true}));

  std::stop_source stopped;
  stopped.request_stop();
  EXPECT_TRUE(index->find(u"resume"_s, 10, stopped.get_token()).isEmpty());
}

TEST_F(NameIndexTest, FindsWhatASimpleSearchFinds) {
  QRandomGenerator random(7);
  NameIndex::Builder builder("/home/u");
  QList<QString> names;
  for (int i = 0; i < 3'000; ++i) {
    QString name;
    for (int length = random.bounded(1, 90); length > 0; --length) name += QChar(u'a' + random.bounded(3));
    ASSERT_TRUE(builder.add(0, name.toUtf8(), random.bounded(1'000), {}));
    names << name;
  }
  const auto index = opened(builder);
  ASSERT_TRUE(index);
  for (const auto& text : {u"a"_s, u"ab"_s, u"abc"_s, u"aaaaa"_s, u"abcabca"_s, u"a"_s.repeated(80), u"d"_s}) {
    QList<quint32> expected;
    for (qsizetype i = 0; i < names.size(); ++i)
      if (names[i].contains(text)) expected << static_cast<quint32>(i + 1);
    QList<quint32> places;
    const auto hits = index->find(text, 10'000);
    EXPECT_TRUE(std::ranges::is_sorted(hits, std::greater(), &NameIndex::Hit::changed));
    for (const auto& hit : hits) places << hit.place;
    std::ranges::sort(places);
    EXPECT_EQ(places, expected) << text.left(10).toStdString();
    // The newest are the same when fewer are asked for.
    const auto few = index->find(text, 40);
    EXPECT_EQ(few, hits.first(std::min<qsizetype>(40, hits.size()))) << text.left(10).toStdString();
  }
}

TEST_F(NameIndexTest, IsNotOpenedWhereItCannotBeTrusted) {
  NameIndex::Builder builder("/home/u");
  builder.add(0, "One", 1, {});
  const QByteArray whole = builder.content(true);
  const auto opens = [&](const QByteArray& bytes, const QByteArray& root = "/home/u") {
    put(u"names"_s, bytes);
    return NameIndex::open(at(u"names"_s), root) != nullptr;
  };
  EXPECT_TRUE(opens(whole));
  EXPECT_FALSE(opens(whole, "/home/v"));
  EXPECT_FALSE(opens(whole + 'x'));
  for (qsizetype length = 0; length < whole.size(); ++length) EXPECT_FALSE(opens(whole.first(length))) << length;
  EXPECT_FALSE(NameIndex::open(at(u"nowhere"_s), "/home/u"));
  EXPECT_FALSE(NameIndex::open(folder_.path(), "/home/u"));

  // Whatever a bit turns into, asking it is safe.
  for (qsizetype i = 0; i < whole.size(); ++i) {
    for (const char bits : {'\x01', '\x80', '\xff'}) {
      QByteArray damaged = whole;
      damaged[i] = static_cast<char>(damaged[i] ^ bits);
      put(u"names"_s, damaged);
      const auto index = NameIndex::open(at(u"names"_s), "/home/u");
      if (!index) continue;
      // Only whether every folder was read is not in the sum.
      EXPECT_EQ(index->isSound(), i >= 20 && i < 24) << i;
      EXPECT_LE(index->find(u"o"_s, 10).size(), 2);
      EXPECT_LE(index->newestFolders(10).size(), 2);
      EXPECT_LE(index->contentOf(0).second, 2);
      for (quint32 place = 0; place < 4; ++place) EXPECT_LE(index->path(place).size(), whole.size());
    }
  }
}

TEST_F(NameIndexTest, KnowsWhatIsInAFolder) {
  NameIndex::Builder builder("/home/u");
  const auto a = builder.add(0, "A", 10, {.isFolder = true});
  const auto b = builder.add(0, "b", 30, {.isFolder = true});
  const auto c = builder.add(0, ".c", 40, {.isFolder = true, .isHidden = true});
  builder.add(0, "x 0", 90, {});
  builder.add(*a, "x 1", 1, {});
  builder.add(*a, "x 2", 2, {});
  builder.add(*c, "x 3", 3, {.isHidden = true});
  builder.setChanged(*a, 20);
  EXPECT_EQ(builder.path(6).toStdString(), "/home/u/A/x 2");
  put(u"early"_s, builder.content(false));
  const auto index = opened(builder);
  ASSERT_TRUE(index);
  EXPECT_TRUE(index->isWhole());
  EXPECT_TRUE(index->isSound());
  EXPECT_FALSE(NameIndex::open(at(u"early"_s), "/home/u")->isWhole());
  using Range = std::pair<quint32, quint32>;
  EXPECT_EQ(index->contentOf(0), Range(1, 5));
  EXPECT_EQ(index->contentOf(*a), Range(5, 7));
  EXPECT_EQ(index->contentOf(*b), Range(7, 7));
  EXPECT_EQ(index->contentOf(*c), Range(7, 8));
  EXPECT_EQ(index->newestFolders(2), (QList<quint32>{*b, *a}));
  EXPECT_EQ(index->newestFolders(9), (QList<quint32>{*b, *a}));

  // What is in a folder that goes first comes before what is newer.
  NameIndex::Folders first(3);
  first[*a] = true;
  EXPECT_EQ(index->find(u"x"_s, 2), (QList<NameIndex::Hit>{{4, 90}, {6, 2}}));
  EXPECT_EQ(index->find(u"x"_s, 2, {}, first), (QList<NameIndex::Hit>{{6, 2}, {5, 1}}));

  NameIndex::Builder deep("/home/u");
  quint32 folder = 0;
  for (int i = 0; i < 50'000; ++i) folder = deep.add(folder, "deep", 1, {.isFolder = true}).value_or(0);
  EXPECT_EQ(deep.path(800).size(), 4'007);
  EXPECT_EQ(deep.path(folder), "");

  NameIndex::Builder copy("/home/u");
  EXPECT_EQ(copy.add(0, *index, *a), 1U);
  EXPECT_EQ(copy.path(1).toStdString(), "/home/u/A");
  EXPECT_FALSE(copy.add(7, *index, *a));
}

}  // namespace
}  // namespace tarnwick
