#include "widgets/Ticking.h"

#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

TickCadence Ticking::cadence(const DockWidget& widget) {
  const TickCadence cadence = KindTraits::of(widget.kind).cadence;
  if (cadence != TickCadence::WhileItRuns) return cadence;
  return timerIsRunning(widget) ? TickCadence::Second : TickCadence::Still;
}

bool Ticking::timerIsRunning(const DockWidget& widget) {
  return widget.options.contains(KindTraits::of(widget.kind).run == TimerRun::Stopwatch ? option::started
                                                                                        : option::deadline);
}

}  // namespace tarnwick
