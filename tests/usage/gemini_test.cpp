#include <gtest/gtest.h>

#include <QTimeZone>
#include <atomic>
#include <thread>

#include "support/FileTest.h"
#include "support/Wait.h"
#include "usage/GeminiHistory.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QDateTime kGeminiNow(QDate(2026, 11, 28), QTime(0, 30), QTimeZone("Europe/Berlin"));

QByteArray message(const char* id, const char* time, const QByteArray& tokens) {
  return QByteArray(R"({"type":"gemini","id":")") + id + R"(","timestamp":")" + time + R"(","tokens":{"total":)" +
         tokens + "}}";
}
QByteArray recording(const char* session, const QByteArrayList& messages) {
  return QByteArray(R"({"sessionId":")") + session + R"(","messages":[)" + messages.join(',') + "]}";
}

class GeminiRecordings : public FolderTest {
 protected:
  std::string failure() const {
    return failureOf([this] { GeminiHistory::read(folder_.path(), kGeminiNow); });
  }
  /// Month, day and answers.
  QString read() const {
    const RemoteValue value = GeminiHistory::read(folder_.path(), kGeminiNow);
    EXPECT_EQ(value.subtitle, u"Tokens this month · local estimate"_s);
    return value.value.value_or(QString()) + u' ' + value.metrics.value(0).value + u' ' + value.metrics.value(1).value;
  }
};

TEST_F(GeminiRecordings, CountTowardsTheirDayAndMonthOnce) {
  EXPECT_EQ(failure(), "No Gemini CLI session recordings were found in this folder.");
  // In that zone it is the 28th since 23:00 UTC, and the month began as early.
  put(u"p/chats/session-1.json"_s,
      recording("s", {message("a", "2026-11-27T23:00:00.000Z", "1000"), message("b", "2026-11-27T22:59:59Z", "200"),
                      message("c", "2026-10-31T23:00:00Z", "30"), message("d", "2026-10-31T22:59:59Z", "4000"),
                      R"({"type":"user","tokens":"none"})"}));
  // In figures that what shows them can write otherwise.
  const QLocale before;
  QLocale::setDefault(QLocale(u"de_DE"_s));
  EXPECT_EQ(read(), u"1,230 1,000 3"_s);
  QLocale::setDefault(before);
  // A session that was resumed repeats what it had; the newer file is right.
  put(u"chats/deep/session-2.jsonl"_s, "{\"sessionId\":\"s\"}\n\n" + message("a", "2026-11-27T23:00:00Z", "1500") +
                                           "\n" + message("e", "2026-11-27T23:30:00Z", "0.0") + "\n");
  QFile newer(at(u"chats/deep/session-2.jsonl"_s));
  ASSERT_TRUE(newer.open(QIODevice::ReadWrite));
  ASSERT_TRUE(newer.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime));
  newer.close();
  EXPECT_EQ(read(), u"1,730 1,500 4"_s);
  // What is no recording, or leads elsewhere, is none.
  put(u"chats/note.json"_s, "broken");
  put(u"other/session-3.json"_s, "broken");
  ASSERT_TRUE(QFile::link(at(u"other/session-3.json"_s), at(u"chats/session-4.json"_s)));
  ASSERT_TRUE(QFile::link(at(u"p"_s), at(u"chats/session-p"_s)));
  EXPECT_EQ(read(), u"1,730 1,500 4"_s);
}

TEST_F(GeminiRecordings, AreShownWholeOrNotAtAll) {
  const char* kUnsupported = "Unsupported Gemini session recording.";
  const char* kIncomplete = "Gemini returned an incomplete message record.";
  const char* kInvalid = "Invalid Gemini token count.";
  const char* when = "2026-11-27T23:00:00Z";
  const struct {
    QString name;
    QByteArray data;
    std::string sentence;
  } cases[] = {
      {u"json"_s, "[]", kUnsupported},
      {u"json"_s, R"({"sessionId":"s"})", kUnsupported},
      {u"json"_s, R"({"sessionId":"s","messages":[1]})", kUnsupported},
      {u"jsonl"_s, "{\"sessionId\":\"s\"}\n[]", kUnsupported},
      {u"jsonl"_s, message("a", when, "1"), "Gemini session identity is missing."},
      {u"json"_s, recording("", {}), "Gemini session identity is missing."},
      {u"json"_s, recording("s", {message("", when, "1")}), kIncomplete},
      {u"json"_s, recording("s", {message("a", "yesterday", "1")}), kIncomplete},
      {u"json"_s, recording("s", {R"({"type":"gemini","id":"a","timestamp":"2026-11-27T23:00:00Z"})"}), kIncomplete},
      {u"json"_s, recording("s", {message("a", when, "-1")}), kInvalid},
      {u"json"_s, recording("s", {message("a", when, "1e16")}), kInvalid},
      {u"json"_s, recording("s", {message("a", when, R"("5")")}), kInvalid},
      {u"json"_s, recording("s", {message("a", when, "true")}), kInvalid},
  };
  for (const auto& each : cases) {
    const QString name = u"chats/session-x."_s + each.name;
    put(name, each.data);
    EXPECT_EQ(failure(), each.sentence) << each.data.constData();
    QFile::remove(at(name));
  }
  EXPECT_EQ(failureOf([this] { GeminiHistory::read(at(u"none"_s), kGeminiNow); }),
            "The selected folder cannot be read.");
  ASSERT_TRUE(QFile::link(at(u"chats"_s), at(u"link"_s)));
  for (const QString& link : {u"link"_s, u"link/"_s})
    EXPECT_EQ(failureOf([&] { GeminiHistory::read(at(link), kGeminiNow); }), "The selected folder cannot be read.");
  put(u"chats/session-1.json"_s, recording("s", {}));
  QDir().mkdir(at(u"closed"_s));
  setMode(u"closed"_s, 0);
  {
    const AsPlainUser user(folder_.path());
    EXPECT_EQ(failure(), "Part of the selected Gemini directory could not be read. No partial total is shown.");
  }
}

TEST_F(GeminiRecordings, AreNotCountedWhileTheyAreWritten) {
  put(u"chats/session-1.json"_s, recording("s", {}));
  std::atomic<bool> isOver = false;
  std::jthread writer([&] {
    QFile file(at(u"chats/session-1.json"_s));
    if (!file.open(QIODevice::Append)) return;
    while (!isOver) {
      file.write(" ");
      file.flush();
    }
  });
  // A blank more is the same answer, so that only the writing itself can be what is told.
  const bool isTold = waitFor([this] {
    return failure() == "A Gemini recording changed while it was read. Refresh after the current response finishes.";
  });
  isOver = true;
  EXPECT_TRUE(isTold);
}

TEST_F(GeminiRecordings, AreNotReadBeyondTheirLimits) {
  const std::string tooMuch =
      "The local history exceeds the refresh limit. Choose a smaller chat directory; no partial total is shown.";
  const QByteArray one = recording("s", {});
  const auto padded = [&one](qsizetype size) { return one + QByteArray(size - one.size(), ' '); };
  put(u"chats/session-1.json"_s, padded(8'000'000));
  EXPECT_EQ(failure(), "");
  put(u"chats/session-1.json"_s, padded(8'000'001));
  EXPECT_EQ(failure(), tooMuch);
  for (int i = 1; i <= 4; ++i) put(u"chats/session-%1.json"_s.arg(i), padded(8'000'000));
  EXPECT_EQ(failure(), "");
  put(u"chats/session-5.json"_s, one);
  EXPECT_EQ(failure(), tooMuch);
  ASSERT_TRUE(QDir(at(u"chats"_s)).removeRecursively());
  for (int i = 1; i <= 2000; ++i) put(u"chats/session-%1.json"_s.arg(i), one);
  EXPECT_EQ(read(), u"0 0 0"_s);
  put(u"chats/session-2001.json"_s, one);
  EXPECT_EQ(failure(), tooMuch);
}

}  // namespace
}  // namespace tarnwick
