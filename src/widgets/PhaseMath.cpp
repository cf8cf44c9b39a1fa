#include "widgets/PhaseMath.h"

#include <cmath>
#include <functional>

#include "base/Text.h"
#include "widgets/TimeMath.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr double kDay = 86'400;

double seconds(double minutes) { return std::clamp(minutes * 60, 1.0, kDay); }

/// False for an infinity and for what is no number by its own word; any other text that is none counts as absent.
bool isCountable(const DockWidget& widget, const QString& key) {
  bool isNumber = false;
  const double value = widget.options.value(key).toDouble(&isNumber);
  return !isNumber || std::isfinite(value);
}

/// What runs through phases: what comes after one, and how long a whole round takes that ends where it began.
struct Cycle {
  std::function<QString(const QString& phase)> next;
  std::function<double(const QString& phase)> duration;
  double round = 0;
  std::function<void(double rounds)> skip;
};

/// What both cycles share. `phase` is the one that ended.
void run(DockWidget& widget, QString phase, double deadline, double now, const Cycle& cycle) {
  const bool continues = widget.options.value(option::autoContinue) == value::on;
  // A computer that slept for weeks need not count every second of them.
  if (const double rounds = std::floor((now - deadline) / cycle.round) - 1; continues && rounds > 0) {
    deadline += rounds * cycle.round;
    cycle.skip(rounds);
  }
  for (;;) {
    phase = cycle.next(phase);
    const double length = cycle.duration(phase);
    widget.options.insert(option::phase, phase);
    widget.options.insert(option::remaining, TimeMath::text(length));
    if (!continues) {
      widget.options.remove(option::deadline);
      return;
    }
    deadline += length;
    if (deadline > now) {
      widget.options.insert(option::deadline, TimeMath::text(deadline));
      return;
    }
  }
}

}  // namespace

double PomodoroMath::duration(const DockWidget& widget, const QString& phase) {
  if (phase == value::shortBreak) return seconds(widget.number(option::shortBreak, 5));
  if (phase == value::longBreak) return seconds(widget.number(option::longBreak, 15));
  return seconds(widget.number(option::minutes, TimeMath::kDefaultMinutes));
}

DockWidget PomodoroMath::advance(const DockWidget& widget, const QDateTime& at) {
  const auto deadline = Text::number(widget.options.value(option::deadline));
  const double now = TimeMath::unixSeconds(at);
  if (KindTraits::of(widget.kind).run != TimerRun::Pomodoro || !deadline || *deadline > now) return widget;

  if (!isCountable(widget, option::sessions) || !isCountable(widget, option::cycleLength)) return widget;
  const double length = std::clamp(std::trunc(widget.number(option::cycleLength, 4)), 1.0, 12.0);
  double sessions = widget.number(option::sessions, 0);

  DockWidget advanced = widget;
  Cycle cycle;
  cycle.next = [&](const QString& phase) {
    if (phase == value::shortBreak || phase == value::longBreak) return value::work;
    sessions += 1;
    return std::fmod(sessions, length) == 0 ? value::longBreak : value::shortBreak;
  };
  cycle.duration = [&](const QString& phase) { return duration(widget, phase); };
  cycle.round = length * duration(widget, value::work) + (length - 1) * duration(widget, value::shortBreak) +
                duration(widget, value::longBreak);
  cycle.skip = [&](double rounds) { sessions += rounds * length; };
  run(advanced, widget.options.value(option::phase), *deadline, now, cycle);
  advanced.options.insert(option::sessions, TimeMath::text(sessions));
  return advanced;
}

bool PostureMath::stands(const DockWidget& widget) { return widget.number(option::standingMinutes, 0) > 0; }

double PostureMath::duration(const DockWidget& widget, const QString& phase) {
  return seconds(phase == value::standing ? widget.number(option::standingMinutes, 0)
                                          : widget.number(option::minutes, TimeMath::kDefaultMinutes));
}

DockWidget PostureMath::advance(const DockWidget& widget, const QDateTime& at) {
  const auto deadline = Text::number(widget.options.value(option::deadline));
  const double now = TimeMath::unixSeconds(at);
  if (KindTraits::of(widget.kind).run != TimerRun::Posture || !deadline || *deadline > now) return widget;

  DockWidget advanced = widget;
  Cycle cycle;
  cycle.next = [&](const QString& phase) {
    return phase != value::standing && stands(widget) ? value::standing : value::seated;
  };
  cycle.duration = [&](const QString& phase) { return duration(widget, phase); };
  cycle.round = duration(widget, value::seated) + (stands(widget) ? duration(widget, value::standing) : 0);
  cycle.skip = [](double) {};
  run(advanced, widget.options.value(option::phase), *deadline, now, cycle);
  return advanced;
}

}  // namespace tarnwick
