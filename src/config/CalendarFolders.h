#pragma once

#include <QStringList>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// Folders of calendar files that the user added to the places where calendars are looked for anyway. They belong to
/// the user and not to one widget, so they are stored among the native connections of the settings: "calendarFolder:"
/// and the absolute path.
struct CalendarFolders {
  /// In the order in which they were added.
  static QStringList of(const DockConfiguration& config);
  /// Does nothing for one that is there.
  static void add(DockConfiguration& config, const QString& path);
  static void remove(DockConfiguration& config, const QString& path);
};

}  // namespace tarnwick
