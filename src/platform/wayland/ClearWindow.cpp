#include "platform/wayland/ClearWindow.h"

#include <QDragEnterEvent>
#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

// A picture's sides must be whole multiples of the surface's scale, whichever that is.
constexpr int kSide = 60;
/// Time to look at what came and to touch it.
constexpr std::chrono::milliseconds kAfterATouch{2500};
constexpr std::chrono::milliseconds kFirstPause{250};
constexpr std::chrono::milliseconds kLongestPause{8000};

}  // namespace

ClearWindow::ClearWindow(const WaylandSession& session) : session_(session) {
  // Of a window without alpha Qt tells the compositor that it hides what lies below.
  QSurfaceFormat translucent;
  translucent.setAlphaBufferSize(8);
  setFormat(translucent);
  setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
  lingering_.setSingleShot(true);
  lingering_.setInterval(kAfterATouch);
  connect(&lingering_, &QTimer::timeout, this, &ClearWindow::forgetPointer);
  layer_ = new LayerWindow(session, *this);
  connect(layer_, &LayerWindow::dropped, this, [this] { viewport_.reset(); });
  connect(layer_, &LayerWindow::closed, this, &ClearWindow::lose);
  again_.setSingleShot(true);
  connect(&again_, &QTimer::timeout, this, [this] {
    if (target_) stand();
  });
}

ClearWindow::~ClearWindow() { destroy(); }

void ClearWindow::stand(QScreen& target, const QRect& withinScreen, const LayerLook& look) {
  target_ = &target;
  place_ = withinScreen;
  look_ = look;
  again_.stop();
  pause_ = kFirstPause;
  stand();
}

void ClearWindow::stand() {
  if (isVisible() && screen() != target_) setVisible(false);
  setGeometry(QRect(target_->geometry().topLeft() + place_.topLeft(), place_.size()));
  layer_->setScreen(*target_);
  layer_->setLook(look_);
  if (!isVisible()) {
    layer_->prepare();
    setVisible(true);
  }
  clear();
}

void ClearWindow::lose() {
  setVisible(false);
  forgetPointer();
  again_.start(pause_);
  pause_ = std::min(pause_ * 2, kLongestPause);
}

void ClearWindow::clear() {
  wl_surface* surface = WaylandSession::surfaceOf(*this);
  if (!surface) return;
  const bool stretches = session_.viewporter() != nullptr;
  if (!buffer_ || !stretches) {
    buffer_ = session_.clearBuffer(stretches ? QSize(kSide, kSide) : size());
    if (!stretches) wl_surface_set_buffer_scale(surface, 1);
  }
  if (stretches) {
    if (!viewport_) viewport_.reset(wp_viewporter_get_viewport(session_.viewporter(), surface));
    wp_viewport_set_destination(viewport_.get(), width(), height());
  }
  wl_surface_attach(surface, buffer_.get(), 0, 0);
  wl_surface_damage(surface, 0, 0, width(), height());
  wl_surface_commit(surface);
}

void ClearWindow::forgetPointer() { meet(false, false); }

void ClearWindow::meet(bool isMet, bool isDraggedOver) {
  const bool met = std::exchange(isMet_, isMet) != isMet;
  const bool dragged = std::exchange(isDraggedOver_, isDraggedOver) != isDraggedOver;
  if (met || dragged) Q_EMIT pointerChanged();
}

bool ClearWindow::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::Enter:
      meet(true, false);
      break;
    case QEvent::DragEnter:
      // A refused drag would still be followed by its moves; accepting it would promise to take what is dropped.
      meet(true, true);
      Q_EMIT dragMet(static_cast<QDragEnterEvent*>(event)->source());
      break;
    case QEvent::Leave:
    case QEvent::DragLeave:
    case QEvent::Drop:
      meet(false, false);
      break;
    case QEvent::MouseButtonPress:
      Q_EMIT pressed();
      break;
    // Taken, or the toolkit would make clicks of them.
    case QEvent::TouchBegin:
      lingering_.stop();
      meet(true, false);
      Q_EMIT pressed();
      return true;
    case QEvent::TouchUpdate:
      return true;
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
      lingering_.start();
      return true;
    default:
      break;
  }
  return QWindow::event(event);
}

}  // namespace tarnwick
