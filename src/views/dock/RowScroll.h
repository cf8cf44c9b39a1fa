#pragma once

#include <functional>

#include "views/dock/EdgeScroll.h"
#include "views/dock/RowTiles.h"

class QWheelEvent;

namespace tarnwick {

/// How far a row that is wider than its glass is scrolled: by the wheel, to what the keyboard is at, and while
/// something is held over one of its ends. The row is borrowed.
class RowScroll final {
 public:
  /// `scrolled` is called when the row is to be laid out at another position().
  RowScroll(const RowTiles& tiles, Animator& animator, std::function<void()> scrolled);

  /// Units from the row's beginning.
  double position() const { return position_; }
  /// False where it goes no further.
  bool by(double units);
  /// Brings an item into sight.
  void reveal(qsizetype item);
  /// False where there is nothing to scroll.
  bool turn(const QWheelEvent& event);
  /// Back to the beginning, for another row that is laid out next.
  void reset() { position_ = 0; }
  /// The row is laid out differently, and may not go so far any more.
  void clamp();
  EdgeScroll& edges() { return edges_; }

 private:
  const RowTiles& tiles_;
  std::function<void()> scrolled_;
  double position_ = 0;
  EdgeScroll edges_;
};

}  // namespace tarnwick
