#include <sqlite3.h>

#include <QUrl>
#include <chrono>

#include "platform/sqlite/SqlReader.h"

namespace tarnwick {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kFlags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOFOLLOW | 0x20;
constexpr int kStepsBetweenLooks = 1000;

class LibraryReader final : public SqlReader {
 public:
  LibraryReader() = default;
  Q_DISABLE_COPY_MOVE(LibraryReader)
  ~LibraryReader() override { close(); }

  SqlFailure open(const QByteArray& path, bool isStill, double seconds, std::stop_token stop) override {
    stop_ = std::move(stop);
    deadline_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    // As an address, so that it can be said that nothing changes.
    const QByteArray name =
        isStill ? "file:" + QUrl::toPercentEncoding(QString::fromUtf8(path), "/") + "?immutable=1" : path;
    if (sqlite3_open_v2(name.constData(), &db_, kFlags | (isStill ? SQLITE_OPEN_URI : 0), nullptr) != SQLITE_OK) {
      close();
      return SqlFailure::NotOpened;
    }
    sqlite3_busy_timeout(db_, UsageDatabase::kBusyMilliseconds);
    sqlite3_limit(db_, SQLITE_LIMIT_LENGTH, UsageDatabase::kMostValueBytes);
    sqlite3_progress_handler(
        db_, kStepsBetweenLooks, [](void* self) { return static_cast<LibraryReader*>(self)->isLate() ? 1 : 0; }, this);
    for (const char* sql : {"PRAGMA query_only=ON", "PRAGMA trusted_schema=OFF", "BEGIN"}) {
      if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK) continue;
      close();
      return SqlFailure::NotOpened;
    }
    return SqlFailure::None;
  }

  SqlFailure rows(const QByteArray& sql, QList<UsageDatabase::Row>& found) override {
    sqlite3_stmt* statement = nullptr;
    const int prepared = db_ ? sqlite3_prepare_v2(db_, sql.constData(), -1, &statement, nullptr) : SQLITE_ERROR;
    if (prepared != SQLITE_OK) {
      const int reason = prepared & 0xFF;
      return reason == SQLITE_BUSY || reason == SQLITE_LOCKED || reason == SQLITE_INTERRUPT ? SqlFailure::Busy
                                                                                            : SqlFailure::Schema;
    }
    const SqlFailure failure = step(statement, found);
    sqlite3_finalize(statement);
    return failure;
  }

 private:
  bool isLate() const { return stop_.stop_requested() || Clock::now() > deadline_; }

  SqlFailure step(sqlite3_stmt* statement, QList<UsageDatabase::Row>& found) {
    qint64 text = 0;
    for (;;) {
      const int result = sqlite3_step(statement);
      if (result == SQLITE_DONE) return SqlFailure::None;
      if (result != SQLITE_ROW || isLate()) return SqlFailure::Busy;
      if (found.size() >= UsageDatabase::kMostRows) return SqlFailure::TooManyRows;
      UsageDatabase::Row row;
      const int columns = sqlite3_column_count(statement);
      for (int i = 0; i < columns; ++i) row.append(value(statement, i, text));
      if (text > UsageDatabase::kMostTextBytes) return SqlFailure::TooMuchText;
      found.append(std::move(row));
    }
  }

  static QVariant value(sqlite3_stmt* statement, int column, qint64& text) {
    switch (sqlite3_column_type(statement, column)) {
      case SQLITE_INTEGER:
      case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
      case SQLITE_TEXT: {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        const int size = sqlite3_column_bytes(statement, column);
        text += size;
        return text > UsageDatabase::kMostTextBytes ? QVariant() : QVariant(QString::fromUtf8(bytes, size));
      }
      default:
        return {};
    }
  }

  void close() {
    sqlite3_close(db_);
    db_ = nullptr;
  }

  sqlite3* db_ = nullptr;
  std::stop_token stop_;
  Clock::time_point deadline_;
};

}  // namespace

}  // namespace tarnwick

/// The module's entry point; the caller owns what it gives.
extern "C" Q_DECL_EXPORT tarnwick::SqlReader* tarnwickSqlReader() { return new tarnwick::LibraryReader; }
