#include "platform/wayland/WaylandQueue.h"

#include <poll.h>

#include <QDeadlineTimer>

namespace tarnwick {

WaylandQueue::WaylandQueue(wl_display* display) : display_(display), queue_(wl_display_create_queue(display)) {}

bool WaylandQueue::waitUntil(const std::function<bool()>& holds) {
  const QDeadlineTimer deadline(kPatience);
  while (true) {
    if (wl_display_dispatch_queue_pending(display_, queue_.get()) < 0) return false;
    if (holds()) return true;
    if (deadline.hasExpired()) return false;
    if (wl_display_prepare_read_queue(display_, queue_.get()) != 0) continue;
    wl_display_flush(display_);
    pollfd waiting{.fd = wl_display_get_fd(display_), .events = POLLIN, .revents = 0};
    if (poll(&waiting, 1, static_cast<int>(deadline.remainingTime())) > 0) {
      if (wl_display_read_events(display_) < 0) return false;
    } else {
      wl_display_cancel_read(display_);
    }
  }
}

bool WaylandQueue::waitForAnswers() {
  bool isDone = false;
  const wl_callback_listener listener{
      .done = [](void* data, wl_callback*, uint32_t) { *static_cast<bool*>(data) = true; }};
  const Face<wl_display> face(*this, display_);
  wl_callback* callback = wl_display_sync(face.get());
  wl_callback_add_listener(callback, &listener, &isDone);
  const bool answered = waitUntil([&] { return isDone; });
  wl_callback_destroy(callback);
  return answered;
}

}  // namespace tarnwick
