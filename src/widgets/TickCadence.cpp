#include "widgets/TickCadence.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

bool Ticking::timerIsRunning(const DockWidget& widget) {
  return widget.options.contains(widget.kind == "stopwatch"_L1 ? u"started"_s : u"deadline"_s);
}

}  // namespace tarnwick
