#pragma once

namespace tarnwick {

/// Teaches Qt to describe a MonthGrid as a table of days, of which a press chooses one as a click does. Safe to call
/// again.
void installMonthAccessibility();

}  // namespace tarnwick
