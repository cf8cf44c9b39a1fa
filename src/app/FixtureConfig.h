#pragma once

#include <QString>

namespace tarnwick {

/// Writes the fixed configuration of test runs. Returns the status of the process; a failure goes to standard error.
int writeFixtureConfig(const QString& path);

}  // namespace tarnwick
