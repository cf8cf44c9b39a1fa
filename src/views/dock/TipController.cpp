#include "views/dock/TipController.h"

namespace tarnwick {

void TipController::point(const std::optional<DockTip>& tip) {
  const bool isSame = tip && pointed_ && tip->key == pointed_->key;
  const bool isNothing = !tip && !pointed_;
  pointed_ = tip;
  if (isSame && shown_ && shown_->key == tip->key) show(tip);
  if (isSame || isNothing) return;
  work_.reset();
  if (tip && shown_)
    show(tip);
  else if (tip)
    work_ = scheduler_.after(kDelay, [this] { show(pointed_); });
  else if (shown_)
    work_ = scheduler_.after(kGap, [this] { show(std::nullopt); });
}

void TipController::say(const DockTip& tip) {
  work_.reset();
  show(tip);
}

void TipController::leave() {
  pointed_.reset();
  dismiss();
}

void TipController::dismiss() {
  work_.reset();
  show(std::nullopt);
}

void TipController::show(const std::optional<DockTip>& tip) {
  if (shown_ == tip) return;
  shown_ = tip;
  Q_EMIT changed();
}

}  // namespace tarnwick
