#include "dock/MovingPicture.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QPainter>

#include "base/ProbeCounters.h"

namespace tarnwick {

MovingPicture::MovingPicture(QWidget* window, QWidget* subject) : QWidget(window), subject_(subject) {
  // It paints every pixel that it covers, so nothing below is painted.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_NoSystemBackground);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
  window->installEventFilter(this);
}

void MovingPicture::setRestingPlace(const QPoint& place) {
  if (place == place_) return;
  place_ = place;
  isStale_ = true;
  if (isPresenting_) draw();
}

void MovingPicture::present(const Look& look) {
  if (isPresenting_ && look == look_) return;
  look_ = look;
  if (isPresenting_) {
    draw();
    return;
  }
  isPresenting_ = true;
  isStale_ = true;
  setGeometry(QRect(QPoint(), window()->size()));
  raise();
  show();
  // What only says that widgets were shown, those within the live one included, would look like a change of it if it
  // waited any longer.
  isDrawing_ = true;
  QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
  draw();
  isDrawing_ = true;
  QCoreApplication::sendPostedEvents(window(), QEvent::UpdateRequest);
  isDrawing_ = false;
}

void MovingPicture::warmUp() {
  if (isPresenting_) return;
  setGeometry(QRect(QPoint(), window()->size()));
  renderSubject();
  picture_ = QPixmap();
}

void MovingPicture::finish() {
  if (!isPresenting_) return;
  isPresenting_ = false;
  hide();
  picture_ = QPixmap();
}

bool MovingPicture::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::UpdateRequest:
      // The picture itself is drawn at once and never asks, so it is the live widget that looks different now.
      if (isPresenting_ && !isDrawing_) {
        isStale_ = true;
        draw();
      }
      break;
    case QEvent::Resize:
      if (isPresenting_) setGeometry(QRect(QPoint(), window()->size()));
      break;
    default:
      break;
  }
  return false;
}

QSize MovingPicture::deviceSize() const {
  return (QSizeF(size()) * devicePixelRatioF()).toSize().expandedTo(QSize(1, 1));
}

void MovingPicture::take() {
  ProbeCounters::count("movingPicture");
  renderSubject();
}

void MovingPicture::renderSubject() {
  if (picture_.size() != deviceSize()) picture_ = QPixmap(deviceSize());
  picture_.setDevicePixelRatio(devicePixelRatioF());
  picture_.fill(Qt::transparent);
  subject_->render(&picture_, place_, QRegion(), QWidget::DrawChildren);
  // It is drawn pixel by pixel, whatever the ratio is.
  picture_.setDevicePixelRatio(1);
  isStale_ = false;
}

void MovingPicture::draw() {
  if (!isVisible()) return;
  if (isStale_ || picture_.size() != deviceSize()) take();
  isDrawing_ = true;
  repaint();
  isDrawing_ = false;
}

void MovingPicture::paintEvent(QPaintEvent* event) {
  // The window may have been hidden when it began to move, or come to a screen with other pixels.
  if (isPresenting_ && picture_.size() != deviceSize()) take();
  QPainter painter(this);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(event->rect(), Qt::transparent);
  if (picture_.isNull()) return;
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.setOpacity(look_.opacity / 255.0);
  if (look_.scale != 1) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(look_.fixed);
    painter.scale(look_.scale, look_.scale);
    painter.translate(-look_.fixed);
  }
  const double ratio = devicePixelRatioF();
  painter.scale(1 / ratio, 1 / ratio);
  painter.drawPixmap(0, look_.shift, picture_);
}

}  // namespace tarnwick
