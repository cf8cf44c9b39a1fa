#pragma once

#include <QList>

#include "config/DockLayout.h"

namespace tarnwick {

/// What a user means who hides or shows the docks by a key, a menu or the command line.
struct DockToggle {
  enum class Step {
    Hide,  ///< They are hidden until they are asked for again, whatever the pointer does.
    Show   ///< They come, also where their layout would hide them.
  };

  /// The dock of one display.
  struct Dock {
    bool seen = false;     ///< It is out, be it for a moment.
    bool covered = false;  ///< A full-screen window covers its screen, and it gives way.
  };

  /// Hides what is seen and shows what is not. Docks that give way to a full-screen window are hidden for afterwards.
  static Step next(bool hiddenByHand, DockLayout layout, const QList<Dock>& docks);
};

}  // namespace tarnwick
