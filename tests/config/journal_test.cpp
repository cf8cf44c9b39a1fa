// What was entered and not yet saved: its lines, their files, and when the settings file takes them over.
#include <gmock/gmock.h>

#include <utility>

#include "config/ContentJournal.h"
#include "config/Persistence.h"
#include "config/SettingsWriter.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestScheduler;
using testing::HasSubstr;

const QString kFile = u"config.json"_s;
const QString kNewer = u"content-journal.json"_s;
const QString kOlder = u"content-journal-older.json"_s;

DockConfiguration withNote(const QString& text = {}) {
  DockConfiguration config;
  config.profiles[0].widgets.resize(1);
  config.profiles[0].widgets[0].kind = u"scratchNote"_s;
  if (!text.isEmpty()) config.profiles[0].widgets[0].options.insert(u"text"_s, text);
  config.validate();
  return config;
}

DockWidget& note(DockConfiguration& config) { return config.profiles[0].widgets[0]; }
QString textOf(const DockConfiguration& config) {
  return config.profiles.first().widgets.first().options.value(u"text"_s);
}

QByteArray textOf(const QList<ContentLine>& lines) {
  QByteArray text;
  for (const ContentLine& line : lines) text += line.text();
  return text;
}

TEST(ContentLines, TellWhatMakesOneDocumentTheOther) {
  DockConfiguration before = withNote(u"old"_s);
  note(before).options.insert(u"gone"_s, u"x"_s);
  DockConfiguration after = before;
  note(after).options = {{u"text"_s, u"new\n“two”"_s}, {u"token"_s, u"secret"_s}, {u"empty"_s, {}}};
  after.todos = {TodoItem{QUuid::createUuid(), u"Buy tea"_s, true}};
  after.shelf = {u"/a"_s};
  const QByteArray text = textOf(ContentLine::between(before, after));
  EXPECT_EQ(text.count('\n'), 5);
  EXPECT_FALSE(text.contains("secret"));

  DockConfiguration rebuilt = before;
  ContentLine::apply(ContentLine::parse(text), rebuilt);
  note(after).options.remove(u"token"_s);
  EXPECT_EQ(rebuilt, after);
  EXPECT_TRUE(ContentLine::between(after, after).isEmpty());
}

TEST(ContentLines, ForWhatIsNotThereOrWouldBeRefusedAreLeftOut) {
  DockConfiguration config = withNote(u"old"_s);
  const DockConfiguration before = config;
  const QByteArray id = note(config).id.toByteArray(QUuid::WithoutBraces);
  const QByteArray text = R"({"widget":"00000000-0000-0000-0000-000000000001","key":"text","value":"stranger"})"
                          "\n"
                          R"({"widget":")" +
                          id +
                          R"(","key":"goal","value":"-1"})"
                          "\n"
                          R"({"widget":")" +
                          id +
                          R"(","key":"password","value":"p"})"
                          "\n";
  EXPECT_EQ(ContentLine::parse(text).size(), 3);
  ContentLine::apply(ContentLine::parse(text), config);
  EXPECT_EQ(config, before);
}

TEST(ContentLines, AreReadUpToTheFirstDamagedOne) {
  DockConfiguration config = withNote();
  const QByteArray good = R"({"widget":")" + note(config).id.toByteArray(QUuid::WithoutBraces) +
                          R"(","key":"text","value":"kept"})"
                          "\n";
  for (const QByteArray& damaged :
       {QByteArray("{\"widget\":\n"), QByteArray("\n"), QByteArray("{}\n"), QByteArray("[1]\n"),
        QByteArray("{\"widget\":5,\"key\":\"a\"}\n"), QByteArray("\0\0\0\n", 4), good.chopped(1)}) {
    EXPECT_EQ(ContentLine::parse(good + damaged).size(), 1) << damaged.constData();
    EXPECT_EQ(ContentLine::parse(damaged.endsWith('\n') ? damaged + good : QByteArray()).size(), 0);
  }
}

/// A program that writes its settings; `die` ends it without a word.
class Writing : public FolderTest {
 protected:
  void start(const DockConfiguration& loaded) {
    config = loaded;
    writer = std::make_unique<SettingsWriter>(time, at(kFile), [this]() -> const DockConfiguration& { return config; });
    writer->onSaved = [this](const QString& failure, bool isRepeated) {
      failures << (isRepeated ? u"again: "_s + failure : failure);
    };
    config = writer->resume(config);
  }
  void startFromFile() { start(Persistence::read(at(kFile))); }
  void die() { writer.reset(); }
  void type(const QString& text) {
    note(config).options.insert(u"text"_s, text);
    writer->changed(false);
  }
  /// With a save a moment ago, so that content waits for its ten seconds.
  void startSaved(const DockConfiguration& loaded = withNote(u"old"_s)) {
    start(loaded);
    EXPECT_TRUE(writer->save().isEmpty());
  }
  QString savedText() const { return textOf(Persistence::read(at(kFile))); }

  TestScheduler time;
  DockConfiguration config;
  std::unique_ptr<SettingsWriter> writer;
  QStringList failures;
};

TEST_F(Writing, WhatWasEnteredASecondAgoOutlivesEveryEnd) {
  startSaved();
  time.advance(2);
  for (const QString& text : {u"n"_s, u"no"_s, u"not"_s, u"note"_s}) {
    type(text);
    time.advance(0.1);
  }
  EXPECT_EQ(content(kNewer).find("not"), std::string::npos) << "once a second";
  time.advance(0.65);
  EXPECT_EQ(savedText(), u"old"_s);
  EXPECT_EQ(mode(kNewer), 0600);
  die();
  startFromFile();
  EXPECT_EQ(textOf(config), u"note"_s);

  // A second end before the first save of the new run takes nothing.
  type(u"note two"_s);
  die();
  startFromFile();
  EXPECT_EQ(textOf(config), u"note two"_s);
  time.advance(0.26);
  EXPECT_EQ(savedText(), u"note two"_s);
  EXPECT_EQ(entries(), QStringList{kFile});
}

TEST_F(Writing, ALineThatWasCutOffTakesNoLaterOneWithIt) {
  startSaved();
  type(u"first"_s);
  die();
  QFile torn(at(kNewer));
  ASSERT_TRUE(torn.open(QIODevice::Append));
  torn.write("{\"widget\":\"");
  torn.close();
  startFromFile();
  EXPECT_EQ(textOf(config), u"first"_s);
  type(u"second"_s);
  die();
  startFromFile();
  EXPECT_EQ(textOf(config), u"second"_s);
}

TEST_F(Writing, ASaveTakesTheLinesOverAndAnEndInItsMiddleLeavesThem) {
  startSaved();
  type(u"one"_s);
  EXPECT_EQ(entries(), (QStringList{kFile, kNewer}));
  time.advance(10.01);
  EXPECT_EQ(savedText(), u"one"_s);
  EXPECT_EQ(entries(), QStringList{kFile});

  // The lines of a document that did not come through stand aside; the next are newer.
  type(u"two"_s);
  QFile::rename(at(kFile), at(u"kept"_s));
  ASSERT_TRUE(QDir(folder_.path()).mkdir(kFile));
  EXPECT_FALSE(writer->save().isEmpty());
  EXPECT_EQ(entries(), (QStringList{kFile, kOlder, u"kept"_s}));
  time.advance(1);
  type(u"three"_s);
  EXPECT_TRUE(entries().contains(kNewer));
  die();
  ASSERT_TRUE(QDir(folder_.path()).rmdir(kFile));
  QFile::rename(at(u"kept"_s), at(kFile));
  startFromFile();
  EXPECT_EQ(textOf(config), u"three"_s);
  time.advance(1);
  EXPECT_EQ(entries(), QStringList{kFile});
}

TEST_F(Writing, AnEndBetweenTheDocumentAndItsLinesBringsNoOlderValueBack) {
  const AsPlainUser user(folder_.path());
  startSaved();
  type(u"one"_s);
  time.advance(0.5);
  type(u"two"_s);  // Not noted yet when the save comes.
  EXPECT_EQ(content(kNewer).find("two"), std::string::npos);
  setMode(u"."_s, 0300);  // Nobody can ask whether the folder is on the disk.
  EXPECT_TRUE(writer->save().isEmpty());
  setMode(u"."_s, 0700);
  EXPECT_EQ(entries(), (QStringList{kFile, kOlder}));
  die();
  startFromFile();
  EXPECT_EQ(textOf(config), u"two"_s);
}

TEST_F(Writing, TheJournalStaysWithinItsLimitAndSaysTheLatest) {
  startSaved();
  QString text(90'000, u'x');
  for (int second = 0; second < 9; ++second) {
    type(text += QString(100, u'y'));
    time.advance(1);
  }
  type(text += QString(250'000, u'z'));
  EXPECT_LE(QFileInfo(at(kNewer)).size() + QFileInfo(at(kOlder)).size(), ContentJournal::kMostBytes);
  die();
  startFromFile();
  EXPECT_EQ(textOf(config), text);

  // What has no space at all is saved instead, with the others' lines kept meanwhile.
  time.advance(1);
  note(config).options.insert(u"small"_s, u"kept"_s);
  type(QString(ContentJournal::kMostBytes, u'w'));
  EXPECT_THAT(content(kOlder), HasSubstr("kept"));
  time.advance(1.01);
  EXPECT_EQ(savedText().size(), ContentJournal::kMostBytes);
}

TEST_F(Writing, AFailedSaveIsTriedAgainByItselfWithGrowingPauses) {
  startSaved();
  ASSERT_TRUE(QFile::remove(at(kFile)));
  ASSERT_TRUE(QDir(folder_.path()).mkpath(kFile + u"/in the way"_s));
  config.scale = 1.5;
  writer->changed(true);
  time.advance(1);
  ASSERT_EQ(failures.size(), 1);
  EXPECT_TRUE(failures[0].startsWith(u"Settings could not be saved: "_s));
  // After 5 seconds, after 10 more, after 20 more.
  double now = 1;
  const auto failuresAt = [&](double moment) {
    time.advance(moment - std::exchange(now, moment));
    return failures.size();
  };
  const std::pair<double, int> expected[] = {{5, 1}, {7, 2}, {15, 2}, {18, 3}, {35, 3}, {39, 4}};
  for (const auto& [moment, count] : expected) EXPECT_EQ(failuresAt(moment), count) << moment;
  EXPECT_EQ(failures.last(), u"again: "_s + failures[0]);
  ASSERT_TRUE(QDir(at(kFile)).removeRecursively());
  time.advance(41);
  EXPECT_EQ(failures.last(), QString());
  EXPECT_EQ(Persistence::read(at(kFile)).scale, 1.5);
  EXPECT_EQ(time.waiting(), 0);
}

TEST_F(Writing, AFailedSaveIsTriedAgainAsSoonAsThereIsRoom) {
  startSaved();
  qint64 left = 100;
  writer->freeBytes = [&](const QString&) { return std::optional(left); };
  {
    const AsFullDisk full(10);
    config.scale = 1.5;
    writer->changed(true);
    time.advance(1);
    EXPECT_EQ(failures.size(), 1);
    time.advance(1);
    EXPECT_EQ(failures.size(), 1) << "not before there is room";
  }
  left = 1 << 20;
  time.advance(1.1);
  EXPECT_EQ(failures.last(), QString());
  EXPECT_EQ(Persistence::read(at(kFile)).scale, 1.5);
}

TEST_F(Writing, AFaultyDocumentIsNotTriedAgainUntilItChanges) {
  startSaved();
  config.profiles[0].name.clear();
  writer->changed(true);
  time.advance(30);
  EXPECT_EQ(failures.size(), 1);
  EXPECT_EQ(time.waiting(), 0);
}

TEST_F(Writing, WhatWasEnteredIntoSettingsThatCannotBeLoadedIsKept) {
  startSaved();
  type(u"precious"_s);
  die();
  const std::string lines = content(kNewer);
  config = DockConfiguration();
  writer = std::make_unique<SettingsWriter>(time, at(kFile), [this]() -> const DockConfiguration& { return config; });
  writer->keepJournalAside(1700000000);
  EXPECT_EQ(content(u"content-recovery-1700000000.json"_s), lines);
  EXPECT_EQ(entries(), (QStringList{kFile, u"content-recovery-1700000000.json"_s}));
}

}  // namespace
}  // namespace tarnwick
