#pragma once

#include <QList>
#include <QUrl>
#include <functional>

#include "apps/AppEnvironment.h"
#include "apps/LaunchEnvironment.h"

namespace tarnwick {

/// Passes files to the program with which this desktop sends them to devices nearby; empty where none is installed.
/// The function returns whether that program could be started.
std::function<bool(const QList<QUrl>& files)> nearbySender(const AppEnvironment& environment,
                                                           const LaunchEnvironment& variables);

}  // namespace tarnwick
