#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <memory>
#include <stop_token>

namespace tarnwick {

/// A database that a program on this machine keeps, open for reading alone: nothing is written to it or made beside it,
/// and all that is asked of it is one moment of it. Used by one thread, which may not be the main one. It is closed
/// when this goes. Failures are DomainErrors with finished sentences.
class UsageDatabase {
 public:
  static constexpr qint64 kMostBytes = 2'000'000'000;
  static constexpr double kSeconds = 3;  ///< From opening it to the last row.
  static constexpr int kBusyMilliseconds = 250;
  static constexpr int kMostValueBytes = 8'000'000;
  static constexpr qsizetype kMostRows = 100'000;       ///< Of one query.
  static constexpr qint64 kMostTextBytes = 16'000'000;  ///< Of one query.

  virtual ~UsageDatabase() = default;

  /// A value is a double, a text (QString) or null (invalid).
  using Row = QList<QVariant>;
  virtual QList<Row> rows(const QString& sql) = 0;
  /// Throws where what was read may be of two moments, since somebody wrote meanwhile. To be called after the last row.
  virtual void confirmUnchanged() = 0;
};

/// Opens such databases.
class UsageDatabases {
 public:
  virtual ~UsageDatabases() = default;
  /// Gives up once `stop` is asked for. Any thread but the main one.
  virtual std::unique_ptr<UsageDatabase> open(const QString& path, std::stop_token stop) = 0;
};

}  // namespace tarnwick
