#include "platform/wayland/HeldPointer.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

namespace tarnwick {

void HeldPointer::press(const QPointF& place, quint64 timestamp) {
  release();
  if (!session_.devices() || !session_.seat()) return;
  // A seat of the first version says no more than this.
  static const wl_pointer_listener kPointerListener = [] {
    wl_pointer_listener listener{};
    listener.enter = [](void*, wl_pointer*, uint32_t, wl_surface*, wl_fixed_t, wl_fixed_t) {};
    listener.leave = [](void*, wl_pointer*, uint32_t, wl_surface*) {};
    listener.motion = [](void*, wl_pointer*, uint32_t, wl_fixed_t, wl_fixed_t) {};
    listener.button = [](void*, wl_pointer*, uint32_t, uint32_t, uint32_t, uint32_t) {};
    listener.axis = [](void*, wl_pointer*, uint32_t, uint32_t, wl_fixed_t) {};
    return listener;
  }();
  static constexpr zwp_relative_pointer_v1_listener kDeviceListener{
      .relative_motion = [](void* data, zwp_relative_pointer_v1*, uint32_t high, uint32_t low, wl_fixed_t x,
                            wl_fixed_t y, wl_fixed_t, wl_fixed_t) {
        constexpr quint64 kMicroseconds = 1000;
        const quint64 moment = ((quint64{high} << 32) | low) / kMicroseconds;
        auto* self = static_cast<HeldPointer*>(data);
        self->motions_.append({moment, QPointF(wl_fixed_to_double(x), wl_fixed_to_double(y))});
        self->hasMoved_ = true;
      }};
  pointer_.reset(wl_seat_get_pointer(session_.seat()));
  wl_pointer_add_listener(pointer_.get(), &kPointerListener, this);
  device_.reset(zwp_relative_pointer_manager_v1_get_relative_pointer(session_.devices(), pointer_.get()));
  zwp_relative_pointer_v1_add_listener(device_.get(), &kDeviceListener, this);
  place_ = place;
  moment_ = timestamp;
}

void HeldPointer::release() {
  device_.reset();
  pointer_.reset();
  motions_.clear();
  hasMoved_ = false;
}

void HeldPointer::note(const QPointF& place, quint64 timestamp) {
  place_ = place;
  moment_ = timestamp;
  motions_.removeIf([timestamp](const Motion& motion) { return motion.timestamp <= timestamp; });
}

std::optional<QPointF> HeldPointer::place() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (!hasMoved_ || !screen) return std::nullopt;
  // The device goes on at the edge of the desktop, where the hand's pointer stops.
  const QRectF all = screen->virtualGeometry();
  for (const Motion& motion : std::as_const(motions_)) {
    if (motion.timestamp <= moment_) continue;
    place_.setX(std::clamp(place_.x() + motion.way.x(), all.left(), all.right() - 1));
    place_.setY(std::clamp(place_.y() + motion.way.y(), all.top(), all.bottom() - 1));
  }
  motions_.clear();
  return place_;
}

}  // namespace tarnwick
