#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What is said of starting applications.
struct LaunchWords {
  Q_DECLARE_TR_FUNCTIONS(AppLaunch)
};

}  // namespace tarnwick
