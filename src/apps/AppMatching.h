#pragma once

#include <QString>
#include <functional>

#include "apps/AppIndex.h"
#include "desktop/ClientWindows.h"

namespace tarnwick {

/// Which application a window belongs to.
struct AppMatching {
  /// The name of the program that owns the window, asked only when nothing better is known.
  using Executable = std::function<QString()>;

  /// The desktop entry of a window, or null when no installed application claims it. The result lives as long as
  /// `index`.
  static const DesktopEntry* entryFor(const ClientWindow& window, const AppIndex& index,
                                      const Executable& executable = {});

  /// Windows without a desktop entry that give the same key belong to one application.
  static QString fallbackKey(const ClientWindow& window);
  /// The name for an application without a desktop entry.
  static QString fallbackName(const ClientWindow& window);
  /// The icon that such an application may have in the icon theme.
  static QString fallbackIcon(const ClientWindow& window);
};

}  // namespace tarnwick
