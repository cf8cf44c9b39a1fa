#include "motion/Animator.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

Animator::Animator(std::unique_ptr<FrameClock> clock) { setClock(std::move(clock)); }

Animator::~Animator() = default;

void Animator::setClock(std::unique_ptr<FrameClock> clock) {
  const QList<Animation*> ended = std::exchange(running_, {});
  clock_ = std::move(clock);
  lastTimestamp_ = 0;
  if (clock_) connect(clock_.get(), &FrameClock::frame, this, &Animator::frame);
  for (Animation* animation : ended) animation->finish();
}

void Animator::run(Animation& animation) {
  if (isRunning(animation)) return;
  if (clock_) clock_->start();
  if (clock_ && clock_->isRunning())
    running_.append(&animation);
  else
    animation.finish();
}

void Animator::stop(Animation& animation) {
  running_.removeOne(&animation);
  if (!running_.isEmpty() || !clock_) return;
  clock_->stop();
  lastTimestamp_ = 0;
}

bool Animator::isRunning(const Animation& animation) const {
  return std::find(running_.begin(), running_.end(), &animation) != running_.end();
}

void Animator::frame(double timestamp, double duration) {
  const double seconds = lastTimestamp_ == 0 ? duration : timestamp - lastTimestamp_;
  // The same frame reported twice: no time has passed.
  if (lastTimestamp_ != 0 && seconds <= 0) return;
  lastTimestamp_ = timestamp;
  // What one of them leads to may stop others, or set them going.
  const QList<Animation*> now = running_;
  for (Animation* animation : now)
    if (isRunning(*animation) && !animation->advance(seconds)) stop(*animation);
}

}  // namespace tarnwick
