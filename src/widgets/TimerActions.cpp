#include "widgets/TimerActions.h"

#include <QCoreApplication>

#include "base/Text.h"
#include "widgets/HabitMath.h"
#include "widgets/PhaseMath.h"
#include "widgets/Ticking.h"
#include "widgets/TimeMath.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct TimerWords {
  Q_DECLARE_TR_FUNCTIONS(Timers)
};

TimerRun runOf(const DockWidget& widget) { return KindTraits::of(widget.kind).run; }

double wholeLength(const DockWidget& widget) {
  const QString phase = widget.options.value(option::phase);
  if (runOf(widget) == TimerRun::Pomodoro) return PomodoroMath::duration(widget, phase);
  if (runOf(widget) == TimerRun::Posture) return PostureMath::duration(widget, phase);
  return widget.number(option::minutes, TimeMath::kDefaultMinutes) * 60;
}

QString pomodoroWords(const DockWidget& widget) {
  return widget.options.value(option::phase) == value::work ? TimerWords::tr("Ready for your next focus session.")
                                                            : TimerWords::tr("Time for a break.");
}

QString postureWords(const DockWidget& widget) {
  if (!PostureMath::stands(widget)) {
    return TimerWords::tr("Relax your shoulders and check your posture.");
  }
  return widget.options.value(option::phase) == value::standing
             ? TimerWords::tr("Time to stand and stretch.")
             : TimerWords::tr("Return to a comfortable seated posture.");
}

TimerActions::Beat waterBeat(const DockWidget& widget, const QDateTime& at) {
  const double interval = widget.number(option::interval, 0) * 60;
  if (interval <= 0 || WaterMath::count(widget, at) >= WaterMath::goal(widget)) return {widget, {}};
  const double now = TimeMath::unixSeconds(at);
  const double last = widget.number(option::lastReminder, 0);
  // The first beat only begins to count; a clock that was set back does the same.
  const bool counts = last > 0 && last <= now;
  if (counts && now - last < interval) return {widget, {}};
  DockWidget reminded = widget;
  reminded.options.insert(option::lastReminder, TimeMath::text(std::floor(now)));
  return {reminded, counts ? TimerWords::tr("Take a moment for a glass of water.") : QString()};
}

}  // namespace

DockWidget TimerActions::toggled(const DockWidget& widget, const QDateTime& at) {
  const double now = TimeMath::unixSeconds(at);
  DockWidget result = widget;
  if (runOf(widget) == TimerRun::Stopwatch) {
    if (Ticking::timerIsRunning(widget)) {
      result.options.insert(option::elapsed, TimeMath::text(TimeMath::elapsed(widget, at)));
      result.options.remove(option::started);
    } else {
      result.options.insert(option::started, TimeMath::text(now));
    }
    return result;
  }
  double left = TimeMath::remaining(widget, at);
  if (Ticking::timerIsRunning(widget)) {
    result.options.insert(option::remaining, TimeMath::text(left));
    result.options.remove(option::deadline);
    return result;
  }
  if (left <= 0) left = wholeLength(widget);
  result.options.insert(option::deadline, TimeMath::text(now + left));
  return result;
}

DockWidget TimerActions::reset(const DockWidget& widget) {
  DockWidget result = widget;
  for (const QLatin1StringView key : {option::deadline, option::remaining, option::started, option::elapsed,
                                      option::phase, option::sessions, option::laps}) {
    result.options.remove(key);
  }
  return result;
}

bool TimerActions::mayBeat(const DockWidget& widget) {
  return !widget.options.isEmpty() &&
         (widget.options.contains(option::deadline) || widget.options.contains(option::interval));
}

TimerActions::Beat TimerActions::beat(const DockWidget& widget, const QDateTime& at) {
  const QString& family = Catalog::find(widget.kind).family;
  if (family == Family::Water) return waterBeat(widget, at);
  if (family != Family::Timer) return {widget, {}};
  const auto deadline = Text::number(widget.options.value(option::deadline));
  if (!deadline || *deadline > TimeMath::unixSeconds(at)) return {widget, {}};

  if (runOf(widget) == TimerRun::Pomodoro) {
    const DockWidget advanced = PomodoroMath::advance(widget, at);
    return {advanced, advanced == widget ? QString() : pomodoroWords(advanced)};
  }
  if (runOf(widget) == TimerRun::Posture) {
    const DockWidget advanced = PostureMath::advance(widget, at);
    return {advanced, advanced == widget ? QString() : postureWords(advanced)};
  }
  DockWidget ended = widget;
  ended.options.remove(option::deadline);
  ended.options.insert(option::remaining, u"0"_s);
  return {ended, runOf(widget) == TimerRun::Exercise ? TimerWords::tr("Take a break to move and stretch.")
                                                     : TimerWords::tr("Your timer is finished.")};
}

}  // namespace tarnwick
