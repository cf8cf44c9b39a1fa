#include "views/families/timers/TimerFacts.h"

#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "widgets/PhaseMath.h"
#include "widgets/Ticking.h"
#include "widgets/TileWords.h"
#include "widgets/TimeMath.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSecondsPerMinute = 60;
/// Below this a countdown is over: what is left of the beat in which it ends.
constexpr double kNothing = 0.001;

bool runsAs(const DockWidget& widget, TimerRun run) { return KindTraits::of(widget.kind).run == run; }
bool isPomodoro(const DockWidget& widget) { return runsAs(widget, TimerRun::Pomodoro); }
bool isPosture(const DockWidget& widget) { return runsAs(widget, TimerRun::Posture); }

QString phaseOf(const DockWidget& widget) {
  const QString phase = widget.options.value(option::phase);
  if (!phase.isEmpty()) return phase;
  if (isPomodoro(widget)) return value::work;
  return isPosture(widget) ? QString(value::seated) : QString();
}

void countSessions(TimerFacts& facts, const DockWidget& widget) {
  facts.round = static_cast<int>(std::clamp(std::trunc(widget.number(option::cycleLength, 4)), 1.0, 12.0));
  const double finished = std::max(0.0, std::trunc(widget.number(option::sessions, 0)));
  facts.session = static_cast<int>(std::fmod(finished, facts.round));
  // The long break belongs to the round that it ends.
  if (facts.session == 0 && finished > 0 && facts.rests) facts.session = facts.round;
}

QString wordOf(const TimerFacts& facts, const DockWidget& widget) {
  const bool between = facts.fresh && widget.options.contains(option::phase);  // Stopped before this phase began.
  if (!facts.phase.isEmpty() && (facts.running || between)) return facts.phase;
  if (facts.running) return TileWords::tr("Running");
  if (facts.ended) return runsAs(widget, TimerRun::Exercise) ? TileWords::tr("Time to move") : TileWords::tr("Done");
  return facts.fresh ? TileWords::tr("Ready") : TileWords::tr("Paused");
}

}  // namespace

QString TimerFacts::figure() const {
  // A countdown shows the second that has begun: 25:00 stands for a whole second, and 00:00 is the end.
  return LocalFigures::of(TimeMath::display(whole > 0 ? std::ceil(seconds - kNothing) : seconds));
}

TimerFacts timerFacts(const DockWidget& widget, const QDateTime& now) {
  TimerFacts facts;
  facts.running = Ticking::timerIsRunning(widget);
  if (runsAs(widget, TimerRun::Stopwatch)) {
    facts.seconds = std::max(0.0, TimeMath::elapsed(widget, now));
    facts.fresh = !facts.running && facts.seconds < kNothing;
    facts.share = std::fmod(std::floor(facts.seconds), kSecondsPerMinute) / kSecondsPerMinute;
    facts.word = wordOf(facts, widget);
    return facts;
  }
  const QString phase = phaseOf(widget);
  facts.phase = timerPhaseName(phase);
  if (isPomodoro(widget))
    facts.whole = PomodoroMath::duration(widget, phase);
  else if (isPosture(widget))
    facts.whole = PostureMath::duration(widget, phase);
  else
    facts.whole = std::max(1.0, widget.number(option::minutes, 25) * kSecondsPerMinute);
  facts.seconds = TimeMath::remaining(widget, now);
  facts.fresh = !facts.running && facts.seconds >= facts.whole - kNothing;
  facts.ended = !facts.running && facts.seconds < kNothing;
  facts.rests = isPomodoro(widget) && phase != value::work;
  if (isPomodoro(widget)) countSessions(facts, widget);
  const double left = std::clamp(facts.seconds / facts.whole, 0.0, 1.0);
  if (!facts.fresh) facts.share = isPomodoro(widget) ? 1 - left : left;
  facts.word = wordOf(facts, widget);
  return facts;
}

QString timerPhaseName(const QString& phase) {
  if (phase == value::work) return TileWords::tr("Focus");
  if (phase == value::shortBreak) return TileWords::tr("Short break");
  if (phase == value::longBreak) return TileWords::tr("Long break");
  if (phase == value::seated) return TileWords::tr("Seated");
  if (phase == value::standing) return TileWords::tr("Standing");
  return {};
}

QString nextTimerPhase(const DockWidget& widget) {
  DockWidget ended = widget;
  ended.options.insert(option::deadline, u"0"_s);
  ended.options.remove(option::autoContinue);
  const QDateTime end = QDateTime::fromSecsSinceEpoch(0);
  const DockWidget next = isPomodoro(widget) ? PomodoroMath::advance(ended, end) : PostureMath::advance(ended, end);
  return next.options.value(option::phase);
}

}  // namespace tarnwick
