#include "widgets/TimerActions.h"

#include <QCoreApplication>

#include "base/Text.h"
#include "widgets/HabitMath.h"
#include "widgets/PhaseMath.h"
#include "widgets/TickCadence.h"
#include "widgets/TimeMath.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct TimerWords {
  Q_DECLARE_TR_FUNCTIONS(Timers)
};

double wholeLength(const DockWidget& widget) {
  const QString phase = widget.options.value(u"phase"_s);
  if (widget.kind == "pomodoro"_L1) return PomodoroMath::duration(widget, phase);
  if (widget.kind == "posture"_L1) return PostureMath::duration(widget, phase);
  return widget.number(u"minutes"_s, 25) * 60;
}

QString pomodoroWords(const DockWidget& widget) {
  return widget.options.value(u"phase"_s) == "work"_L1 ? TimerWords::tr("Ready for your next focus session.")
                                                       : TimerWords::tr("Time for a break.");
}

QString postureWords(const DockWidget& widget) {
  if (!PostureMath::stands(widget)) {
    return TimerWords::tr("Relax your shoulders and check your posture.");
  }
  return widget.options.value(u"phase"_s) == "standing"_L1 ? TimerWords::tr("Time to stand and stretch.")
                                                           : TimerWords::tr("Return to a comfortable seated posture.");
}

TimerActions::Beat waterBeat(const DockWidget& widget, const QDateTime& at) {
  const double interval = widget.number(u"interval"_s, 0) * 60;
  if (interval <= 0 || WaterMath::count(widget, at) >= WaterMath::goal(widget)) return {widget, {}};
  const double now = TimeMath::unixSeconds(at);
  const double last = widget.number(u"lastReminder"_s, 0);
  // The first beat only begins to count; a clock that was set back does the same.
  const bool counts = last > 0 && last <= now;
  if (counts && now - last < interval) return {widget, {}};
  DockWidget reminded = widget;
  reminded.options.insert(u"lastReminder"_s, TimeMath::text(std::floor(now)));
  return {reminded, counts ? TimerWords::tr("Take a moment for a glass of water.") : QString()};
}

}  // namespace

DockWidget TimerActions::toggled(const DockWidget& widget, const QDateTime& at) {
  const double now = TimeMath::unixSeconds(at);
  DockWidget result = widget;
  if (widget.kind == "stopwatch"_L1) {
    if (Ticking::timerIsRunning(widget)) {
      result.options.insert(u"elapsed"_s, TimeMath::text(TimeMath::elapsed(widget, at)));
      result.options.remove(u"started"_s);
    } else {
      result.options.insert(u"started"_s, TimeMath::text(now));
    }
    return result;
  }
  double left = TimeMath::remaining(widget, at);
  if (Ticking::timerIsRunning(widget)) {
    result.options.insert(u"remaining"_s, TimeMath::text(left));
    result.options.remove(u"deadline"_s);
    return result;
  }
  if (left <= 0) left = wholeLength(widget);
  result.options.insert(u"deadline"_s, TimeMath::text(now + left));
  return result;
}

DockWidget TimerActions::reset(const DockWidget& widget) {
  DockWidget result = widget;
  for (const QString& key :
       {u"deadline"_s, u"remaining"_s, u"started"_s, u"elapsed"_s, u"phase"_s, u"sessions"_s, u"laps"_s}) {
    result.options.remove(key);
  }
  return result;
}

bool TimerActions::mayBeat(const DockWidget& widget) {
  return !widget.options.isEmpty() &&
         (widget.options.contains(u"deadline"_s) || widget.options.contains(u"interval"_s));
}

TimerActions::Beat TimerActions::beat(const DockWidget& widget, const QDateTime& at) {
  const QString& family = Catalog::find(widget.kind).family;
  if (family == "water"_L1) return waterBeat(widget, at);
  if (family != "timer"_L1) return {widget, {}};
  const auto deadline = Text::number(widget.options.value(u"deadline"_s));
  if (!deadline || *deadline > TimeMath::unixSeconds(at)) return {widget, {}};

  if (widget.kind == "pomodoro"_L1) {
    const DockWidget advanced = PomodoroMath::advance(widget, at);
    return {advanced, advanced == widget ? QString() : pomodoroWords(advanced)};
  }
  if (widget.kind == "posture"_L1) {
    const DockWidget advanced = PostureMath::advance(widget, at);
    return {advanced, advanced == widget ? QString() : postureWords(advanced)};
  }
  DockWidget ended = widget;
  ended.options.remove(u"deadline"_s);
  ended.options.insert(u"remaining"_s, u"0"_s);
  return {ended, widget.kind == "exercise"_L1 ? TimerWords::tr("Take a break to move and stretch.")
                                              : TimerWords::tr("Your timer is finished.")};
}

}  // namespace tarnwick
