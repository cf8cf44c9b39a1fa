#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

#include "clipboard/ClipboardOwners.h"
#include "clipboard/ClipboardRecorder.h"
#include "support/FakePasteboard.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::FakePasteboard;
using Program = FakePasteboard::Program;

const QString kUtf8 = u"text/plain;charset=utf-8"_s;

Program program(const QString& name, const QList<PasteboardOffer::Form>& forms) { return {name, forms, {}, {}, {}}; }
Program writer(const QString& text) { return program(u"writer"_s, {{kUtf8, text.toUtf8()}}); }
Program vault(const QString& text = u"secret"_s) {
  return program(u"vault"_s, {{u"x-kde-passwordManagerHint"_s, "no"}, {kUtf8, text.toUtf8()}});
}

QByteArray pictureIn(const char* format) {
  QImage image(2, 2, QImage::Format_RGB32);
  image.fill(Qt::red);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}
QByteArray bitmap() { return pictureIn("BMP"); }

/// Says in its header that it is a hundred thousand pixels wide and high.
QByteArray bomb() {
  QByteArray bytes = pictureIn("PNG");
  bytes.replace(16, 8, QByteArray::fromHex("000186a0000186a0")).replace(29, 4, QByteArray::fromHex("27309c9f"));
  return bytes;
}

class ClipboardRecorderTest : public FolderTest {
 protected:
  void SetUp() override { begin(true); }
  void begin(bool enabled) {
    recorder = std::make_unique<ClipboardRecorder>(pasteboard, *history);
    DockConfiguration config;
    config.clipboardEnabled = enabled;
    recorder->start(config, shown());
  }
  static ActiveSets shown() {
    ActiveSets active;
    active.kinds.insert(QString(kind::clipboard));
    return active;
  }
  /// Until every answer came and the history has done its work.
  void settle() {
    ASSERT_TRUE(waitFor([this] {
      pasteboard.answerAll();
      return !recorder || !recorder->isReading();
    }));
    for (int round = 0; round < 3; ++round) {
      pasteboard.answerAll();
      bool isDone = false;
      history->load([&] { isDone = true; });
      ASSERT_TRUE(waitFor([&] { return isDone; }));
    }
  }
  void copy(const Program& what) {
    pasteboard.copy(what);
    settle();
  }
  /// The history, newest first.
  QStringList kept() const {
    QStringList values;
    for (const auto& entry : history->items()) {
      const bool isPicture = entry.kind == ClipboardEntry::Kind::Image;
      values.append(rawText(entry.kind) + u' ' + (isPicture ? QString() : entry.value));
    }
    return values;
  }

  FakePasteboard pasteboard;
  test::TestScheduler clock;
  std::unique_ptr<ClipboardHistory> history = std::make_unique<ClipboardHistory>(folder_.path(), clock);
  std::unique_ptr<ClipboardRecorder> recorder;
};

TEST_F(ClipboardRecorderTest, FilesWinOverPicturesAndPicturesOverText) {
  const QByteArray list =
      "# of a browser\r\nhttps://example.com\r\nfile:///home/ann/%C3%A4%20b.txt\r\nfile:///other\r\n";
  using End = PasteboardContent::End;
  const struct {
    const char* what;
    Program program;
    QStringList kept;
    QStringList asked;  ///< Of which types.
  } cases[] = {
      {"a file",
       program(u"p"_s, {{kUtf8, "b.txt"}, {u"image/png"_s, bitmap()}, {u"text/uri-list"_s, list}}),
       {u"file /home/ann/ä b.txt"_s},
       {u"text/uri-list"_s}},
      {"of a file manager",
       program(u"p"_s, {{u"x-special/gnome-copied-files"_s, "copy\nfile:///a"}}),
       {u"file /a"_s},
       {u"x-special/gnome-copied-files"_s}},
      {"an address is no file",
       program(u"p"_s, {{u"text/uri-list"_s, "https://example.com\r\n"}, {kUtf8, "example.com"}}),
       {u"link example.com"_s},
       {u"text/uri-list"_s, kUtf8}},
      {"a file elsewhere",
       program(u"p"_s, {{u"text/uri-list"_s, "file://other.host/a\r\nfile:b\r\n"}, {kUtf8, "a"}}),
       {u"text a"_s},
       {u"text/uri-list"_s, kUtf8}},
      {"a picture", program(u"p"_s, {{kUtf8, "cell"}, {u"image/bmp"_s, bitmap()}}), {u"image "_s}, {u"image/bmp"_s}},
      {"no picture after all",
       program(u"p"_s, {{kUtf8, "cell"}, {u"image/bmp"_s, "text"}}),
       {u"text cell"_s},
       {u"image/bmp"_s, kUtf8}},
      {"a bomb", program(u"p"_s, {{kUtf8, "cell"}, {u"image/png"_s, bomb()}}), {}, {u"image/png"_s}},
      {"the richest text once",
       program(u"p"_s, {{u"STRING"_s, "?"}, {u"text/html"_s, "<b>"}, {u"UTF8_STRING"_s, "ä"}, {u"TEXT"_s, "?"}}),
       {u"text ä"_s},
       {u"UTF8_STRING"_s}},
      {"old text", program(u"p"_s, {{u"STRING"_s, "\xe4"}}), {u"text ä"_s}, {u"STRING"_s}},
      {"not what it says", program(u"p"_s, {{u"text/plain"_s, "\xe4"}}), {u"text ä"_s}, {u"text/plain"_s}},
      {"letters of a type",
       program(u"p"_s, {{u"text/plain;charset=UTF-8"_s, "#abc"}}),
       {u"color #abc"_s},
       {u"text/plain;charset=UTF-8"_s}},
      {"an empty text", writer({}), {}, {kUtf8}},
      {"nothing that is known", program(u"p"_s, {{u"application/x-own"_s, "a"}}), {}, {}},
      {"100,000 bytes", writer(QString(100'000, u'a')), {u"text "_s + QString(100'000, u'a')}, {kUtf8}},
      {"100,001 bytes", writer(QString(100'001, u'a')), {}, {kUtf8}},
      {"a flood, whose other forms are no way around it",
       program(u"p"_s, {{kUtf8, QByteArray(1 << 20, 'a')}, {u"STRING"_s, "a"}}),
       {},
       {kUtf8}},
      {"a refusal", {u"p"_s, {{kUtf8, "a"}, {u"STRING"_s, "b"}}, {}, {kUtf8}, {}}, {u"text b"_s}, {kUtf8, u"STRING"_s}},
      {"a stall", {u"p"_s, {{u"image/bmp"_s, bitmap()}, {kUtf8, "a"}}, {}, {}, End::TooSlow}, {}, {u"image/bmp"_s}},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    history->clear();
    pasteboard.asked.clear();
    copy(each.program);
    EXPECT_EQ(kept(), each.kept);
    QStringList asked;
    for (const QString& type : each.asked) asked.append(each.program.name + u' ' + type);
    EXPECT_EQ(pasteboard.asked, asked);
  }
}

TEST_F(ClipboardRecorderTest, AMarkedCopyIsNotLookedAt) {
  for (const QString& marker : {u"org.nspasteboard.ConcealedType"_s, u"org.nspasteboard.TransientType"_s,
                                u"org.nspasteboard.AutoGeneratedType"_s, u"x-kde-passwordManagerHint"_s}) {
    copy(program(u"vault"_s, {{kUtf8, "again"}, {marker, {}}}));
  }
  EXPECT_EQ(pasteboard.asked, QStringList());
  EXPECT_EQ(kept(), QStringList());
  copy(writer(u"again"_s));
  EXPECT_EQ(kept(), QStringList{u"text again"_s});
}

TEST_F(ClipboardRecorderTest, AHandOverToAMarkedOwnerGivesNothingAway) {
  for (int round = 0; round < 500; ++round) {
    pasteboard.copy(writer(u"plain %1"_s.arg(round)));
    // Before the types came, before the content came, and before it was known that nobody else is there.
    for (int answers = round % 3; answers > 0; --answers) pasteboard.answerOne();
    round % 2 == 0 ? pasteboard.copy(vault()) : pasteboard.copySilently(vault());
    pasteboard.answerAll();
    pasteboard.deliverNews();
    pasteboard.answerAll();
  }
  settle();
  EXPECT_EQ(kept(), QStringList());
  EXPECT_EQ(pasteboard.asked.filter(u"vault"_s), QStringList());
  EXPECT_FALSE(pasteboard.asked.isEmpty());
}

TEST_F(ClipboardRecorderTest, TwoCopiesWithinASecondAreTwoEntries) {
  copy(writer(u"one"_s));
  copy(writer(u"two"_s));
  EXPECT_EQ(kept(), (QStringList{u"text two"_s, u"text one"_s}));
  pasteboard.set(PasteboardOffer::text(u"one"_s));
  settle();
  EXPECT_EQ(kept(), (QStringList{u"text one"_s, u"text two"_s})) << "our own, too";
}

TEST_F(ClipboardRecorderTest, WhatIsCopiedWhileNothingIsRecordedIsPassedOver) {
  const struct {
    const char* what;
    std::function<void()> stop, goOn;
  } cases[] = {
      {"paused", [&] { recorder->setEnabled(false); }, [&] { recorder->setEnabled(true); }},
      {"no widget", [&] { recorder->follow(ActiveSets()); }, [&] { recorder->follow(shown()); }},
      {"locked", [&] { recorder->setLocked(true); }, [&] { recorder->setLocked(false); }},
      {"not begun", [&] { recorder.reset(); }, [&] { begin(true); }},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    history->clear();
    pasteboard.copy(writer(u"under way"_s));
    pasteboard.answerOne();
    each.stop();
    settle();
    copy(writer(u"meanwhile"_s));
    pasteboard.copySilently(writer(u"just before"_s));
    pasteboard.deliverNews();
    each.goOn();
    settle();
    EXPECT_EQ(kept(), QStringList());
    copy(writer(u"then"_s));
    EXPECT_EQ(kept(), QStringList{u"text then"_s});
  }
}

TEST_F(ClipboardRecorderTest, NothingIsAskedOfAnOwnerThatIsListed) {
  recorder->setNeverFrom([](const PasteboardOwner& owner) { return owner.applicationId == u"Vault"; });
  Program listed = writer(u"a"_s);
  listed.owner.applicationId = u"Vault"_s;
  copy(listed);
  EXPECT_EQ(pasteboard.asked, QStringList());
  copy(writer(u"of somebody unknown"_s));
  EXPECT_EQ(kept(), QStringList{u"text of somebody unknown"_s});
}

TEST_F(ClipboardRecorderTest, WhatIsCopiedBeforeOwnersCanBeJudgedWaits) {
  recorder->setReady(false);
  copy(writer(u"gone by then"_s));
  copy(writer(u"still there"_s));
  EXPECT_EQ(pasteboard.asked, QStringList());
  recorder->setReady(true);
  settle();
  EXPECT_EQ(kept(), QStringList{u"text still there"_s});
  recorder->setReady(false);
  copy(writer(u"while it was off"_s));
  recorder->setEnabled(false);
  recorder->setEnabled(true);
  recorder->setReady(true);
  settle();
  EXPECT_EQ(kept().size(), 1);
}

TEST(ClipboardOwners, AreKnownByTheirWindowsOrTheirProcesses) {
  DesktopEntry vault;
  vault.id = u"org.example.Vault"_s;
  vault.exec = u"/usr/bin/vault %U"_s;
  vault.startupWmClass = u"Vault"_s;
  const AppIndex apps({}, {vault}, {}, {});
  const struct {
    const char* what;
    PasteboardOwner owner;
    QString application;
  } cases[] = {
      {"by its class", {u"Vault"_s, {}, {}, 0}, vault.id},
      {"by its process", {{}, {}, {}, 7}, vault.id},
      {"another process", {{}, {}, {}, 8}, {}},
      {"nobody", {}, {}},
  };
  for (const auto& each : cases) {
    const auto executableOf = [](qint64 pid) { return pid == 7 ? u"vault"_s : u"other"_s; };
    EXPECT_EQ(ClipboardOwners::applicationOf(each.owner, apps, executableOf), each.application) << each.what;
  }
}

TEST_F(ClipboardRecorderTest, WhatWentWithItsProgramCanStillBePasted) {
  const struct {
    const char* what;
    std::function<void()> happen;
    std::optional<PasteboardOffer> revived;
  } cases[] = {
      {"a text", [&] { copy(writer(u"a"_s)); }, PasteboardOffer::text(u"a"_s)},
      {"a file",
       [&] {
         copy(program(u"p"_s, {{u"text/uri-list"_s, "file:///a%20b"}}));
       },
       PasteboardOffer::file(u"/a b"_s)},
      {"before it was written",
       [&] {
         pasteboard.copy(writer(u"quick"_s));
         pasteboard.answerAll();
       },
       PasteboardOffer::text(u"quick"_s)},
      {"marked",
       [&] {
         copy(writer(u"a"_s));
         copy(vault());
       },
       std::nullopt},
      {"not read to the end",
       [&] {
         copy(writer(u"a"_s));
         pasteboard.copy(writer(u"b"_s));
         pasteboard.answerOne();
       },
       std::nullopt},
      {"removed meanwhile",
       [&] {
         copy(writer(u"a"_s));
         history->remove(history->items().first().id, history.get(), [](const auto&) {});
         settle();
       },
       std::nullopt},
      {"copied while paused",
       [&] {
         copy(writer(u"a"_s));
         recorder->setEnabled(false);
         copy(writer(u"b"_s));
         recorder->setEnabled(true);
       },
       std::nullopt},
      {"cleared",
       [&] {
         copy(writer(u"a"_s));
         pasteboard.empty(PasteboardChange::Cleared);
       },
       std::nullopt},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    history->clear();
    pasteboard.offered = {};
    each.happen();
    pasteboard.empty(PasteboardChange::OwnerGone);
    settle();
    EXPECT_EQ(pasteboard.offered, each.revived.value_or(PasteboardOffer()));
    EXPECT_EQ(pasteboard.isEmpty(), !each.revived);
  }
}

TEST_F(ClipboardRecorderTest, WhatIsRevivedIsNoNewCopy) {
  copy(writer(u"a"_s));
  const QList<ClipboardEntry> before = history->items();
  clock.advance(60);
  pasteboard.asked.clear();
  pasteboard.empty(PasteboardChange::OwnerGone);
  settle();
  EXPECT_FALSE(pasteboard.isEmpty());
  EXPECT_EQ(history->items(), before);
  EXPECT_EQ(pasteboard.asked, QStringList());
}

TEST_F(ClipboardRecorderTest, APictureIsRevivedFromItsFile) {
  copy(program(u"p"_s, {{u"image/bmp"_s, bitmap()}}));
  ASSERT_EQ(history->items().size(), 1);
  pasteboard.empty(PasteboardChange::OwnerGone);
  settle();
  ASSERT_EQ(pasteboard.offered.forms.size(), 1);
  EXPECT_EQ(pasteboard.offered.forms.first().type, u"image/png"_s);
  EXPECT_EQ(QImage::fromData(pasteboard.offered.forms.first().bytes).size(), QSize(2, 2));
}

TEST_F(ClipboardRecorderTest, ARunThatReplacesAnotherTakesOverWhatThatOneHeld) {
  const auto putB = [&] {
    pasteboard.set(PasteboardOffer::text(u"b"_s));
    settle();
  };
  const struct {
    const char* what;
    std::function<void()> before;  ///< What the other one does last.
    PasteboardChange end;          ///< What becomes of the clipboard with it.
    bool isOffered;
    bool isNoticedLate = false;  ///< That what it held is gone.
  } cases[] = {
      {"it held a copy", putB, PasteboardChange::OwnerGone, true},
      {"it holds it for a while", putB, PasteboardChange::Cleared, true, true},
      {"somebody copies in that while", putB, PasteboardChange::Taken, false, true},
      {"somebody has it", putB, PasteboardChange::Taken, false},
      {"it was cleared",
       [&] {
         putB();
         pasteboard.empty(PasteboardChange::Cleared);
       },
       PasteboardChange::Cleared, false},
      {"another program held it", [&] { copy(writer(u"b"_s)); }, PasteboardChange::OwnerGone, false},
      {"it was marked",
       [&] {
         putB();
         copy(vault());
       },
       PasteboardChange::OwnerGone, false},
      {"it was put there while nothing was recorded",
       [&] {
         recorder->setEnabled(false);
         putB();
         recorder->setEnabled(true);
       },
       PasteboardChange::OwnerGone, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    history->clear();
    copy(writer(u"a"_s));
    each.before();
    recorder->end();
    recorder.reset();
    pasteboard.offered = {};
    const auto happens = [&] {
      each.end == PasteboardChange::Taken ? pasteboard.copy(writer(u"c"_s)) : pasteboard.empty(each.end);
    };
    if (!each.isNoticedLate) happens();
    begin(true);
    recorder->takeOver();
    settle();
    if (each.isNoticedLate) happens();
    settle();
    EXPECT_EQ(pasteboard.offered, each.isOffered ? PasteboardOffer::text(u"b"_s) : PasteboardOffer());
    pasteboard.offered = {};
    pasteboard.empty(PasteboardChange::Cleared);
    recorder->takeOver();
    settle();
    EXPECT_EQ(pasteboard.offered, PasteboardOffer()) << "it is taken over once";
  }
}

TEST_F(ClipboardRecorderTest, AtItsEndItHandsOverAndListensNoMore) {
  copy(writer(u"b"_s));
  recorder->end();
  EXPECT_EQ(pasteboard.handedOver, 1);
  copy(writer(u"c"_s));
  EXPECT_EQ(kept().first(), u"text b"_s);
}

}  // namespace
}  // namespace tarnwick
