#pragma once

#include <QStringList>

namespace tarnwick {

/// Variables that make Qt's windows fit for layers. They are for this program alone: programs that it starts get the
/// environment from before.
struct WaylandEnvironment {
  /// Sets them. Before the application object is made; what the user set stays.
  static void prepare();
  /// Their names.
  static QStringList names();
};

}  // namespace tarnwick
