#include "dock/DockContentContainer.h"

#include <QEvent>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "desktop/FrameClock.h"
#include "dock/MovingPicture.h"

namespace tarnwick {
namespace {

/// Whether the window is about to look for the widget under a point.
bool looksForWidget(QEvent::Type type) {
  switch (type) {
    case QEvent::Enter:
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
      return true;
    default:
      return false;
  }
}

}  // namespace

DockContentContainer::DockContentContainer(std::unique_ptr<DockContent> content, std::unique_ptr<FrameClock> clock,
                                           std::chrono::milliseconds start)
    : content_(content.release()), start_(start), driver_(this, std::move(clock), [this](double value) {
        progress_ = value;
        apply();
      }) {
  setAttribute(Qt::WA_NoSystemBackground);
  content_->setParent(this);
  content_->hide();
  picture_ = new MovingPicture(this, content_);
  connect(content_, &DockContent::shapeChanged, this, [this] {
    takeShape();
    if (!look_.isHidden) Q_EMIT shapeChanged();
  });
}

DockContentContainer::~DockContentContainer() = default;

void DockContentContainer::setRestingFrame(const QRect& frame) {
  if (frame == restingFrame_) return;
  restingFrame_ = frame;
  placeContent();
  picture_->setRestingPlace(frame.topLeft());
  if (!look_.isHidden) Q_EMIT shapeChanged();
}

QRect DockContentContainer::restingFrame() const { return restingFrame_.isEmpty() ? rect() : restingFrame_; }

void DockContentContainer::setTravel(double travel, bool slidesDown) {
  travel_ = travel;
  slidesDown_ = slidesDown;
  apply();
}

void DockContentContainer::setReduceMotion(bool reduceMotion) {
  reduceMotion_ = reduceMotion;
  apply();
}

void DockContentContainer::animate(double to, bool animated) {
  driver_.animate(to, MotionStyle::Reveal, animated, reduceMotion_);
}

void DockContentContainer::focusContent() {
  focusIsWanted_ = look_.isHidden;
  if (!focusIsWanted_) content_->setFocus(Qt::ShortcutFocusReason);
}

double DockContentContainer::offset() const {
  if (reduceMotion_) return 0;
  const double away = (1 - progress_) * travel_;
  return slidesDown_ ? away : -away;
}

DockContentContainer::Look DockContentContainer::look() const {
  const double ratio = devicePixelRatioF();
  Look look;
  look.shift = qRound(offset() * ratio);
  if (isComposited_) {
    look.opacity = qRound(std::clamp(progress_, 0.0, 1.0) * 255);
    look.isHidden = look.opacity == 0;
  } else {
    // Nothing can fade: it is there until it is out of the way, or until half of the time where it does not travel.
    const bool travels = travel_ > 0 && !reduceMotion_;
    const bool isAway = travels ? std::abs(look.shift) >= qRound(travel_ * ratio) : progress_ < 0.5;
    look.isHidden = progress_ <= 0 || isAway;
    look.opacity = 255;
  }
  return look.isHidden ? Look() : look;
}

void DockContentContainer::apply() {
  const Look next = look();
  if (next == look_) return;
  const bool wasHidden = look_.isHidden;
  const int oldShift = shapeShift();
  look_ = next;
  if (look_.isHidden || look_.isAtRest()) placeContent();
  content_->setVisible(!look_.isHidden);
  if (!look_.isHidden && std::exchange(focusIsWanted_, false)) content_->setFocus(Qt::ShortcutFocusReason);
  if (look_.isHidden || look_.isAtRest()) {
    picture_->finish();
  } else {
    picture_->present({look_.shift, look_.opacity, 1, {}});
  }
  if (look_.isHidden != wasHidden || shapeShift() != oldShift) Q_EMIT shapeChanged();
}

void DockContentContainer::warmUpSoon() {
  if (std::exchange(isWarm_, true)) return;
  QTimer::singleShot(start_, this, [this] {
    if (look_.isHidden) picture_->warmUp();
  });
}

/// The live content is where its picture is seen, so that what the pointer does reaches it there.
void DockContentContainer::placeContent() {
  const QSize before = content_->size();
  content_->setGeometry(restingFrame().translated(0, shapeShift()));
  if (content_->size() != before) takeShape();
}

void DockContentContainer::takeShape() {
  contentOutline_ = content_->outline();
  contentInput_ = content_->inputRegion();
}

int DockContentContainer::shapeShift() const { return qRound(look_.shift / devicePixelRatioF()); }

QRegion DockContentContainer::placed(const QRegion& region) const {
  return region.translated(restingFrame().topLeft() + QPoint(0, shapeShift())) & rect();
}

void DockContentContainer::configure(const DockGeometry& geometry) {
  isComposited_ = geometry.composited;
  content_->configure(geometry);
  takeShape();
  apply();
}

QMargins DockContentContainer::margins() const { return content_->margins(); }

QRegion DockContentContainer::outline() const { return look_.isHidden ? QRegion() : placed(contentOutline_); }

QRegion DockContentContainer::inputRegion() const { return look_.isHidden ? QRegion() : placed(contentInput_); }

bool DockContentContainer::event(QEvent* event) {
  const bool result = DockContent::event(event);
  switch (event->type()) {
    case QEvent::WinIdChange:
    case QEvent::Show:
      if (windowHandle() && windowHandle() != watched_) {
        watched_ = windowHandle();
        watched_->installEventFilter(this);
      }
      apply();
      if (event->type() == QEvent::Show) warmUpSoon();
      break;
    case QEvent::Leave:
      Q_EMIT pointerLeft();
      break;
    case QEvent::ScreenChangeInternal:  // The new screen may have other pixels.
      apply();
      break;
    default:
      break;
  }
  return result;
}

bool DockContentContainer::eventFilter(QObject* watched, QEvent* event) {
  // Following each frame would have the content ask to be painted each time, so it follows when it matters.
  if (watched == watched_ && picture_->isPresenting() && looksForWidget(event->type())) placeContent();
  return false;
}

void DockContentContainer::resizeEvent(QResizeEvent*) {
  if (restingFrame_.isEmpty()) placeContent();
}

}  // namespace tarnwick
