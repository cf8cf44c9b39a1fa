#include "widgets/TickCadence.h"

#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

bool Ticking::timerIsRunning(const DockWidget& widget) {
  return widget.options.contains(KindTraits::of(widget.kind).run == TimerRun::Stopwatch ? option::started
                                                                                        : option::deadline);
}

}  // namespace tarnwick
