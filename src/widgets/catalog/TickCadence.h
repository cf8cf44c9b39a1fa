#pragma once

#include "widgets/catalog/Family.h"

namespace tarnwick {

/// How often a tile has something new to show by the clock alone.
enum class TickCadence {
  Second,
  Minute,
  Still,        ///< Never.
  WhileItRuns,  ///< Each second while the timer runs that it shows, else never. Ticking::cadence says which of the two.
};

/// That of the kinds of a family whose rows of the catalog say nothing else.
constexpr TickCadence cadenceOf(Family family) {
  switch (family) {
    case Family::Clock:
    case Family::Calendar:
    case Family::Progress:
    case Family::Reminders:
    case Family::Todos:
    case Family::Water:
    case Family::Habit:
    // They say how old what they show is.
    case Family::Weather:
    case Family::Integration:
    case Family::Studio:
      return TickCadence::Minute;
    case Family::Music:
      return TickCadence::Second;
    case Family::Timer:
      return TickCadence::WhileItRuns;
    default:
      return TickCadence::Still;
  }
}

}  // namespace tarnwick
