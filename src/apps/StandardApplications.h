#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "apps/AppIndex.h"

namespace tarnwick {

/// One of the applications that everybody expects to find.
struct StandardApplication {
  QString name;
  QString desktopEntryPath;
  QString iconName;

  bool operator==(const StandardApplication&) const = default;
};

/// The applications that this desktop uses for the usual purposes.
struct StandardApplications {
  enum class Purpose {
    Browser,
    Mail,
    Files,
    Terminal,
    Editor,
    Music,
    Video,
    Pictures,
    Calendar,
    Software,
    Settings,
    Monitor
  };

  /// In the order of the purposes, each application once; a purpose that nothing installed serves is left out, and so
  /// is the monitor, which is not looked for in a dock.
  static QList<StandardApplication> list(const AppIndex& index);

  /// What the user chose for it; else what is made for it and opens its kind of files; else what is made for it. Null
  /// when there is none. Lives as long as `index`.
  static const DesktopEntry* entryFor(Purpose purpose, const AppIndex& index);
};

}  // namespace tarnwick
