#pragma once

#include <QByteArray>
#include <stop_token>

#include "usage/ports/UsageDatabase.h"

namespace tarnwick {

/// Why the module could not read. It throws nothing: sentences are its caller's.
enum class SqlFailure { None, NotOpened, Schema, Busy, TooManyRows, TooMuchText };

/// One connection to a database file that only reads. Lives in a module of its own, for the library that it needs. Used
/// by one thread.
class SqlReader {
 public:
  virtual ~SqlReader() = default;

  /// Called once. `isStill` says that nobody has it open, so that no file is needed beside it. From here on `seconds`
  /// run, after which nothing more is read.
  virtual SqlFailure open(const QByteArray& path, bool isStill, double seconds, std::stop_token stop) = 0;
  virtual SqlFailure rows(const QByteArray& sql, QList<UsageDatabase::Row>& found) = 0;
};

/// The module and its entry point, which gives a reader that its caller owns.
constexpr const char* kSqliteModule = "tarnwick-sqlite.so";
constexpr const char* kSqliteDoor = "tarnwickSqlReader";
using MakeSqlReader = SqlReader* (*)();

}  // namespace tarnwick
