#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QImage>
#include <QJsonDocument>

#include "clipboard/ClipboardHistory.h"
#include "clipboard/ClipboardPicture.h"
#include "clipboard/ClipboardStore.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClipboardEntry::Kind;

const QDateTime kMorning(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());

ClipboardCapture textCapture(const QString& text) { return *ClipboardCapture::ofText(text); }

ClipboardCapture pictureCapture(const QByteArray& bytes) {
  return {.kind = Kind::Image, .value = {}, .imageData = bytes};
}

QByteArray picture(const char* format, QColor colour = Qt::red) {
  QImage image(4, 3, QImage::Format_RGB32);
  image.fill(colour);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

QStringList valuesOf(const QList<ClipboardEntry>& items) {
  QStringList values;
  for (const auto& entry : items) values.append(entry.kind == Kind::Image ? entry.imageFile : entry.value);
  return values;
}

class ClipboardFiles : public FolderTest {
 protected:
  ClipboardStore fresh() const { return ClipboardStore(folder_.path()); }
  QStringList files() const { return QDir(at(u"Clipboard"_s)).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
  void putIndex(const QByteArray& json) const { put(u"Clipboard/index.json"_s, json); }
  std::string index() const { return content(u"Clipboard/index.json"_s); }
  std::string kept() const {
    return "Your clipboard history couldn't be read. It has been kept at " +
           at(u"Clipboard/index.json"_s).toStdString() + ".";
  }
};
using ClipboardStoreTest = ClipboardFiles;

TEST_F(ClipboardStoreTest, IsEmptyWhereThereIsNoIndexAndWritesNothingToSaySo) {
  ClipboardStore store = fresh();
  store.load();
  EXPECT_TRUE(store.items().isEmpty());
  EXPECT_TRUE(entries().isEmpty());
}

TEST_F(ClipboardStoreTest, ACopyIsTheNewestEntryAndIsThereAfterARestart) {
  ClipboardStore store = fresh();
  const auto first = store.record(textCapture(u" plain\n"_s), kMorning);
  ASSERT_TRUE(first);
  const auto second = store.record(textCapture(u"example.com"_s), kMorning.addSecs(1));
  EXPECT_EQ(second, store.items().first());
  EXPECT_EQ(valuesOf(store.items()), (QStringList{u"example.com"_s, u" plain\n"_s}));

  ClipboardStore again = fresh();
  again.load();
  EXPECT_EQ(again.items(), store.items());
  EXPECT_EQ(mode(u"Clipboard/index.json"_s), 0600u);
  EXPECT_EQ(mode(u"Clipboard"_s), 0700u);
  const std::string id = first->id.toString(QUuid::WithoutBraces).toUpper().toStdString();
  EXPECT_THAT(index(), testing::HasSubstr("        {\n            \"added\": \"2026-11-24T10:24:00Z\",\n"
                                          "            \"favourite\": false,\n            \"id\": \"" +
                                          id +
                                          "\",\n            \"imageFile\": \"\",\n            \"kind\": \"text\",\n"
                                          "            \"value\": \" plain\\n\"\n        }"));
  EXPECT_THAT(index(), testing::HasSubstr("\"version\": 1"));
}

TEST_F(ClipboardStoreTest, WhatIsOverALimitIsSkippedWhole) {
  const QString umlauts = QString(50'000, u'ä');
  const struct {
    const char* what;
    ClipboardCapture capture;
    bool isKept;
  } cases[] = {
      {"100,000 bytes", textCapture(QString(100'000, u'a')), true},
      {"100,001 bytes", textCapture(QString(100'001, u'a')), false},
      {"100,000 bytes of two each", textCapture(umlauts), true},
      {"100,001 bytes of two each", textCapture(umlauts + u'a'), false},
      {"nothing", {}, false},
      {"the largest picture", pictureCapture(QByteArray(10'485'760, 'x')), true},
      {"one byte more", pictureCapture(QByteArray(10'485'761, 'x')), false},
  };
  qsizetype count = 0;
  ClipboardStore store = fresh();
  for (const auto& each : cases) {
    EXPECT_EQ(store.record(each.capture, kMorning).has_value(), each.isKept) << each.what;
    count += each.isKept;
    EXPECT_EQ(store.items().size(), count) << each.what;
  }
}

TEST_F(ClipboardStoreTest, ACopyOfTheSameMovesToTheFrontAndStaysAFavourite) {
  ClipboardStore store = fresh();
  const ClipboardCapture link = textCapture(u"example.com"_s);
  const QUuid id = store.record(link, kMorning)->id;
  store.toggleFavourite(id);
  store.record(pictureCapture("one"), kMorning);
  store.record(textCapture(u"between"_s), kMorning);
  store.record({.kind = Kind::File, .value = u"example.com"_s, .imageData = {}}, kMorning);

  const auto again = store.record(link, kMorning.addSecs(60));
  EXPECT_EQ(again->id, id);
  EXPECT_TRUE(again->favourite);
  EXPECT_EQ(again->added, kMorning.addSecs(60));
  EXPECT_EQ(store.items().first(), *again);
  EXPECT_EQ(store.items().size(), 4) << "a file of that name is another thing";

  store.record(pictureCapture("one"), kMorning);
  store.record(pictureCapture("two"), kMorning);
  EXPECT_EQ(store.items().size(), 5);
  EXPECT_EQ(files().size(), 3);
}

TEST_F(ClipboardStoreTest, PicturesAreFilesUnderTheirDigest) {
  ClipboardStore store = fresh();
  const auto entry = store.record(pictureCapture("bytes"), kMorning);
  const QString name =
      QString::fromLatin1(QCryptographicHash::hash("bytes", QCryptographicHash::Sha256).toHex()) + u".png"_s;
  EXPECT_EQ(entry->imageFile, name);
  EXPECT_EQ(entry->value, QString());
  EXPECT_EQ(content(u"Clipboard/"_s + name), "bytes");
  EXPECT_EQ(store.imageURL(*entry), QUrl::fromLocalFile(at(u"Clipboard/"_s + name)));
  EXPECT_EQ(store.picture(*entry), "bytes");
}

TEST_F(ClipboardStoreTest, TheOldestGoOverTheirOwnLimitAndFavouritesNever) {
  ClipboardStore store = fresh();
  const QUuid loved = store.record(pictureCapture("loved"), kMorning)->id;
  store.toggleFavourite(loved);
  for (int i = 0; i < 5; ++i) {
    store.toggleFavourite(store.record(textCapture(u"favourite %1"_s.arg(i)), kMorning)->id);
  }
  for (int i = 0; i < 200; ++i) store.record(textCapture(u"text %1"_s.arg(i)), kMorning);
  for (int i = 0; i < 40; ++i) store.record(pictureCapture(QByteArray::number(i)), kMorning);
  EXPECT_EQ(store.items().size(), 246);
  EXPECT_EQ(files().size(), 42);
  const QString oldest = store.items()[39].imageFile;

  store.record(pictureCapture("41st"), kMorning);
  EXPECT_EQ(store.items().size(), 246);
  EXPECT_EQ(files().size(), 42);
  EXPECT_FALSE(files().contains(oldest));
  store.record(textCapture(u"201st"_s), kMorning);
  EXPECT_FALSE(valuesOf(store.items()).contains(u"text 0"_s));
  EXPECT_TRUE(valuesOf(store.items()).contains(u"text 1"_s));
  EXPECT_TRUE(valuesOf(store.items()).contains(u"favourite 0"_s));
  EXPECT_EQ(store.items().last().id, loved);
}

TEST_F(ClipboardStoreTest, RemovingTakesThePictureAlongUnlessAnotherEntryHasIt) {
  ClipboardStore store = fresh();
  const QUuid id = store.record(pictureCapture("bytes"), kMorning)->id;
  store.record(textCapture(u"newer"_s), kMorning);
  EXPECT_FALSE(store.remove(QUuid::createUuid()));

  const auto removed = store.remove(id);
  ASSERT_TRUE(removed);
  EXPECT_EQ(files(), QStringList{u"index.json"_s});
  EXPECT_THAT(index(), testing::Not(testing::HasSubstr("image\"")));

  store.putBack(*removed);
  EXPECT_EQ(store.items().last(), removed->entry);
  EXPECT_EQ(store.picture(removed->entry), "bytes");
  store.putBack(*removed);
  EXPECT_EQ(store.items().size(), 2) << "each thing once";

  putIndex(QByteArray::fromStdString(index())
               .replace("\"newer\"", "\"\"")
               .replace("\"text\"", "\"image\"")
               .replace("\"imageFile\": \"\"", "\"imageFile\": \"" + removed->entry.imageFile.toUtf8() + "\""));
  ClipboardStore shared = fresh();
  shared.remove(id);
  EXPECT_EQ(shared.items().size(), 1);
  EXPECT_EQ(files().size(), 2);
}

TEST_F(ClipboardStoreTest, AFavouriteThatIsPutBackOverANewCopyIsAFavourite) {
  ClipboardStore store = fresh();
  const QUuid id = store.record(textCapture(u"a"_s), kMorning)->id;
  store.toggleFavourite(id);
  const auto removed = store.remove(id);
  store.record(textCapture(u"a"_s), kMorning);
  store.putBack(*removed);
  ASSERT_EQ(store.items().size(), 1);
  EXPECT_TRUE(store.items().first().favourite);
}

TEST_F(ClipboardStoreTest, ClearingTakesEverythingAlong) {
  ClipboardStore store = fresh();
  store.toggleFavourite(store.record(pictureCapture("loved"), kMorning)->id);
  put(u"Clipboard/stray.png"_s, "x");
  put(u"beside"_s, "x");
  store.clear();
  EXPECT_TRUE(store.items().isEmpty());
  EXPECT_EQ(files(), QStringList{u"index.json"_s});
  EXPECT_EQ(content(u"beside"_s), "x");
  ClipboardStore again = fresh();
  again.load();
  EXPECT_TRUE(again.items().isEmpty());
}

TEST_F(ClipboardStoreTest, ClearingTakesEverythingAlongFromAFullDiskAndThroughALink) {
  ClipboardStore store = fresh();
  store.record(pictureCapture("bytes"), kMorning);
  {
    const AsFullDisk full(0);
    store.clear();
  }
  EXPECT_EQ(files(), QStringList()) << "which is an empty history";
  EXPECT_TRUE(store.items().isEmpty());

  store.record(textCapture(u"secret"_s), kMorning);
  const QString kept = at(u"kept.json"_s);
  ASSERT_TRUE(QFile::rename(at(u"Clipboard/index.json"_s), kept) && QFile::link(kept, at(u"Clipboard/index.json"_s)));
  ClipboardStore linked = fresh();
  linked.clear();
  EXPECT_THAT(content(u"kept.json"_s), testing::Not(testing::HasSubstr("secret")));
}

TEST_F(ClipboardStoreTest, OlderTextsGoBehindWhatIsThere) {
  ClipboardStore store = fresh();
  store.record(textCapture(u"new"_s), kMorning);
  store.migrate({u" first "_s, u"\n"_s, u"new"_s, u"#abc"_s, u" first "_s, u" example.com"_s}, kMorning);
  EXPECT_EQ(valuesOf(store.items()), (QStringList{u"new"_s, u" first "_s, u"#abc"_s, u" example.com"_s}));
  EXPECT_EQ(store.items()[1].kind, Kind::Text);
  EXPECT_EQ(store.items()[2].kind, Kind::Color);
  EXPECT_EQ(store.items()[3].kind, Kind::Link);
}

TEST_F(ClipboardStoreTest, AnIndexThatCannotBeReadStaysUntouched) {
  const QByteArray entry =
      R"({"added":"2026-11-24T10:24:00Z","favourite":false,"id":"6E2C1B0E-5E5B-4C7B-9D57-1A2B3C4D5E6F","imageFile":"","kind":"text","value":"a"})";
  const struct {
    const char* what;
    QByteArray json;
  } cases[] = {
      {"another version", R"({"version":2,"entries":[]})"},
      {"no version", R"({"entries":[]})"},
      {"cut off", R"({"version":1,"entries":[)" + entry},
      {"nothing", ""},
      {"another kind", R"({"version":1,"entries":[)" + QByteArray(entry).replace("\"text\"", "\"film\"") + "]}"},
      {"no date", R"({"version":1,"entries":[)" + QByteArray(entry).replace("2026-11-24T10:24:00Z", "now") + "]}"},
      {"a date that has no name in UTC",
       R"({"version":1,"entries":[)" + QByteArray(entry).replace("2026-11-24T10:24:00Z", "9999-12-31T23:30:00-01:00") +
           "]}"},
      {"no identity", R"({"version":1,"entries":[)" + QByteArray(entry).replace("6E2C", "") + "]}"},
      {"a list", "[]"},
      {"a version that is no number", R"({"version":"1","entries":[]})"},
      {"half a version", R"({"version":1.5,"entries":[]})"},
      {"entries that are no list", R"({"version":1,"entries":{"0":)" + entry + "}}"},
      {"an entry that is nothing", R"({"version":1,"entries":[null]})"},
      {"a number for yes or no", R"({"version":1,"entries":[)" + QByteArray(entry).replace("false", "0") + "]}"},
      {"bytes that are no text", R"({"version":1,"entries":[)" + QByteArray(entry).replace("\"a\"", "\"\xff\"") + "]}"},
      {"something behind it", R"({"version":1,"entries":[]} {)"},
      {"brackets without an end", QByteArray(1'000'000, '[')},
  };
  for (const auto& each : cases) {
    putIndex(each.json);
    ClipboardStore store = fresh();
    EXPECT_EQ(failureOf([&] { store.load(); }), kept()) << each.what;
    const std::string repair = ClipboardStore::needsRepair().toStdString();
    EXPECT_EQ(repair, "Your clipboard history needs repair before it can change. Nothing has been deleted.");
    EXPECT_EQ(failureOf([&] { store.load(); }), repair) << each.what;
    EXPECT_EQ(failureOf([&] { store.record(textCapture(u"a"_s), kMorning); }), repair) << each.what;
    EXPECT_EQ(failureOf([&] { store.record(pictureCapture("a"), kMorning); }), repair) << each.what;
    EXPECT_EQ(failureOf([&] { store.toggleFavourite({}); }), repair) << each.what;
    EXPECT_EQ(failureOf([&] { store.remove({}); }), repair) << each.what;
    EXPECT_EQ(failureOf([&] { store.putBack({}); }), repair) << each.what;
    EXPECT_EQ(failureOf([&] { store.clear(); }), repair) << each.what;
    EXPECT_EQ(failureOf([&] { store.migrate({u"a"_s}, kMorning); }), repair) << each.what;
    EXPECT_EQ(index(), each.json.toStdString()) << each.what;
    EXPECT_EQ(files(), QStringList{u"index.json"_s}) << each.what;
  }
  putIndex(R"({"version":1,"entries":[)" + entry + "]}");
  ClipboardStore whole = fresh();
  whole.load();
  EXPECT_EQ(valuesOf(whole.items()), QStringList{u"a"_s});
}

TEST_F(ClipboardStoreTest, AnIndexThatWasEditedByHandIsTakenAsItIs) {
  const auto entry = [](const QByteArray& id, const QByteArray& kind, const QByteArray& file, const QByteArray& value) {
    return R"({"more":[],"added":"2026-11-24T10:24:00Z","favourite":false,"id":")" + id + R"(","imageFile":")" + file +
           R"(","kind":")" + kind + R"(","value":")" + value + R"("})";
  };
  const QByteArray id = "6E2C1B0E-5E5B-4C7B-9D57-1A2B3C4D5E6F";
  const QByteArray other = "7E2C1B0E-5E5B-4C7B-9D57-1A2B3C4D5E6F";
  putIndex(R"({"version":1,"entries":[)" + entry(id, "text", "../a", "one") + ',' + entry(id, "text", "", "two") + ',' +
           entry(other, "image", "", "no file") + ',' + entry(other, "file", "", R"(a\u0000b)") + "]}");
  ClipboardStore store = fresh();
  store.load();
  ASSERT_EQ(store.items().size(), 4);
  EXPECT_EQ(store.picture(store.items()[0]), std::nullopt);
  EXPECT_EQ(store.picture(store.items()[2]), std::nullopt);
  store.remove(QUuid(QString::fromLatin1(id)));
  EXPECT_EQ(store.items().first().value, u"two"_s) << "one at a time";
  ClipboardStore again = fresh();
  again.load();
  EXPECT_EQ(again.items(), store.items());

  QByteArray many;
  for (int i = 0; i < 10'000; ++i)
    many += (i == 0 ? "" : ",") +
            entry(QUuid::createUuid().toByteArray(QUuid::WithoutBraces), "text", "", QByteArray::number(i));
  putIndex(R"({"version":1,"entries":[)" + many + "]}");
  ClipboardStore crowded = fresh();
  crowded.load();
  EXPECT_EQ(crowded.items().size(), 10'000);
  crowded.record(textCapture(u"new"_s), kMorning);
  EXPECT_EQ(crowded.items().size(), 200) << "the next copy brings it within its limits";
}

TEST_F(ClipboardStoreTest, WhatIsHeldIsNotedForOneRun) {
  ClipboardStore store = fresh();
  EXPECT_EQ(store.takeHeld(), QUuid());
  const QUuid id = store.record(textCapture(u"a"_s), kMorning)->id;
  store.noteHeld(true);
  EXPECT_EQ(mode(u"Clipboard/held"_s), 0600u);
  EXPECT_EQ(fresh().takeHeld(), id);
  EXPECT_EQ(fresh().takeHeld(), QUuid());
  store.noteHeld(true);
  store.noteHeld(false);
  EXPECT_EQ(fresh().takeHeld(), QUuid());
  for (const QByteArray& noted : {QByteArray("../.."), QByteArray(200'000'000, 'x')}) {
    put(u"Clipboard/held"_s, noted);
    EXPECT_EQ(fresh().takeHeld(), QUuid());
    EXPECT_EQ(files(), QStringList{u"index.json"_s});
  }
}

TEST_F(ClipboardStoreTest, WhatIsNoIndexAtAllStaysWhereItIs) {
  const QString path = at(u"Clipboard/index.json"_s);
  const struct {
    const char* what;
    std::function<bool()> make;
    std::function<bool()> isThere;
  } cases[] = {
      {"half a gigabyte",
       [&] {
         QFile file(path);
         return file.open(QIODevice::WriteOnly) && file.resize(500'000'000);
       },
       [&] { return QFileInfo(path).size() == 500'000'000; }},
      {"a folder", [&] { return QDir().mkdir(path); }, [&] { return QFileInfo(path).isDir(); }},
      {"a link to what is not there", [&] { return QFile::link(at(u"away.json"_s), path); },
       [&] { return QFileInfo(path).isSymLink() && !QFileInfo::exists(at(u"away.json"_s)); }},
      {"a pipe", [&] { return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0; },
       [&] { return QFileInfo(path).exists() && !QFileInfo(path).isFile(); }},
  };
  QDir().mkpath(at(u"Clipboard"_s));
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    ASSERT_TRUE(each.make());
    ClipboardStore store = fresh();
    EXPECT_EQ(failureOf([&] { store.load(); }), kept());
    EXPECT_EQ(failureOf([&] { store.record(textCapture(u"a"_s), kMorning); }),
              ClipboardStore::needsRepair().toStdString());
    EXPECT_EQ(failureOf([&] { store.clear(); }), ClipboardStore::needsRepair().toStdString());
    EXPECT_TRUE(each.isThere());
    QFileInfo(path).isDir() ? QDir().rmdir(path) : QFile::remove(path);
    EXPECT_EQ(QDir(at(u"Clipboard"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
  }
}

TEST_F(ClipboardStoreTest, AFolderThatIsReadOnlyChangesNothing) {
  const AsPlainUser user(folder_.path());
  ClipboardStore store = fresh();
  const ClipboardEntry entry = *store.record(pictureCapture("bytes"), kMorning);
  const RemovedClipboardEntry removed = *store.remove(store.record(textCapture(u"gone"_s), kMorning)->id);
  const std::string before = index();
  const QStringList filesBefore = files();
  ASSERT_EQ(::chmod(encoded(u"Clipboard"_s).constData(), 0500), 0);
  const std::function<void()> changes[] = {
      [&] { store.record(textCapture(u"new"_s), kMorning); },
      [&] { store.record(pictureCapture("more"), kMorning); },
      [&] { store.toggleFavourite(entry.id); },
      [&] { store.remove(entry.id); },
      [&] { store.putBack(removed); },
      [&] { store.clear(); },
      [&] { store.migrate({u"old"_s}, kMorning); },
  };
  for (const auto& change : changes) {
    EXPECT_NE(failureOf(change), "");
    EXPECT_EQ(store.items(), QList<ClipboardEntry>{entry});
  }
  EXPECT_EQ(index(), before);
  EXPECT_EQ(files(), filesBefore);
  ASSERT_EQ(::chmod(encoded(u"Clipboard"_s).constData(), 0700), 0);
  store.toggleFavourite(entry.id);
  EXPECT_TRUE(store.items().first().favourite) << "once it can be written again";
}

TEST_F(ClipboardStoreTest, WhatAKilledWriteLeftBehindGoesAtTheNextStart) {
  fresh().record(textCapture(u"a"_s), kMorning);
  const ClipboardEntry kept = *fresh().record(pictureCapture(picture("PNG")), kMorning);
  put(u"Clipboard/.tarnwick-1a2b.tmp"_s, "half of it");
  put(u"Clipboard/%1.png"_s.arg(QString(64, u'a')), "no entry came to this one");
  put(u"Clipboard/portrait.png"_s, "not ours");
  ClipboardStore store = fresh();
  store.removeStrayPictures();
  EXPECT_THAT(files(), ::testing::UnorderedElementsAre(u"index.json"_s, u"portrait.png"_s, kept.imageFile));
  EXPECT_EQ(store.items().size(), 2);
}

TEST_F(ClipboardStoreTest, AChangeThatWouldMakeTheIndexTooLargeIsRefused) {
  putIndex(
      R"({"version":1,"entries":[{"added":"2026-11-24T10:24:00Z","favourite":true,"id":"6E2C1B0E-5E5B-4C7B-9D57-1A2B3C4D5E6F","imageFile":"","kind":"text","value":")" +
      QByteArray(67'050'000, 'a') + R"("}]})");
  ClipboardStore store = fresh();
  ASSERT_TRUE(store.record(textCapture(u"small"_s), kMorning));
  const qint64 before = QFileInfo(at(u"Clipboard/index.json"_s)).size();
  EXPECT_EQ(failureOf([&] { store.record(textCapture(QString(100'000, u'b')), kMorning); }),
            "Your clipboard history is too large to take in more. Remove some favourites first.");
  EXPECT_EQ(QFileInfo(at(u"Clipboard/index.json"_s)).size(), before);
  EXPECT_EQ(store.items().size(), 2);
  ClipboardStore again = fresh();
  again.load();
  EXPECT_EQ(again.items(), store.items()) << "what was written can be read";
}

TEST_F(ClipboardStoreTest, NamesThatLeadOutOfTheFolderAreNeverFollowed) {
  put(u"outside.png"_s, "x");
  const struct {
    QString name;
    bool isFollowed;
  } cases[] = {
      {u"a.png"_s, true},
      {u""_s, false},
      {u"."_s, false},
      {u".."_s, false},
      {u"a/b"_s, false},
      {u"/etc/passwd"_s, false},
      {u"../outside.png"_s, false},
      {u"a..png"_s, false},
  };
  const ClipboardStore store = fresh();
  for (const auto& each : cases) {
    const ClipboardEntry entry{
        .id = {}, .kind = Kind::Image, .value = {}, .imageFile = each.name, .added = {}, .favourite = false};
    EXPECT_EQ(store.imageURL(entry).has_value(), each.isFollowed) << each.name.toStdString();
  }
  const QByteArray id = "6E2C1B0E-5E5B-4C7B-9D57-1A2B3C4D5E6F";
  for (const QByteArray name : {"../outside.png", "index.json"}) {
    putIndex(R"({"version":1,"entries":[{"added":"2026-11-24T10:24:00Z","favourite":false,"id":")" + id +
             R"(","imageFile":")" + name + R"(","kind":"image","value":""}]})");
    ClipboardStore hostile = fresh();
    ASSERT_TRUE(hostile.remove(QUuid(QString::fromLatin1(id))));
    EXPECT_EQ(content(u"outside.png"_s), "x");
    EXPECT_THAT(index(), testing::HasSubstr("\"entries\": [\n    ]"));
  }
}

TEST_F(ClipboardStoreTest, AFailureOfTheDiskChangesNothing) {
  ClipboardStore store = fresh();
  store.record(textCapture(u"old"_s), kMorning);
  const std::string before = index();
  {
    const AsFullDisk full(16);
    EXPECT_NE(failureOf([&] { store.record(textCapture(u"new"_s), kMorning); }), "");
    EXPECT_NE(failureOf([&] { store.record(pictureCapture(QByteArray(100, 'x')), kMorning); }), "");
    EXPECT_NE(failureOf([&] { store.record(pictureCapture("small"), kMorning); }), "") << "the index has no room";
    EXPECT_NE(failureOf([&] { store.toggleFavourite(store.items().first().id); }), "");
    EXPECT_NE(failureOf([&] { store.remove(store.items().first().id); }), "");
  }
  EXPECT_EQ(valuesOf(store.items()), QStringList{u"old"_s});
  EXPECT_EQ(index(), before);
  EXPECT_EQ(files(), QStringList{u"index.json"_s});
}

constexpr qsizetype kRoom = 100'000;

TEST(ClipboardPicture, WhatIsTooLargeAsItWasSentMayFitOnceItIsCompressed) {
  QImage plain(200, 200, QImage::Format_RGB32);
  plain.fill(Qt::red);
  QImage noise = plain;
  quint32 state = 1;
  for (int y = 0; y < noise.height(); ++y)
    for (int x = 0; x < noise.width(); ++x) noise.setPixel(x, y, state = state * 1664525 + 1013904223);
  for (const QImage& image : {plain, noise}) {
    QByteArray loose;
    QBuffer buffer(&loose);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(image.save(&buffer, "PNG", 100));
    ASSERT_GT(loose.size(), kRoom);
    ::testing::internal::CaptureStderr();
    const auto png = ClipboardPicture::toPng(loose, kRoom);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(png.has_value(), image == plain);
    if (png) {
      EXPECT_LE(png->size(), kRoom);
      EXPECT_EQ(QImage::fromData(*png).convertToFormat(QImage::Format_RGB32), plain);
    }
  }
}

TEST(ClipboardPicture, OnlyWhatCanBeDecodedWithinTheLimitIsOne) {
  const QByteArray png = picture("PNG");
  // Says in its header that it is a hundred thousand pixels wide and high, with the sum that belongs to it.
  QByteArray bomb = png;
  bomb.replace(16, 8, QByteArray::fromHex("000186a0000186a0")).replace(29, 4, QByteArray::fromHex("27309c9f"));
  const struct {
    const char* what;
    QByteArray bytes;
    ClipboardPicture::Verdict verdict;
    bool isRead;
  } cases[] = {
      {"PNG", png, ClipboardPicture::Verdict::Fine, true},
      {"BMP", picture("BMP"), ClipboardPicture::Verdict::Fine, true},
      {"bomb", bomb, ClipboardPicture::Verdict::TooLarge, false},
      {"text", "text", ClipboardPicture::Verdict::NoPicture, false},
      {"nothing", "", ClipboardPicture::Verdict::NoPicture, false},
      {"cut off", png.chopped(30), ClipboardPicture::Verdict::Fine, false},
      {"drawing", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>",
       ClipboardPicture::Verdict::NoPicture, false},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(ClipboardPicture::judge(each.bytes), each.verdict) << each.what;
    EXPECT_EQ(ClipboardPicture::toPng(each.bytes, kRoom).has_value(), each.isRead) << each.what;
  }
  EXPECT_EQ(ClipboardPicture::toPng(png, kRoom), png) << "as it was sent";
  EXPECT_EQ(ClipboardPicture::toPng(picture("BMP"), kRoom)->first(4), png.first(4));
}

class ClipboardHistoryTest : public ClipboardFiles {
 protected:
  void SetUp() override { make(); }
  void make() {
    history.reset();
    changes = 0;
    failures.clear();
    history = std::make_unique<ClipboardHistory>(folder_.path(), clock);
    QObject::connect(history.get(), &ClipboardHistory::didChange, [this] { ++changes; });
    QObject::connect(history.get(), &ClipboardHistory::failed, [this](const QString& text) { failures << text; });
  }
  /// Until all that was asked for has been answered.
  void settle() {
    bool isDone = false;
    history->load([&] { isDone = true; });
    ASSERT_TRUE(waitFor([&] { return isDone; }));
  }

  test::TestScheduler clock;
  std::unique_ptr<ClipboardHistory> history;
  int changes = 0;
  QStringList failures;
};

TEST_F(ClipboardHistoryTest, PublishesWhatTheWorkerDidInItsOrder) {
  history->record(textCapture(u"a"_s));
  history->record(pictureCapture(picture("BMP")));
  history->record(textCapture(u"b"_s));
  EXPECT_TRUE(history->items().isEmpty()) << "nothing is done in the call";
  settle();
  ASSERT_EQ(history->items().size(), 3);
  EXPECT_EQ(changes, 3);
  EXPECT_EQ(history->items()[0].value, u"b"_s);
  EXPECT_EQ(history->items()[0].added, clock.now());
  const ClipboardEntry shot = history->items()[1];
  EXPECT_EQ(shot.kind, Kind::Image);

  QByteArray png;
  QSize small;
  QSize whole;
  history->readPicture(shot, history.get(), [&](const auto& bytes) { png = bytes.value_or(QByteArray()); });
  history->readThumbnail(shot, 2, history.get(), [&](const ClipboardThumbnail& read) {
    small = read.image.size();
    whole = read.size;
  });
  const QList<ClipboardEntry> before = history->items();
  std::optional<RemovedClipboardEntry> removed;
  history->remove(shot.id, history.get(), [&](const auto& what) { removed = what; });
  settle();
  EXPECT_EQ(png.first(4), picture("PNG").first(4));
  EXPECT_EQ(small, QSize(2, 2));
  EXPECT_EQ(whole, QImage::fromData(png).size());
  EXPECT_EQ(before.size(), 3) << "what was taken never changes";
  EXPECT_EQ(history->items().size(), 2);
  ASSERT_TRUE(removed);
  history->putBack(*removed);
  settle();
  EXPECT_EQ(history->items(), before);
  EXPECT_TRUE(QFileInfo::exists(history->picturePath(shot)));
}

TEST_F(ClipboardHistoryTest, FinishesWhatWasAskedForBeforeItEnds) {
  for (int i = 0; i < 20; ++i) history->record(textCapture(QString::number(i)));
  history->record(pictureCapture(picture("PNG")));
  make();
  settle();
  EXPECT_EQ(history->items().size(), 21);
}

TEST_F(ClipboardHistoryTest, OfPicturesThatWaitTheLatestIsKept) {
  // The first may have been taken up already.
  for (const QColor colour : {Qt::red, Qt::green, Qt::blue}) history->record(pictureCapture(picture("PNG", colour)));
  settle();
  ASSERT_FALSE(history->items().isEmpty());
  const ClipboardStore store(folder_.path());
  EXPECT_EQ(store.picture(history->items().first()), picture("PNG", Qt::blue));
}

TEST_F(ClipboardHistoryTest, SaysWhyItCannotBeRead) {
  putIndex("broken");
  make();
  settle();
  EXPECT_EQ(history->problem().toStdString(), kept());
  EXPECT_EQ(changes, 1);
  EXPECT_TRUE(failures.isEmpty());
  history->record(textCapture(u"a"_s));
  settle();
  EXPECT_EQ(failures, QStringList{ClipboardStore::needsRepair()});
  EXPECT_EQ(history->problem().toStdString(), kept());
  EXPECT_EQ(failureOf([&] { history->migrate({u"a"_s}); }), ClipboardStore::needsRepair().toStdString());
  EXPECT_EQ(index(), "broken");
}

TEST_F(ClipboardHistoryTest, OlderTextsAreOnTheDiskWhenTheyHaveBeenTakenOver) {
  EXPECT_TRUE(history->migrate({u"a"_s, u"b"_s}));
  ClipboardStore store = fresh();
  store.load();
  EXPECT_EQ(valuesOf(store.items()), (QStringList{u"a"_s, u"b"_s}));
}

}  // namespace
}  // namespace tarnwick
