#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <memory>

#include "desktop/MotionPreference.h"
#include "motion/Fade.h"

class QGraphicsOpacityEffect;

namespace tarnwick {

/// Lets a small window come and go softly: a tip, a bubble, a menu. It belongs to the window's widget. Without a clock,
/// as where motion is reduced, the window is there and gone at once. Where windows cannot be translucent it must not be
/// used.
class WindowFade final : public QObject {
  Q_OBJECT
 public:
  WindowFade(QWidget& window, std::unique_ptr<FrameClock> clock);

  /// What the small windows of a display fade by; null where motion is reduced.
  static std::unique_ptr<FrameClock> clockOf(FrameClocks& clocks, const MotionPreference& motion,
                                             const QString& display);

  /// Turned on its way, it goes on from what is seen now. What out() was to call is not called any more.
  void in();
  /// `done` is called once nothing is seen any more, and may destroy the window; within this call where nothing moves.
  void out(std::function<void()> done);
  /// Whether it takes time.
  bool moves() const { return moves_; }
  /// Nothing is seen, as before in().
  void hide();
  /// All of it is seen, as after in().
  void jumpIn();

 private:
  void show();
  void arrive();

  QGraphicsOpacityEffect* effect_;  // Owned by the window.
  bool moves_;
  Animator animator_;
  Fade fade_;
  std::function<void()> done_;
};

}  // namespace tarnwick
