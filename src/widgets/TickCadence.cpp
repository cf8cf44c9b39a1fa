#include "widgets/TickCadence.h"

#include <QSet>

#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

TickCadence Ticking::cadence(const QString& family, const QString& kind, bool running) {
  if (family == "clock"_L1) {
    const bool showsSeconds = kind == "timeSeconds"_L1 || kind.startsWith("analog"_L1);
    return showsSeconds ? TickCadence::Second : TickCadence::Minute;
  }
  if (family == "timer"_L1) return running ? TickCadence::Second : TickCadence::Still;
  if (family == "music"_L1) return TickCadence::Second;
  static const QSet<QString> byTheMinute{u"calendar"_s, u"reminders"_s, u"progress"_s,
                                         u"water"_s,    u"habit"_s,     u"todos"_s};
  return byTheMinute.contains(family) ? TickCadence::Minute : TickCadence::Still;
}

TickCadence Ticking::cadence(const DockWidget& widget) {
  // It says how long ago its picture was taken.
  if (widget.kind == "screenshots"_L1) return TickCadence::Minute;
  return cadence(Catalog::find(widget.kind).family, widget.kind, timerIsRunning(widget));
}

bool Ticking::timerIsRunning(const DockWidget& widget) {
  return widget.options.contains(widget.kind == "stopwatch"_L1 ? u"started"_s : u"deadline"_s);
}

}  // namespace tarnwick
