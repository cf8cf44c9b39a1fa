#pragma once

#include "usage/ports/UsageDatabase.h"

namespace tarnwick {

/// Databases of SQLite, whose library is loaded with the first one.
class SqliteDatabases final : public UsageDatabases {
 public:
  /// What is not read after so many seconds is given up.
  explicit SqliteDatabases(double seconds = UsageDatabase::kSeconds) : seconds_(seconds) {}

  std::unique_ptr<UsageDatabase> open(const QString& path, std::stop_token stop) override;

 private:
  double seconds_;
};

}  // namespace tarnwick
