#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// An application of which at least one window is there. It gets one tile, however many windows or processes it has.
struct RunningApp {
  quint64 identity = 0;  ///< Opaque; the same for as long as the application runs, another one when it comes back.
  QString name;
  QString desktopId;       ///< Empty for a program without a desktop entry.
  QString path;            ///< Of its desktop entry; empty like `desktopId`.
  QString iconName;        ///< For a program without a desktop entry a guess, which may name no icon.
  QList<quint64> windows;  ///< The most recently active first.
  bool active = false;     ///< Whether one of its windows is the active one.

  bool operator==(const RunningApp&) const = default;
};

}  // namespace tarnwick
