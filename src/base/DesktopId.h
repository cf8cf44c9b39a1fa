#pragma once

#include <QLatin1StringView>

namespace tarnwick {

/// What a desktop knows the program by: the name of its desktop entry, without the ending, of its icon, and on the bus.
inline constexpr QLatin1StringView kDesktopId("com.brindlemoor.Tarnwick");

}  // namespace tarnwick
