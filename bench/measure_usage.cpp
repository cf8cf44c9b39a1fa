// What it costs to follow what AI tools leave on this machine:
//
//   measure_usage hook                 Claude Code's hook, 200 runs beside as many of /bin/true, and how many files
//   each opens measure_usage activity             a folder of 1,000 sessions, and one with 100,000 files besides
//   measure_usage recordings           2,000 recordings of Gemini CLI, 32 MB
//   measure_usage database [FOLDER]    databases of OpenCode of nearly 2 GB, made in FOLDER (/tmp) and removed
//
// Without a word all of them. What is read is read as a tile has it read, and the longest turn of the main thread
// meanwhile is told, as in measure_services.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "MeasuredTurns.h"
#include "base/ModuleLoader.h"
#include "claudehook/ActivityRecord.h"
#include "claudehook/Digest.h"
#include "platform/sqlite/SqliteDatabases.h"
#include "services/RemoteFetch.h"
#include "usage/ClaudeActivityFollower.h"
#include "usage/LocalReaders.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kRuns = 200;
const QByteArray kEvent =
    R"({"session_id":"0b1c","hook_event_name":"PreToolUse","tool_name":"Bash","tool_input":{"command":")" +
    QByteArray(4000, 'x') + "\"}}";

/// From the start of a program to its end, in milliseconds, with something on its input.
double timeOf(const std::vector<QByteArray>& words, const QByteArray& input) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return -1;
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, ends[0], STDIN_FILENO);
  std::vector<char*> pointers;
  for (const QByteArray& word : words) pointers.push_back(const_cast<char*>(word.constData()));
  pointers.push_back(nullptr);
  const auto before = std::chrono::steady_clock::now();
  pid_t process = 0;
  if (::posix_spawn(&process, pointers[0], &files, nullptr, pointers.data(), environ) != 0) return -1;
  posix_spawn_file_actions_destroy(&files);
  ::close(ends[0]);
  (void)!::write(ends[1], input.constData(), static_cast<std::size_t>(input.size()));
  ::close(ends[1]);
  ::waitpid(process, nullptr, 0);
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - before).count();
}

/// How many files a program opens; -1 where nobody can tell.
int opensOf(const QString& program, const QStringList& arguments, const QString& folder) {
  const QString trace = folder + u"/trace"_s;
  QProcess traced;
  traced.start(u"strace"_s,
               QStringList{u"-f"_s, u"-qq"_s, u"-e"_s, u"trace=open,openat,openat2,creat"_s, u"-o"_s, trace, program} +
                   arguments);
  if (!traced.waitForStarted()) return -1;
  traced.write(kEvent);
  traced.closeWriteChannel();
  traced.waitForFinished();
  QFile lines(trace);
  return lines.open(QIODevice::ReadOnly) ? static_cast<int>(lines.readAll().count('\n')) : -1;
}

void measureHook() {
  const QTemporaryDir folder;
  const QString hook = ModuleLoader::find(u"tarnwick-claude-hook"_s);
  const QString activity = folder.filePath(u"ClaudeActivity"_s);
  const QStringList arguments{u"--claude-hook"_s, activity};
  const std::vector<QByteArray> ours{QFile::encodeName(hook), "--claude-hook", QFile::encodeName(activity)};
  std::vector<double> times[2];
  ::signal(SIGPIPE, SIG_IGN);  // What is told to /bin/true nobody reads.
  for (int i = 0; i < kRuns; ++i) {
    times[0].push_back(timeOf({"/bin/true"}, kEvent));
    times[1].push_back(timeOf(ours, kEvent));
  }
  const QString programs[] = {u"/bin/true"_s, hook};
  for (int i = 0; i < 2; ++i) {
    std::ranges::sort(times[i]);
    std::printf("%-22s median %.2f ms, of 20 one above %.2f ms, longest %.2f ms, opens %d files\n",
                i ? "tarnwick-claude-hook" : "/bin/true", times[i][kRuns / 2], times[i][kRuns * 95 / 100],
                times[i].back(), opensOf(programs[i], i ? arguments : QStringList(), folder.path()));
  }
}

void put(const QString& path, const QByteArray& data) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size()) qFatal("%s", qPrintable(path));
}

/// Reads a widget as a tile has it read.
void measureReading(const char* name, const LocalReader& reader, const DockWidget& widget) {
  SystemScheduler scheduler;
  QString shown;
  MeasuredTurns turns;
  QElapsedTimer clock;
  clock.start();
  RemoteFetch fetch(
      scheduler, [&](std::stop_token stop) { return reader(widget, stop); },
      [&](const RemoteValue& value) { shown = value.value.value_or(QString()); },
      [&](const FetchFailure& failure) { shown = failure.sentence; });
  turns.waitUntil([&] { return !shown.isEmpty(); });
  std::printf("%-34s %6lld ms, longest turn %.1f ms (%.1f ms of the processor), peak %lld MiB: %s\n", name,
              static_cast<long long>(clock.elapsed()), turns.longest(), turns.mostWork(),
              static_cast<long long>(MeasuredMemory::peak() / 1024), qPrintable(shown.left(60)));
  std::fflush(stdout);
}

void measureActivity() {
  const QTemporaryDir folder;
  SystemScheduler scheduler;
  ClaudeActivityFollower follower(
      scheduler, [](const DockWidget&, RemoteValues::Cause) {}, folder.path());
  const DockWidget widget{QUuid::createUuid(),
                          kind::analyticsClaudeCodeStatus,
                          {},
                          {{option::connectionMode, value::claudeActivity}, {option::historyDirectory, folder.path()}}};
  const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch()) - ClaudeActivityRecord::kReferenceDate;
  for (int i = 0; i < 1000; ++i) {
    const ClaudeActivityRecord record{sha256Hex(std::to_string(i)), "thinking", "", now - i};
    put(folder.filePath(QString::fromStdString(record.session) + u".json"_s),
        QByteArray::fromStdString(record.encoded()));
  }
  measureReading("1,000 sessions", follower.reader(), widget);
  for (int i = 0; i < 100'000; ++i) put(folder.filePath(u"%1.json"_s.arg(i)), "{}");
  measureReading("and 100,000 files", follower.reader(), widget);
}

LocalReaders readers(Scheduler& scheduler) {
  return {.scheduler = scheduler, .databases = std::make_shared<SqliteDatabases>(), .startChild = {}};
}

DockWidget geminiWidget(const QString& source, const QString& path) {
  return {QUuid::createUuid(),
          kind::geminiAPIUsage,
          {},
          {{option::connectionMode, value::geminiHistory},
           {option::historySource, source},
           {option::historyDirectory, path}}};
}

void measureRecordings() {
  const QTemporaryDir folder;
  const QString chats = folder.filePath(u"chats"_s);
  QDir().mkpath(chats);
  const QByteArray when = QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toLatin1();
  for (int i = 0; i < 2000; ++i) {
    QByteArrayList messages;
    for (int k = 0; k < 20; ++k)
      messages << R"({"id":")" + QByteArray::number(k) + R"(","type":"gemini","timestamp":")" + when +
                      R"(","content":")" + QByteArray(650, 'x') + R"(","tokens":{"total":10}})";
    put(chats + u"/session-%1.json"_s.arg(i),
        R"({"sessionId":")" + QByteArray::number(i) + R"(","messages":[)" + messages.join(',') + "]}");
  }
  SystemScheduler scheduler;
  measureReading("2,000 recordings", readers(scheduler).geminiHistory(), geminiWidget({}, folder.path()));
}

void run(sqlite3* db, const QByteArray& sql) {
  char* fault = nullptr;
  if (sqlite3_exec(db, sql.constData(), nullptr, nullptr, &fault) != SQLITE_OK) qFatal("%s", fault);
}

/// Of 50,000 messages; what fills it stands in them, or in a table of its own.
void measureDatabase(const QString& where, bool isInMessages) {
  const QTemporaryDir folder(where + u"/tarnwick-usage-XXXXXX"_s);
  const QString path = folder.filePath(u"opencode.db"_s);
  sqlite3* db = nullptr;
  if (sqlite3_open(QFile::encodeName(path).constData(), &db) != SQLITE_OK) qFatal("%s", sqlite3_errmsg(db));
  run(db,
      "PRAGMA journal_mode=OFF;PRAGMA synchronous=OFF;CREATE TABLE message(id TEXT PRIMARY KEY, data TEXT);"
      "CREATE TABLE part(id INTEGER PRIMARY KEY, data TEXT);BEGIN");
  const QByteArray numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<50000) ";
  const QByteArray filling = "replace(hex(zeroblob(18000)),'0','x')";
  run(db, numbers + R"(INSERT INTO message SELECT i, '{"role":"assistant","modelID":"gemini-pro","time":{"created":)" +
              QByteArray::number(QDateTime::currentMSecsSinceEpoch()) +
              R"(},"tokens":{"input":1,"output":1,"cache":{"read":1,"write":1}},"text":"'||)" +
              (isInMessages ? filling : QByteArray("'x'")) + R"(||'"}' FROM n)");
  if (!isInMessages) run(db, numbers + "INSERT INTO part SELECT i, " + filling + " FROM n");
  run(db, "COMMIT");
  sqlite3_close(db);
  std::printf("%.2f GB, ", static_cast<double>(QFileInfo(path).size()) / 1e9);
  SystemScheduler scheduler;
  measureReading(isInMessages ? "all of it in messages" : "messages beside parts", readers(scheduler).geminiHistory(),
                 geminiWidget(value::openCode, path));
}

int measure(const QStringList& words) {
  const QString what = words.value(1);
  const auto is = [&what](QLatin1StringView each) { return what.isEmpty() || what == each; };
  if (is("hook"_L1)) measureHook();
  if (is("activity"_L1)) measureActivity();
  if (is("recordings"_L1)) measureRecordings();
  if (is("database"_L1))
    for (const bool isInMessages : {false, true}) measureDatabase(words.value(2, u"/tmp"_s), isInMessages);
  return 0;
}

}  // namespace
}  // namespace tarnwick

int main(int count, char** arguments) {
  const QCoreApplication application(count, arguments);
  return tarnwick::measure(QCoreApplication::arguments());
}
