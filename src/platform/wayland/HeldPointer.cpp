#include "platform/wayland/HeldPointer.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

QPointF pointOf(wl_fixed_t x, wl_fixed_t y) { return {wl_fixed_to_double(x), wl_fixed_to_double(y)}; }

}  // namespace

void HeldPointer::listen() {
  rest();
  const bool tells = session_.seat() && wl_seat_get_version(session_.seat()) >= WL_POINTER_FRAME_SINCE_VERSION;
  if (!tells || !session_.devices()) return;
  static const wl_pointer_listener kPointerListener = [] {
    wl_pointer_listener listener{};
    listener.enter = [](void* data, wl_pointer*, uint32_t, wl_surface*, wl_fixed_t x, wl_fixed_t y) {
      of(data).coming_ = pointOf(x, y);
    };
    listener.leave = [](void*, wl_pointer*, uint32_t, wl_surface*) {};
    listener.motion = [](void* data, wl_pointer*, uint32_t, wl_fixed_t x, wl_fixed_t y) {
      of(data).coming_ = pointOf(x, y);
    };
    listener.button = [](void*, wl_pointer*, uint32_t, uint32_t, uint32_t, uint32_t) {};
    listener.axis = [](void*, wl_pointer*, uint32_t, uint32_t, wl_fixed_t) {};
    listener.frame = [](void* data, wl_pointer*) { of(data).frameEnds(); };
    listener.axis_source = [](void*, wl_pointer*, uint32_t) {};
    listener.axis_stop = [](void*, wl_pointer*, uint32_t, uint32_t) {};
    listener.axis_discrete = [](void*, wl_pointer*, uint32_t, int32_t) {};
    return listener;
  }();
  static constexpr zwp_relative_pointer_v1_listener kDeviceListener{
      .relative_motion = [](void* data, zwp_relative_pointer_v1*, uint32_t, uint32_t, wl_fixed_t x, wl_fixed_t y,
                            wl_fixed_t, wl_fixed_t) { static_cast<HeldPointer*>(data)->moveBy(pointOf(x, y)); }};
  pointer_.reset(wl_seat_get_pointer(session_.seat()));
  wl_pointer_add_listener(pointer_.get(), &kPointerListener, this);
  device_.reset(zwp_relative_pointer_manager_v1_get_relative_pointer(session_.devices(), pointer_.get()));
  zwp_relative_pointer_v1_add_listener(device_.get(), &kDeviceListener, this);
}

void HeldPointer::rest() {
  device_.reset();
  pointer_.reset();
  settle();
}

void HeldPointer::settle() {
  isStill_ = true;
  hasMoved_ = false;
}

void HeldPointer::frameEnds() {
  within_ = coming_;
  moveBy(std::exchange(way_, QPointF()));
}

void HeldPointer::leave(const QPointF& corner) {
  if (std::exchange(isStill_, false)) place_ = corner + within_;
}

void HeldPointer::moveBy(const QPointF& way) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (isStill_ || !screen || way.isNull()) return;
  hasMoved_ = true;
  // The device goes on at the edge of the desktop, where the pointer on the screen stops.
  const QRectF all = screen->virtualGeometry();
  place_.setX(std::clamp(place_.x() + way.x(), all.left(), all.right() - 1));
  place_.setY(std::clamp(place_.y() + way.y(), all.top(), all.bottom() - 1));
  if (std::exchange(isTelling_, true)) return;
  const auto tell = [this] {
    isTelling_ = false;
    if (place()) Q_EMIT moved();
  };
  QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

std::optional<QPointF> HeldPointer::place() const {
  return isStill_ || !hasMoved_ ? std::nullopt : std::optional(place_);
}

}  // namespace tarnwick
