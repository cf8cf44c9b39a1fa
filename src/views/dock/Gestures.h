#pragma once

#include <QList>
#include <QPoint>
#include <QPointF>
#include <QString>

namespace tarnwick {

/// How fast a pointer moves sideways, from what it did in the last tenth of a second.
class FlickMeter {
 public:
  void add(double x, quint64 milliseconds);
  /// Units a second; negative to the left. 0 while too little is known.
  double velocity(quint64 now) const;

 private:
  struct Sample {
    double x;
    quint64 at;
  };
  QList<Sample> samples_;
};

/// The steps of a wheel. What is turned over something else, or the other way, begins anew.
class WheelMeter {
 public:
  /// How many whole steps there are by now; negative towards the user. `turned` as wheel events tell it.
  int steps(qsizetype over, double turned);
  void reset() { turned_ = 0; }

 private:
  qsizetype over_ = -1;
  double turned_ = 0;
};

/// A button that is held down on the dock.
struct Press {
  enum class On { Item, Tab, Arrow, Glass };
  enum class Gesture { Nothing, Drag, Swipe, Move };  ///< What it became by moving.

  static constexpr double kSlop = 6;    ///< Units that a click may move.
  static constexpr double kHold = 0.4;  ///< Seconds without a move after which an application shows its windows.

  On on = On::Glass;
  qsizetype tab = -1;
  int arrow = 0;  ///< As RowLayout::arrowAt tells it; 0 where an arrow was a moment ago.
  QString key;    ///< Of the item; the row may change before the button comes up.
  QPointF at;
  QPoint global;  ///< Where the pointer was last, on the screen.
  Gesture gesture = Gesture::Nothing;
  FlickMeter flick;
};

/// Whether a sideways drag of `distance` units, let go at `velocity`, switches profiles.
bool swipeSwitches(double distance, double velocity);

}  // namespace tarnwick
