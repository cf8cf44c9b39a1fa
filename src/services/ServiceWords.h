#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What is said of services on the net.
struct ServiceWords {
  Q_DECLARE_TR_FUNCTIONS(Services)
};

}  // namespace tarnwick
