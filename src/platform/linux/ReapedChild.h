#pragma once

#include "usage/ports/ChildExchange.h"

namespace tarnwick {

/// Starts a program under tarnwick-reaper, which ends it with this process.
std::unique_ptr<ChildExchange> startReapedChild(const QString& program, const QStringList& arguments,
                                                std::stop_token stop);

}  // namespace tarnwick
