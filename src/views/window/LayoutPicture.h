#pragma once

#include <QWidget>

#include "config/DockLayout.h"
#include "motion/Fade.h"
#include "motion/SpringSet.h"

namespace tarnwick {

/// A small picture of a screen with the dock where a layout puts it: our dock, the system's, arrows for what moves and
/// dashed lines for where it can be. Alike in light and dark windows, and the same way round in every language.
class LayoutPicture final : public QWidget {
  Q_OBJECT
 public:
  static constexpr QSize kTiny{62, 39};
  static constexpr QSize kSmall{124, 78};
  static constexpr QSize kLarge{172, 109};

  LayoutPicture(DockLayout layout, QSize size, QWidget* parent = nullptr);

  /// The lake and the hills alone.
  static void paintLake(QPainter& painter, const QRectF& box);

  /// The edge of a dock that is fixed; other layouts have theirs.
  void setAtTop(bool atTop);
  /// Plays what the layout does a few times over, then rests, where it does anything; false ends it at once. Nothing
  /// runs while the picture rests or cannot be seen.
  void setMoving(bool moving);
  bool isMoving() const { return isMoving_; }
  /// What it moves by, where that is not what its window moves by. Without a clock it stays still.
  void setClock(std::unique_ptr<FrameClock> clock) { animator_.setClock(std::move(clock)); }
  /// Keeps the picture still.
  void setReduceMotion(bool reduce);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void play();
  void rest();
  void travelOn();
  void arrive();

  DockLayout layout_;
  bool atTop_ = false;
  bool wanted_ = false;
  bool isMoving_ = false;
  bool reduceMotion_ = false;
  int travels_ = 0;
  Animator animator_;
  SpringSet travel_{animator_};  // To 1, where everything is at the other end of its way, and back.
  Fade pause_;                   // Nothing is painted in its frames.
};

}  // namespace tarnwick
