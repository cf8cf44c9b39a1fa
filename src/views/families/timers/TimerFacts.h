#pragma once

#include <QDateTime>
#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// The state of a timer of any kind at one moment, for its tile and its panel.
struct TimerFacts {
  double seconds = 0;  ///< What its figure says: left, or counted by a stopwatch.
  double whole = 0;    ///< The length of this countdown; 0 for a stopwatch.
  bool running = false;
  bool fresh = false;  ///< At its beginning.
  bool ended = false;  ///< A countdown that has run out.
  bool rests = false;  ///< In a break between two focus sessions.
  QString phase;       ///< Named; empty where there are no phases.
  int session = 0;     ///< Focus sessions finished in this round.
  int round = 0;       ///< How many make a round; 0 where they are not counted.

  QString figure() const;
  /// The share of the ring that is drawn: what is left, but what is done of a focus session, and the second hand of a
  /// stopwatch. Nothing while fresh.
  double share = 0;
  /// "Running", "Paused", a phase: what the caption says.
  QString word;
};

TimerFacts timerFacts(const DockWidget& widget, const QDateTime& now);

/// A phase's name, as "Short break".
QString timerPhaseName(const QString& phase);
/// The phase that follows the present one, as it would be if that ended now.
QString nextTimerPhase(const DockWidget& widget);

}  // namespace tarnwick
