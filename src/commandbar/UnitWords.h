#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What is said of units.
struct UnitWords {
  Q_DECLARE_TR_FUNCTIONS(UnitConversion)
};

}  // namespace tarnwick
