#include "views/dock/Magnifier.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "views/theme/Theme.h"

namespace tarnwick {

Magnifier::Magnifier(const DockRow& row, const RowLayout& layout, Animator& animator,
                     std::function<bool(qsizetype item)> swells, std::function<void(qsizetype item)> changed)
    : row_(row),
      layout_(layout),
      animator_(animator),
      swells_(std::move(swells)),
      changed_(std::move(changed)),
      swell_(animator, theme::kFadeSeconds, [this] { update(); }) {}

void Magnifier::point(std::optional<double> x) {
  pointer_ = x;
  if (row_.reduceMotion || row_.swelling <= 0) return;
  if (x) follower_.follow();
  // Fills answer at once; growing and shrinking again takes the length of a fade.
  const double wanted = x ? 1 : 0;
  if (swell_.goal() != wanted) swell_.fadeTo(wanted);
}

void Magnifier::update() {
  drawn_.resize(layout_.items.size(), 1);
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const double wanted = of(item);
    if (std::exchange(drawn_[item], wanted) != wanted) changed_(item);
  }
}

double Magnifier::of(qsizetype item) const {
  const double amount = swell_.value();
  if (row_.reduceMotion || row_.swelling <= 0 || amount <= 0 || !swells_(item)) return 1;
  const QRectF& place = layout_.items[item].rect;
  const double scale = Magnification::scale(place.center().x() / row_.scale, followed_ / row_.scale, row_.swelling);
  // In whole steps in which its edges move by half a device pixel: nobody sees less.
  const double step = 1 / (std::max(place.width(), place.height()) * ratio_);
  return 1 + std::floor((scale - 1) * amount / step) * step;
}

void Magnifier::goToPointer() {
  if (!pointer_) return;
  followed_ = *pointer_;
  update();
}

void Magnifier::Follower::follow() {
  Animator& animator = magnifier_.animator_;
  if (animator.isRunning(*this)) {
    moved_ = true;
    return;
  }
  isFirst_ = !animator.isRunning();
  moved_ = false;
  magnifier_.goToPointer();
  animator.run(*this);
}

bool Magnifier::Follower::advance(double) {
  // The first frame of a clock that was at rest comes at once.
  if (std::exchange(isFirst_, false)) return true;
  if (!std::exchange(moved_, false)) return false;
  magnifier_.goToPointer();
  return true;
}

}  // namespace tarnwick
