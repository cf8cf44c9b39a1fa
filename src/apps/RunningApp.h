#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// Where a window is, as far as the desktop reports it.
struct WindowPlace {
  bool elsewhere = false;  ///< On another virtual desktop than the one that is shown.
  QStringList screens;     ///< The identities of the screens that show it; empty for none and where it is not reported.

  bool operator==(const WindowPlace&) const = default;
};

/// Which windows a dock shows.
struct WindowScope {
  bool workspaceOnly = false;  ///< Those of the virtual desktop that is shown.
  QString display{};           ///< Those on this one; of all displays where it is empty.

  bool operator==(const WindowScope&) const = default;
};

/// An application of which at least one window is there. It gets one tile, however many windows or processes it has.
struct RunningApp {
  quint64 identity = 0;  ///< Opaque; the same for as long as the application runs, another one when it comes back.
  QString name;
  QString desktopId;                   ///< Empty for a program without a desktop entry.
  QString path;                        ///< Of its desktop entry; empty like `desktopId`.
  QString iconName;                    ///< For a program without a desktop entry a guess, which may name no icon.
  QList<quint64> windows;              ///< The most recently active first.
  QHash<quint64, WindowPlace> places;  ///< By window.
  bool active = false;                 ///< Whether one of its windows is the active one, which is the first then.
  bool urgent = false;                 ///< Whether one of its windows asks for attention.

  /// The windows that are in a scope, in the same order. One that nothing is known of is in every scope, and a
  /// minimised one on every display.
  QList<quint64> windowsIn(const WindowScope& scope) const {
    QList<quint64> inside = windows;
    inside.removeIf([&](quint64 window) {
      const auto place = places.find(window);
      if (place == places.end()) return false;
      const bool isAway =
          !scope.display.isEmpty() && !place->screens.isEmpty() && !place->screens.contains(scope.display);
      return (scope.workspaceOnly && place->elsewhere) || isAway;
    });
    return inside;
  }

  /// The application as it is in a scope: with the windows there alone, and active when one of these is.
  RunningApp within(const WindowScope& scope) const {
    RunningApp inside = *this;
    inside.windows = windowsIn(scope);
    inside.active = active && inside.windows.value(0) == windows.value(0);
    return inside;
  }

  bool operator==(const RunningApp&) const = default;
};

}  // namespace tarnwick
