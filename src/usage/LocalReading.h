#pragma once

#include <QCoroFwd>
#include <functional>
#include <stop_token>

#include "services/WidgetLoader.h"

namespace tarnwick {

/// Reads what a widget shows from this machine: a coroutine that throws DomainError and Cancelled. It passes `stop` on.
using LocalReader = WidgetLoader::Reader;

/// Runs `read` on another thread and gives what it gave, or throws the DomainError that it threw. `read` holds all that
/// it needs and looks at its token where it can take long; when `stop` is asked for, this ends with Cancelled at once,
/// and what `read` still finds is dropped.
QCoro::Task<RemoteValue> readElsewhere(std::function<RemoteValue(const std::stop_token&)> read, std::stop_token stop);

}  // namespace tarnwick
