#include "views/theme/WindowFade.h"

#include <QGraphicsOpacityEffect>
#include <utility>

#include "views/theme/Theme.h"

namespace tarnwick {

WindowFade::WindowFade(QWidget& window, std::unique_ptr<FrameClock> clock)
    : QObject(&window),
      effect_(new QGraphicsOpacityEffect),
      moves_(clock != nullptr),
      animator_(std::move(clock)),
      fade_(
          animator_, theme::kFadeSeconds, [this] { show(); }, [this] { arrive(); }) {
  window.setGraphicsEffect(effect_);
  hide();
}

std::unique_ptr<FrameClock> WindowFade::clockOf(FrameClocks& clocks, const MotionPreference& motion,
                                                const QString& display) {
  return motion.reducesMotion() ? nullptr : clocks.make(display);
}

void WindowFade::hide() {
  fade_.jump(0);
  show();
}

void WindowFade::jumpIn() {
  fade_.jump(1);
  show();
}

void WindowFade::in() {
  done_ = {};
  fade_.fadeTo(1);
}

void WindowFade::out(std::function<void()> done) {
  if (!moves_ || fade_.value() == 0) {
    hide();
    done();
    return;
  }
  done_ = std::move(done);
  fade_.fadeTo(0);
}

/// At rest the window is painted as if there were no effect.
void WindowFade::show() {
  effect_->setOpacity(fade_.value());
  effect_->setEnabled(fade_.value() < 1);
}

/// Not within the frame, which still works with what `done` may destroy.
void WindowFade::arrive() {
  if (!done_) return;
  const auto end = [this] {
    if (const auto done = std::exchange(done_, {})) done();
  };
  QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
}

}  // namespace tarnwick
