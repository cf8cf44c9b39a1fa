// What other programs keep in databases, read from real ones.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QTimeZone>

#include "base/Cancelled.h"
#include "platform/sqlite/SqliteDatabases.h"
#include "support/FileTest.h"
#include "usage/LocalUsageDatabase.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QDateTime kDatabaseNow(QDate(2026, 11, 28), QTime(12, 0), QTimeZone::utc());
const char* const kBusy =
    "The usage database is busy, changed, or exceeded the read limit. Refresh after the active response finishes.";

/// Another program that has the database open.
class Owner {
 public:
  explicit Owner(const QString& path) { EXPECT_EQ(sqlite3_open(QFile::encodeName(path).constData(), &db_), SQLITE_OK); }
  Q_DISABLE_COPY_MOVE(Owner)
  ~Owner() { sqlite3_close(db_); }
  Owner& run(const QByteArray& sql) {
    EXPECT_EQ(sqlite3_exec(db_, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
    return *this;
  }

 private:
  sqlite3* db_ = nullptr;
};

QByteArray openCodeRow(const char* id, const QByteArray& model, const QByteArray& created, const QByteArray& tokens) {
  return QByteArray("INSERT INTO message VALUES('") + id + R"(','{"role":"assistant","modelID":")" + model +
         R"(","time":{"created":)" + created + R"(},"tokens":)" + tokens + "}');";
}
const QByteArray kMillis = QByteArray::number(kDatabaseNow.addSecs(-60).toMSecsSinceEpoch());
const QByteArray kTokens = R"({"input":100,"output":20,"cache":{"read":3,"write":4}})";

class UsageDatabaseFiles : public FolderTest {
 protected:
  QString path() const { return at(u"data.db"_s); }
  RemoteValue openCode() {
    const auto database = databases.open(path(), {});
    return LocalUsageDatabase::openCode(*database, kDatabaseNow);
  }
  RemoteValue hermes() {
    const auto database = databases.open(path(), {});
    return LocalUsageDatabase::hermes(*database, kDatabaseNow);
  }
  /// Gone, with what may be beside it.
  void clear() {
    for (const QString& name : entries()) QFile::remove(at(name));
  }

  SqliteDatabases databases{3600};  // A busy machine needs longer than a user is kept waiting.
};

TEST_F(UsageDatabaseFiles, OfOpenCodeAreAddedUp) {
  Owner(path())
      .run("CREATE TABLE message(id TEXT, data TEXT)")
      .run(openCodeRow("a", "gemini-pro", kMillis, kTokens))
      .run(openCodeRow("b", "gemini-flash", kMillis,
                       R"({"total":5000,"input":1,"output":1,"cache":{"read":1,"write":1}})"))
      .run(openCodeRow("c", "other", "0", "7"))
      .run(R"(INSERT INTO message VALUES('d','{"role":"user","modelID":"gemini-pro"}'))");
  const QStringList before = entries();
  const RemoteValue value = openCode();
  EXPECT_EQ(value.value, u"5,127"_s);
  EXPECT_EQ(value.metrics.value(1), (ServiceMetric{u"Responses this month"_s, u"2"_s}));
  EXPECT_EQ(entries(), before) << "nothing is made beside it";

  // The newer table counts where both are there, and what its owner has not written into the file yet is seen.
  Owner owner(path());
  owner.run("PRAGMA journal_mode=WAL")
      .run("CREATE TABLE session_message(id TEXT, type TEXT, data TEXT)")
      .run(
          QByteArray(
              R"(INSERT INTO session_message VALUES('a','assistant','{"model":{"id":"gemini-pro"},"time":{"created":)") +
          kMillis + R"(},"tokens":)" + kTokens + "}')");
  EXPECT_EQ(openCode().value, u"127"_s);
  owner.run("BEGIN IMMEDIATE").run("DELETE FROM session_message");
  EXPECT_EQ(openCode().value, u"127"_s) << "as long as it is not decided";
  owner.run("COMMIT");
  EXPECT_EQ(openCode().value, u"0"_s);
}

TEST_F(UsageDatabaseFiles, OfHermesAreAddedUp) {
  const QByteArray columns = "(model TEXT, input_tokens, output_tokens, cache_read_tokens, cache_write_tokens)";
  Owner owner(path());
  owner.run("CREATE TABLE sessions" + columns)
      .run(
          "INSERT INTO sessions "
          "VALUES('gemini-a',1000,NULL,20,3),('gemini-a',1,1,1,1),('gemini-b',0,0,0,0),('x',-5,'y',0,0)");
  const RemoteValue sessions = hermes();
  EXPECT_EQ(sessions.value, u"1,027"_s);
  EXPECT_EQ(sessions.metrics, (QList<ServiceMetric>{{u"Models"_s, u"2"_s}, {u"Usage records"_s, u"3"_s}}));
  EXPECT_TRUE(sessions.detail.contains(u"may be approximate after model changes. Its cumulative"_s));
  owner.run("CREATE TABLE session_model_usage" + columns);
  EXPECT_TRUE(hermes().detail.contains(u"Uses per-model attribution. Its cumulative"_s));
  owner.run("INSERT INTO session_model_usage VALUES('gemini-a',1e16,0,0,0)");
  EXPECT_EQ(failureOf([this] { hermes(); }), "The usage database contains an invalid token count.");
}

TEST_F(UsageDatabaseFiles, AreShownWholeOrNotAtAll) {
  const char* kTime = "OpenCode message time is invalid.";
  const char* kCount = "The usage database contains an invalid token count.";
  const char* kTable = "CREATE TABLE message(id TEXT, data TEXT);";
  const char* kSchema = "This usage database has an unsupported schema. No partial total is shown.";
  const std::pair<QByteArray, std::string> cases[] = {
      {"CREATE TABLE other(id)", "No supported OpenCode message table was found."},
      {"CREATE TABLE message(text)", kSchema},
      {QByteArray(kTable) + "INSERT INTO message VALUES(NULL,'{\"role\":\"assistant\"}')",
       "OpenCode message metadata is incomplete."},
      {kTable + openCodeRow("a", "gemini-x", "0", kTokens), kTime},
      {kTable + openCodeRow("a", "gemini-x", "1e14", kTokens), kTime},
      {kTable + openCodeRow("a", "gemini-x", "\"1\"", kTokens), kTime},
      {kTable + openCodeRow("a", "gemini-x", kMillis, "7"), "OpenCode token metadata is invalid."},
      {kTable + openCodeRow("a", "gemini-x", kMillis, "{}"), "OpenCode cache usage is missing."},
      {kTable + openCodeRow("a", "gemini-x", kMillis, R"({"input":-1,"output":0,"cache":{"read":0,"write":0}})"),
       kCount},
      {kTable + openCodeRow("a", "gemini-x", kMillis, R"({"input":true,"output":0,"cache":{"read":0,"write":0}})"),
       kCount},
      {QByteArray(kTable) +
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<100001) INSERT INTO message SELECT "
           "i,'{\"role\":\"assistant\"}' FROM n",
       "The usage history exceeds the refresh limit. No partial total is shown."},
      {QByteArray(kTable) +
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<5) INSERT INTO message SELECT "
           "printf('%.*c',4000000,'x'),'{\"role\":\"assistant\"}' FROM n",
       "Usage metadata exceeds the refresh limit."},
      {QByteArray(kTable) + "INSERT INTO message VALUES('a','{')", kBusy},
      // What would run something: a table of a module, one with a column that is computed, a trigger.
      {QByteArray("PRAGMA writable_schema=ON;INSERT INTO sqlite_master VALUES('table','message','message',0,'CREATE "
                  "VIRTUAL TABLE message USING other(id, data)')"),
       kSchema},
      {"CREATE TABLE message(id TEXT, other TEXT);PRAGMA writable_schema=ON;UPDATE sqlite_master SET sql='CREATE TABLE "
       "message(id TEXT, data TEXT AS (load_extension(id)))'",
       kSchema},
      {QByteArray(kTable) + "CREATE TRIGGER t BEFORE INSERT ON message BEGIN DELETE FROM message; END", ""},
      {"CREATE VIEW message AS SELECT 1 AS id", "No supported OpenCode message table was found."},
  };
  for (const auto& [sql, sentence] : cases) {
    clear();
    Owner(path()).run(sql);
    EXPECT_EQ(failureOf([this] { openCode(); }), sentence) << sql.left(120).constData();
  }
}

TEST_F(UsageDatabaseFiles, AreGivenUpAfterTheirTime) {
  Owner(path()).run("CREATE TABLE message(id TEXT, data TEXT)").run(openCodeRow("a", "gemini-x", kMillis, kTokens));
  databases = SqliteDatabases(0);
  EXPECT_EQ(failureOf([this] { openCode(); }), kBusy);
}

TEST_F(UsageDatabaseFiles, AreOpenedOnlyWhereThatIsSafe) {
  const auto failure = [this] { return failureOf([this] { openCode(); }); };
  EXPECT_EQ(failure(), "The selected usage database is unavailable.");
  put(u"real.db"_s, "no database at all, but long enough to be looked at as one");
  ASSERT_TRUE(QFile::link(at(u"real.db"_s), path()));
  EXPECT_EQ(failure(), "The selected usage database is unavailable.");
  QFile::remove(path());
  ASSERT_TRUE(QFile::rename(at(u"real.db"_s), path()));
  EXPECT_NE(failure(), "");
  {
    QFile large(path());
    ASSERT_TRUE(large.open(QIODevice::ReadWrite));
    ASSERT_TRUE(large.resize(2'000'000'001));
  }
  EXPECT_EQ(failure(), "Choose a local usage database smaller than 2 GB.");
  clear();
  // Locked by a writer that works without a journal of its own.
  Owner owner(path());
  owner.run("CREATE TABLE message(id TEXT, data TEXT)").run("PRAGMA locking_mode=EXCLUSIVE").run("BEGIN EXCLUSIVE");
  owner.run(openCodeRow("a", "gemini-x", kMillis, kTokens));
  const auto database = databases.open(path(), {});
  owner.run("COMMIT");
  EXPECT_EQ(failureOf([&] { LocalUsageDatabase::openCode(*database, kDatabaseNow); }), kBusy)
      << "changed while it was read";
  // Its owner works on it, for itself alone or in the file itself, or was cut off while it did.
  owner.run("PRAGMA journal_mode=WAL").run("INSERT INTO message VALUES('b','{}')");
  EXPECT_EQ(failure(), kBusy);
  for (const bool hasJournal : {false, true}) {
    clear();
    Owner writer(path());
    writer.run("CREATE TABLE message(id TEXT, data TEXT)");
    if (!hasJournal) writer.run("PRAGMA journal_mode=WAL");
    writer.run("PRAGMA cache_size=1; PRAGMA cache_spill=1; BEGIN")
        .run(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<3000) INSERT INTO message SELECT i, "
            "'{\"role\":\"user\",\"text\":\"long enough to be written before its time\"}' FROM n");
    if (!hasJournal) writer.run("COMMIT");
    QDir().mkdir(at(u"left"_s));
    for (const QString& name : {u"data.db"_s, u"data.db-wal"_s, u"data.db-journal"_s})
      QFile::copy(at(name), at(u"left/"_s + name));
    const QStringList before = QDir(at(u"left"_s)).entryList(QDir::Files);
    EXPECT_EQ(before.size(), 2);
    EXPECT_EQ(failureOf([this] { databases.open(at(u"left/data.db"_s), {}); }), kBusy);
    EXPECT_EQ(QDir(at(u"left"_s)).entryList(QDir::Files), before) << "nothing is made beside it";
    QDir(at(u"left"_s)).removeRecursively();
  }
  // Nobody waits any more.
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(databases.open(path(), stop.get_token()), Cancelled);
}

}  // namespace
}  // namespace tarnwick
