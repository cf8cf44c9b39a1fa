#pragma once

#include <optional>

#include "config/DockLayout.h"
#include "desktop/Zones.h"

namespace tarnwick {

/// Whether the dock of one display is shown, and what that will depend on next. A value; it changes by `next` alone,
/// which any event may ask at any time. Times are seconds on a clock that never jumps (Scheduler::reference).
struct DockVisibility {
  /// What is so around the dock at this moment.
  struct Surroundings {
    DockLayout layout = DockLayout::Fixed;
    bool covered = false;      ///< A full-screen window covers the screen.
    bool atEdge = false;       ///< The pointer is at the layout's edge; see the function of that name.
    bool interacting = false;  ///< The pointer is over the dock, or a window of the program that belongs to it is open.
    double showDelay = 0;      ///< Seconds at the edge until a hidden dock comes.
    double hideDelay = 0;      ///< Seconds after the last interaction until it goes.
    bool free = false;         ///< The dock makes room for windows, and none covers its place.
  };

  bool visible = false;
  std::optional<double> edgeSince;        ///< When the pointer reached the edge.
  std::optional<double> lastInteraction;  ///< When the dock was last in use.
  bool free = false;                      ///< It is out because no window covers its place.
  bool called = false;  ///< It is out because the user asked for it by name, and was not in use since.

  /// Whether a layout hides its dock until the pointer reaches the edge and hides it again after a while.
  static bool reveals(DockLayout layout);
  /// Whether a layout hides its dock at times, and so needs to know about the pointer.
  static bool hides(DockLayout layout) { return layout == DockLayout::Swap || reveals(layout); }
  /// Whether the pointer is at the edge that a layout uses.
  static bool atEdge(DockLayout layout, const PointerZones& zones);

  /// One that was asked for by name: it is out, and only its use makes it go again as its layout has it.
  static DockVisibility calledAt(double now) { return {true, {}, now, false, true}; }
  static DockVisibility next(const DockVisibility& old, const Surroundings& around, double now);
  /// Whether a delay is counting, so that `next` has to be asked again although nothing may happen until then.
  bool needsTimer(const Surroundings& around) const;

  bool operator==(const DockVisibility&) const = default;
};

}  // namespace tarnwick
