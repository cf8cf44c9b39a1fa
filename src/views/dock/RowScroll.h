#pragma once

#include <functional>

#include "motion/SpringSet.h"
#include "views/dock/EdgeScroll.h"
#include "views/dock/RowTiles.h"

class QWheelEvent;

namespace tarnwick {

/// How far a row that is wider than its glass is scrolled: by the wheel, by its arrows, to what the keyboard is at, and
/// while something is held near an arrow. The row is borrowed.
class RowScroll final {
 public:
  /// `scrolled` is called when the row is to be laid out at another position().
  RowScroll(const RowTiles& tiles, Animator& animator, std::function<void()> scrolled);

  /// Units from the row's beginning.
  double position() const { return position_; }
  /// False where it goes no further.
  bool by(double units);
  /// Travels on by most of what is seen: -1 towards the row's beginning, 1 towards its end.
  void turnPage(int direction);
  /// Brings an item into sight.
  void reveal(qsizetype item);
  /// False where there is nothing to scroll.
  bool turn(const QWheelEvent& event);
  /// Back to the beginning, for another row that is laid out next.
  void reset();
  /// The row is laid out differently, and may not go so far any more.
  void clamp();
  EdgeScroll& edges() { return edges_; }

 private:
  void moveTo(double position);

  const RowTiles& tiles_;
  std::function<void()> scrolled_;
  double position_ = 0;
  EdgeScroll edges_;
  SpringSet travel_;
};

}  // namespace tarnwick
