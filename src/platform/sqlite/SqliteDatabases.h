#pragma once

#include "usage/ports/UsageDatabase.h"

namespace tarnwick {

/// Databases of SQLite, whose library is loaded with the first one.
class SqliteDatabases final : public UsageDatabases {
 public:
  std::unique_ptr<UsageDatabase> open(const QString& path, std::stop_token stop) override;
};

}  // namespace tarnwick
