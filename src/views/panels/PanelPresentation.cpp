#include "views/panels/PanelPresentation.h"

#include <QEvent>
#include <algorithm>

#include "desktop/FrameClock.h"
#include "dock/MovingPicture.h"
#include "views/controls/ControlTheme.h"
#include "views/theme/Glass.h"

namespace tarnwick {

PanelPresentation::PanelPresentation(std::unique_ptr<QWidget> content, std::unique_ptr<FrameClock> clock)
    : content_(content.release()), driver_(this, std::move(clock), [this](double value) {
        const bool wasShown = progress_ > 0;
        progress_ = value;
        apply();
        if (wasShown && progress_ <= 0) Q_EMIT vanished();
      }) {
  setAttribute(Qt::WA_NoSystemBackground);
  content_->setParent(this);
  content_->hide();
  picture_ = new MovingPicture(this, content_);
}

PanelPresentation::~PanelPresentation() = default;

void PanelPresentation::setAnchor(const QPointF& anchor) {
  anchor_ = anchor;
  apply();
}

void PanelPresentation::setReduceMotion(bool reduceMotion) {
  reduceMotion_ = reduceMotion;
  apply();
}

void PanelPresentation::setComposited(bool composited) {
  isComposited_ = composited;
  if (!isComposited_) driver_.animate(driver_.spring().target, MotionStyle::Quick, false, reduceMotion_);
  cut();
}

void PanelPresentation::cut() {
  // A pane has no shadow then, and fills its window.
  if (isComposited_)
    clearMask();
  else
    setMask(Glass::outline(rect(), theme::kPanelCorner));
}

void PanelPresentation::animate(double to, bool animated) {
  driver_.animate(to, MotionStyle::Quick, animated && isComposited_, reduceMotion_);
}

void PanelPresentation::apply() {
  MovingPicture::Look look;
  look.opacity = qRound(std::clamp(progress_, 0.0, 1.0) * 255);
  if (!reduceMotion_) {
    // In steps in which the farthest pixel moves by one at most, so that a frame that looks like the last is none.
    const double steps = std::max(1, std::max(width(), height())) * devicePixelRatioF();
    look.scale = qRound((kLeastScale + (1 - kLeastScale) * progress_) * steps) / steps;
    if (qRound(look.scale * steps) == qRound(steps)) look.scale = 1;
    look.fixed = QPointF(anchor_.x() * width(), anchor_.y() * height());
  }
  content_->setVisible(look.opacity > 0);
  if (look.opacity == 0 || (look.opacity == 255 && look.scale == 1)) {
    picture_->finish();
  } else {
    picture_->present(look);
  }
}

QSize PanelPresentation::sizeHint() const { return content_->sizeHint(); }

QSize PanelPresentation::minimumSizeHint() const { return content_->minimumSizeHint(); }

bool PanelPresentation::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) updateGeometry();  // The content wants another size.
  return QWidget::event(event);
}

void PanelPresentation::resizeEvent(QResizeEvent*) {
  content_->resize(size());
  cut();
  apply();
}

}  // namespace tarnwick
