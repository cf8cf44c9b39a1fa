#pragma once

#include <QPointF>
#include <functional>

#include "motion/Animator.h"
#include "views/dock/DockRow.h"
#include "views/dock/RowLayout.h"

namespace tarnwick {

/// Scrolls a row that is wider than its glass while something is held where it goes on beyond what is seen. The row and
/// its layout are borrowed.
class EdgeScroll final : public Animation {
 public:
  /// `scroll` moves the row on by so many units, and says whether it still could.
  EdgeScroll(const DockRow& row, const RowLayout& layout, Animator& animator, std::function<bool(double units)> scroll);
  ~EdgeScroll() override { animator_.stop(*this); }

  void hold(QPointF pointer);
  void letGo();

  bool advance(double seconds) override;
  void finish() override {}

 private:
  const DockRow& row_;
  const RowLayout& layout_;
  Animator& animator_;
  std::function<bool(double)> scroll_;
  int direction_ = 0;  ///< -1 towards the row's beginning, 1 towards its end.
};

}  // namespace tarnwick
