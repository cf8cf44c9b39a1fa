#pragma once

#include <QString>

#include "platform/wayland/WaylandSession.h"

namespace tarnwick {

/// Gets the permission, one for each start, with which the window of a program that we start may come to the front.
struct WaylandActivation {
  /// For the application that its desktop entry calls so; empty where the compositor gives none. Waits for its answer.
  static QString token(const WaylandSession& session, const QString& application);
};

}  // namespace tarnwick
