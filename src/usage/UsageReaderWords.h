#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What is said of what programs leave on this machine.
struct UsageReaderWords {
  Q_DECLARE_TR_FUNCTIONS(LocalUsage)
};

}  // namespace tarnwick
