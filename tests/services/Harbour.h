#pragma once

#include "services/Provider.h"

namespace tarnwick::test {

/// A service that does not exist: the berths of a harbour that are taken, in pages. It is written as every provider is.
Provider harbour();

}  // namespace tarnwick::test
