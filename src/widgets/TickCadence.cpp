#include "widgets/TickCadence.h"

#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

bool Ticking::timerIsRunning(const DockWidget& widget) {
  return widget.options.contains(widget.kind == kind::stopwatch ? option::started : option::deadline);
}

}  // namespace tarnwick
