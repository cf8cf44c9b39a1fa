#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What controls say by themselves.
struct ControlWords {
  Q_DECLARE_TR_FUNCTIONS(Controls)
};

}  // namespace tarnwick
