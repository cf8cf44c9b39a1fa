// The hook as a process, and what a reader makes of what it leaves.

#include <gtest/gtest.h>

#include <QCoroTask>
#include <QCryptographicHash>
#include <QProcess>
#include <QTimeZone>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Cancelled.h"
#include "base/ModuleLoader.h"
#include "claudehook/ActivityRecord.h"
#include "facilities/ActiveSets.h"
#include "services/RemoteFetch.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "usage/ClaudeActivity.h"
#include "usage/ClaudeActivityFollower.h"
#include "usage/ClaudeRecordFolder.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QString digestOf(const QByteArray& text) {
  return QString::fromLatin1(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}

/// A hook that was started and gets its event at once.
std::unique_ptr<QProcess> startHook(const QStringList& arguments, const QByteArray& event) {
  auto hook = std::make_unique<QProcess>();
  hook->start(ModuleLoader::find(u"tarnwick-claude-hook"_s), arguments);
  EXPECT_TRUE(hook->waitForStarted());
  hook->write(event);
  hook->closeWriteChannel();
  return hook;
}

void runHook(const QStringList& arguments, const QByteArray& event) {
  const auto hook = startHook(arguments, event);
  ASSERT_TRUE(hook->waitForFinished());
  EXPECT_EQ(hook->exitCode(), 0);
  EXPECT_EQ(hook->readAllStandardOutput() + hook->readAllStandardError(), QByteArray());
}

class ClaudeHookProcess : public FolderTest {
 protected:
  void run(const QByteArray& event) { runHook({u"--claude-hook"_s, at(u"Claude/Activity"_s)}, event); }
  QStringList left() const { return QDir(at(u"Claude/Activity"_s)).entryList(QDir::Files | QDir::Hidden); }
};

TEST_F(ClaudeHookProcess, LeavesOneSmallRecordForEachSession) {
  const QString name = digestOf("s/../1") + u".json"_s;
  run(R"({"hook_event_name":"PreToolUse","session_id":"s/../1","tool_name":")" + QByteArray("\xC3\xA4").repeated(300) +
      R"(","tool_input":{"command":["rm",{"deep":[1,2.5e3,null,true]}]}})");
  EXPECT_EQ(left(), QStringList{name});
  EXPECT_EQ(mode(u"Claude/Activity"_s), 0700U);
  EXPECT_EQ(mode(u"Claude/Activity/"_s + name), 0600U);
  const auto first = ClaudeActivityRecord::decoded(content(u"Claude/Activity/"_s + name));
  ASSERT_TRUE(first);
  EXPECT_EQ(first->state, "tool");
  EXPECT_EQ(QString::fromStdString(first->tool), QString(100, u'ä'));
  const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch()) - 978307200;
  EXPECT_LT(std::abs(first->time - now), 60);
  run(R"({"hook_event_name":"Stop","session_id":"s/../1","tool_name":7})");
  const auto second = ClaudeActivityRecord::decoded(content(u"Claude/Activity/"_s + name));
  ASSERT_TRUE(second);
  EXPECT_EQ(second->state, "idle");
  EXPECT_EQ(second->tool, "");
  EXPECT_EQ(left(), QStringList{name});
}

TEST_F(ClaudeHookProcess, LeavesNothingForWhatIsNoEvent) {
  const QByteArray large = R"({"hook_event_name":"Stop","session_id":"a","x":")";
  const QByteArray events[] = {
      R"({"hook_event_name":"Notification","session_id":"a"})",
      R"({"hook_event_name":"Stop","session_id":""})",
      R"({"hook_event_name":"Stop","session_id":5})",
      R"({"session_id":"a"})",
      R"([{"hook_event_name":"Stop","session_id":"a"}])",
      R"({"hook_event_name":"Stop","session_id":"a"} x)",
      "{\"hook_event_name\":\"Stop\",\"session_id\":\"\xC0\x80\"}",
      "{\"hook_event_name\":\"Stop\",\"session_id\":\"a\",\"x\":" + QByteArray(600, '[') + QByteArray(600, ']') + "}",
      "",
      large + QByteArray(2'000'001 - large.size() - 2, 'x') + "\"}",
  };
  for (const QByteArray& event : events) {
    run(event);
    EXPECT_EQ(left(), QStringList()) << event.left(80).constData();
  }
  // One byte less is an event.
  run(large + QByteArray(2'000'000 - large.size() - 2, 'x') + "\"}");
  EXPECT_EQ(left().size(), 1);
  for (const QStringList& arguments : {QStringList{}, {u"--claude-hook"_s}, {u"--other"_s, at(u"other"_s)}})
    runHook(arguments, R"({"hook_event_name":"Stop","session_id":"b"})");
  put(u"file"_s, "");
  runHook({u"--claude-hook"_s, at(u"file/below"_s)}, R"({"hook_event_name":"Stop","session_id":"b"})");
  EXPECT_EQ(entries().size(), 2) << "the folder and the file";
}

TEST_F(ClaudeHookProcess, ManyAtOnceLeaveWholeRecords) {
  std::vector<std::unique_ptr<QProcess>> hooks;
  for (int i = 0; i < 200; ++i) {
    const QByteArray session = i % 2 ? QByteArray("one") : "session " + QByteArray::number(i);
    hooks.push_back(
        startHook({u"--claude-hook"_s, at(u"Claude/Activity"_s)},
                  R"({"hook_event_name":"PreToolUse","tool_name":"Read","session_id":")" + session + "\"}"));
  }
  for (const auto& hook : hooks) EXPECT_TRUE(hook->waitForFinished());
  EXPECT_EQ(left().size(), 101) << "nothing aside is left";
  for (const QString& name : left()) {
    EXPECT_TRUE(ClaudeActivityRecord::isFileName(name.toStdString()));
    EXPECT_TRUE(ClaudeActivityRecord::decoded(content(u"Claude/Activity/"_s + name)));
  }
}

const QDateTime kNow(QDate(2026, 11, 28), QTime(12, 0), QTimeZone("Europe/Berlin"));

class ClaudeActivityReading : public FolderTest {
 protected:
  void record(const QString& session, const char* state, double age, const char* tool = "",
              const QString& folder = {}) {
    const double now = static_cast<double>(kNow.toSecsSinceEpoch()) - ClaudeActivityRecord::kReferenceDate;
    const QString digest = digestOf(session.toUtf8());
    const ClaudeActivityRecord each{digest.toStdString(), state, tool, now - age};
    put(folder + digest + u".json"_s, QByteArray::fromStdString(each.encoded()));
  }
  RemoteValue read() const { return ClaudeActivity::read(folder_.path(), kNow, QLocale(u"de_DE"_s)); }
};

TEST_F(ClaudeActivityReading, TellsWhatTheNewestBusySessionDoes) {
  EXPECT_EQ(ClaudeActivity::read(at(u"none"_s), kNow).value, u"No activity yet"_s);
  EXPECT_EQ(read().detail, u"Start a new Claude Code session after installing hooks."_s);
  const struct {
    const char* state;
    double age;
    const char* tool;
    QString label;
    QString row;
  } cases[] = {
      {"idle", 7200, "", u"No recent activity"_s, u"Session · 10:00"_s},
      {"permission", 3600, "", u"No recent activity"_s, u"Session · 11:00"_s},
      {"tool", 600, "Bash", u"Bash"_s, u"Bash · 11:50"_s},
      {"idle", 30, "", u"Bash"_s, u"Session · 11:59"_s},
      {"tool", 20, "", u"Using a tool"_s, u"Session · 11:59"_s},
      {"permission", 10, "", u"Awaiting permission"_s, u"Session · 11:59"_s},
      {"thinking", 5, "", u"Thinking"_s, u"Session · 11:59"_s},
      {"ended", 1, "", u"Thinking"_s, u"Session · 11:59"_s},
  };
  for (const auto& each : cases) {
    record(QString::fromLatin1(each.state) + QString::number(each.age), each.state, each.age, each.tool);
    const RemoteValue value = read();
    EXPECT_EQ(value.value, each.label) << each.state << ' ' << each.age;
    EXPECT_EQ(value.rows.first().subtitle, each.row);
    EXPECT_EQ(value.detail, u"Last event "_s + each.row.last(5));
  }
  EXPECT_EQ(read().subtitle, u"Claude Code · local activity"_s);
  EXPECT_EQ(read().rows.size(), std::size(cases));
  EXPECT_EQ(read().rows.first().at, kNow.addSecs(-1));
  EXPECT_EQ(read().activity, Activity::Busy);
  record(u"waits"_s, "permission", 0, "Edit");
  EXPECT_EQ(read().activity, Activity::Waiting);
}

TEST_F(ClaudeActivityReading, PassesOverWhatIsNoRecord) {
  record(u"future"_s, "thinking", -1);
  record(u"old"_s, "thinking", 86400);
  const QByteArray whole = QByteArray::fromStdString(
      ClaudeActivityRecord{digestOf("large").toStdString(), "thinking", "", 817000000}.encoded());
  put(u"large.json"_s, whole + QByteArray(10000 - whole.size(), ' '));
  put(u"broken.json"_s, "{");
  put(u"other.txt"_s, "{}");
  record(u"linked"_s, "thinking", 1);
  const QString target = digestOf("linked") + u".json"_s;
  ASSERT_TRUE(QFile::rename(at(target), at(u"elsewhere"_s)));
  ASSERT_TRUE(QFile::link(at(u"elsewhere"_s), at(u"link.json"_s)));
  ASSERT_EQ(::mkfifo(encoded(u"pipe.json"_s).constData(), 0600), 0);
  EXPECT_EQ(read().value, u"No activity yet"_s);
  for (int i = 0; i < 1000; ++i) record(QString::number(i), "thinking", 10 + i);
  EXPECT_EQ(read().rows.size(), 12);
  record(u"one more"_s, "thinking", 10);
  EXPECT_EQ(failureOf([this] { read(); }), "More than 1,000 active Claude sessions; activity is unavailable.");
}

TEST_F(ClaudeActivityReading, KnowsWhenTimeAloneChangesIt) {
  const auto seconds = [this] {
    const auto next = ClaudeActivity::find(folder_.path(), kNow).nextChange;
    return next ? kNow.secsTo(*next) : -1;
  };
  EXPECT_EQ(seconds(), -1);
  const struct {
    const char* session;
    double age;
    qint64 next;
  } cases[] = {
      {"beyond all clocks", -1e200, -1}, {"old", 90000, -1},
      {"not recent", 7200, 79200},       {"recent", 3000, 600},
      {"nearly forgotten", 86000, 400},  {"by a clock that was ahead", -30, 30},
  };
  for (const auto& each : cases) {
    record(QString::fromLatin1(each.session), "thinking", each.age);
    EXPECT_EQ(seconds(), each.next) << each.session;
  }
}

TEST_F(ClaudeActivityReading, OpensOnlyWhatSomethingHappenedTo) {
  const QString place = u"activity/"_s;
  const QString busy = place + digestOf("busy") + u".json"_s;
  for (int i = 0; i < 2000; ++i) put(place + u"%1.json"_s.arg(i), "{}");
  record(u"busy"_s, "thinking", 5, "", place);
  ClaudeRecordFolder folder(at(place));
  const struct {
    const char* what;
    std::function<void()> happens;
    qint64 opened;
    std::vector<std::string> states;  ///< The newest first.
  } cases[] = {
      {"the first look", [] {}, 2001, {"thinking"}},
      {"nothing", [] {}, 0, {"thinking"}},
      {"an event", [&] { record(u"busy"_s, "tool", 4, "Bash", place); }, 1, {"tool"}},
      {"another session", [&] { record(u"new"_s, "idle", 3, "", place); }, 1, {"idle", "tool"}},
      {"what no record is", [&] { put(place + u"notes.txt"_s, "{}"); }, 0, {"idle", "tool"}},
      {"a record that breaks", [&] { put(busy, "{"); }, 1, {"idle"}},
      {"and comes back", [&] { record(u"busy"_s, "permission", 2, "", place); }, 1, {"permission", "idle"}},
      {"one that goes", [&] { QFile::remove(at(busy)); }, 1, {"idle"}},
      {"a folder that goes", [&] { QDir().rename(at(u"activity"_s), at(u"older"_s)); }, 0, {}},
      {"and another one", [&] { record(u"busy"_s, "ended", 1, "", place); }, 1, {"ended"}},
  };
  for (const auto& each : cases) {
    each.happens();
    const qint64 before = folder.opened();
    std::vector<std::string> states;
    for (const ClaudeActivityRecord& found : folder.find(kNow).records) states.push_back(found.state);
    EXPECT_EQ(states, each.states) << each.what;
    EXPECT_EQ(folder.opened() - before, each.opened) << each.what;
  }
  // As many as are too many, and one less; then the clock is set back.
  for (int i = 0; i < 1000; ++i) record(QString::number(i), "thinking", 10 + i, "", place);
  EXPECT_EQ(failureOf([&] { folder.find(kNow); }), "More than 1,000 active Claude sessions; activity is unavailable.");
  QFile::remove(at(busy));
  EXPECT_EQ(folder.find(kNow).records.size(), 1000);
  EXPECT_EQ(folder.find(kNow.addDays(2)).records.size(), 0);
  EXPECT_EQ(folder.find(kNow).records.size(), 1000);
}

TEST_F(ClaudeActivityReading, EndsWhenNobodyWantsItAnyMore) {
  record(u"a"_s, "thinking", 1);
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(ClaudeActivity::find(folder_.path(), kNow, stop.get_token()), Cancelled);
}

TEST_F(ClaudeActivityReading, RemovesOldRecordsOfItsOwnAlone) {
  record(u"week"_s, "idle", 7 * 86400 + 1);
  record(u"newer"_s, "idle", 7 * 86400 - 1);
  // Under the name of another session, with another name, and what others keep.
  record(u"moved"_s, "idle", 8 * 86400);
  ASSERT_TRUE(QFile::rename(at(digestOf("moved") + u".json"_s), at(digestOf("x") + u".json"_s)));
  record(u"named"_s, "idle", 8 * 86400);
  ASSERT_TRUE(QFile::rename(at(digestOf("named") + u".json"_s), at(u"settings.json"_s)));
  put(u"notes.json"_s, "{}");
  const QStringList before = entries();
  read();
  EXPECT_EQ(entries(), before) << "a reader changes nothing";
  EXPECT_EQ(ClaudeActivity::removeOld(folder_.path(), kNow), 1);
  EXPECT_FALSE(entries().contains(digestOf("week") + u".json"_s));
  EXPECT_EQ(entries().size(), before.size() - 1);
}

/// What follows the folder, over a clock that the test sets.
class ClaudeActivityFollowing : public FolderTest {
 protected:
  void beat(bool isShown = true) {
    clock.advance(2);
    if (isShown) follower->beat(ActiveSets::of({widget}));
  }
  /// Runs the loop until the folder's change is noticed.
  bool isReadAgain(int before) {
    return waitFor(clock, [&] { return reads > before; });
  }
  void record(const char* state, const QDateTime& time) {
    const double seconds = static_cast<double>(time.toSecsSinceEpoch()) - ClaudeActivityRecord::kReferenceDate;
    const ClaudeActivityRecord each{digestOf("s").toStdString(), state, "", seconds};
    // As the hook does: beside its place first.
    const QString place = u"activity/"_s + digestOf("s") + u".json"_s;
    put(place + u".1"_s, QByteArray::fromStdString(each.encoded()));
    ASSERT_EQ(::rename(encoded(place + u".1"_s).constData(), encoded(place).constData()), 0);
  }
  /// As the store has it read.
  QString read() {
    QString shown;
    RemoteFetch fetch(
        clock, [this](std::stop_token stop) { return reader(widget, stop); },
        [&](const RemoteValue& value) { shown = value.value.value_or(QString()); },
        [&](const FetchFailure& failure) { shown = failure.sentence; });
    clock.advance(0);
    EXPECT_TRUE(waitFor([&] { return !shown.isEmpty(); }));
    return shown;
  }

  test::TestScheduler clock;
  int reads = 0;
  bool isDeadline = false;  ///< The last one, that is.
  DockWidget widget{QUuid::createUuid(),
                    kind::analyticsClaudeCodeStatus,
                    {},
                    {{option::connectionMode, value::claudeActivity}, {option::historyDirectory, at(u"activity"_s)}}};
  std::unique_ptr<ClaudeActivityFollower> follower = std::make_unique<ClaudeActivityFollower>(
      clock,
      [this](const DockWidget&, RemoteValues::Cause cause) {
        ++reads;
        isDeadline = cause == RemoteValues::Cause::Deadline;
      },
      at(u"own"_s));
  LocalReader reader = follower->reader();
};

TEST_F(ClaudeActivityFollowing, ReadsWhenSomethingHappensAndNotOtherwise) {
  EXPECT_TRUE(follower->isNeededBy(ActiveSets::of({widget})));
  EXPECT_FALSE(follower->isNeededBy(ActiveSets::of({})));
  beat();
  EXPECT_EQ(reads, 1) << "nobody looked yet";
  EXPECT_EQ(read(), u"No activity yet"_s);
  for (int i = 0; i < 100; ++i) beat();
  EXPECT_EQ(reads, 1);
  record("thinking", clock.now());  // With its folder, which was not there.
  EXPECT_TRUE(isReadAgain(1));
  EXPECT_FALSE(isDeadline);
  EXPECT_EQ(read(), u"Thinking"_s);
  // What the time alone changes: an hour after the event.
  const int before = reads;
  while (reads == before) beat();
  EXPECT_TRUE(isDeadline);
  EXPECT_EQ(read(), u"No recent activity"_s);
  // After a time in which no tile was shown.
  clock.advance(10);
  record("idle", clock.now());
  const int unseen = reads;
  EXPECT_TRUE(waitFor([&] {
    beat();
    return reads > unseen;
  }));
  EXPECT_EQ(read(), u"Idle"_s);
}

TEST_F(ClaudeActivityFollowing, RemovesOldRecordsOfItsOwnFolderOnceADay) {
  const auto putOld = [this] {
    const double old = static_cast<double>(clock.now().toSecsSinceEpoch()) - ClaudeActivityRecord::kReferenceDate;
    const ClaudeActivityRecord each{digestOf("s").toStdString(), "idle", "", old - 8 * 86400};
    for (const QString& folder : {u"own/"_s, u"activity/"_s})
      put(folder + digestOf("s") + u".json"_s, QByteArray::fromStdString(each.encoded()));
  };
  const auto isThere = [this](const QString& folder) { return QFile::exists(at(folder + digestOf("s") + u".json"_s)); };
  putOld();
  beat();
  EXPECT_TRUE(waitFor([&] { return !isThere(u"own/"_s); }));
  EXPECT_TRUE(isThere(u"activity/"_s)) << "another folder's records are not ours";
  putOld();
  clock.advance(86400);
  beat();
  EXPECT_TRUE(waitFor([&] { return !isThere(u"own/"_s); }));
}

TEST_F(ClaudeActivityFollowing, AnnouncesOnceThatASessionBeganToWait) {
  QStringList said;
  QObject::connect(follower.get(), &ClaudeActivityFollower::called,
                   [&](const DockWidget&, const QString& sentence) { said << sentence; });
  const auto event = [&](const char* session, const char* state, const char* tool) {
    const double seconds = static_cast<double>(clock.now().toSecsSinceEpoch()) - ClaudeActivityRecord::kReferenceDate;
    const QString digest = digestOf(session);
    put(u"activity/"_s + digest + u".json"_s,
        QByteArray::fromStdString(ClaudeActivityRecord{digest.toStdString(), state, tool, seconds}.encoded()));
  };
  event("old", "permission", "Read");
  read();
  widget.options.insert(option::announcesPermission, value::on);
  read();
  EXPECT_EQ(said, QStringList()) << "what waited before the first look is no news";
  const struct {
    const char* session;
    const char* state;
    const char* tool;
    QString said;
  } cases[] = {
      {"a", "thinking", "", {}},
      {"a", "permission", "Bash", u"A session waits for your permission to use Bash."_s},
      {"b", "permission", "", u"A session waits for your permission."_s},
      {"a", "tool", "Bash", {}},
      {"a", "permission", "Bash", u"A session waits for your permission to use Bash."_s},
  };
  for (const auto& each : cases) {
    clock.advance(1);
    event(each.session, each.state, each.tool);
    read();
    read();
    EXPECT_EQ(said.join(u'|'), each.said) << each.session << ' ' << each.state;
    said.clear();
  }
  clock.advance(1);
  event("c", "permission", "Bash");
  event("d", "permission", "Edit");
  read();
  EXPECT_EQ(said, QStringList{u"2 sessions wait for your permission."_s});
}

TEST_F(ClaudeActivityFollowing, SaysWhatIsMissing) {
  widget.options.remove(option::historyDirectory);
  EXPECT_EQ(read(), u"Install the activity hooks in this widget’s settings."_s);
}

}  // namespace
}  // namespace tarnwick
