#pragma once

#include <chrono>
#include <functional>

#include "platform/wayland/WaylandProtocols.h"

namespace tarnwick {

/// A queue of events that are handled while one waits for them, apart from those that the event loop handles.
class WaylandQueue {
 public:
  static constexpr std::chrono::milliseconds kPatience{3000};

  explicit WaylandQueue(wl_display* display);

  /// Makes what `object` says from now on, and what comes out of it, arrive here.
  template <typename Object>
  void adopt(Object* object) {
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(object), queue_.get());
  }
  /// Leaves the object to the event loop.
  template <typename Object>
  static void release(Object* object) {
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(object), nullptr);
  }

  /// A second face of an object: what is made through it belongs to this queue from its first event on.
  template <typename Object>
  class Face {
   public:
    Face(const WaylandQueue& queue, Object* object) : object_(static_cast<Object*>(wl_proxy_create_wrapper(object))) {
      wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(object_), queue.queue_.get());
    }
    Q_DISABLE_COPY_MOVE(Face)
    ~Face() { wl_proxy_wrapper_destroy(object_); }
    Object* get() const { return object_; }

   private:
    Object* object_;
  };

  /// Handles events until `holds`; false if it does not within the patience, or if the connection broke.
  bool waitUntil(const std::function<bool()>& holds);
  /// Waits until the compositor has answered everything that was asked up to now.
  bool waitForAnswers();
  /// Handles what has arrived already.
  void handleRest() { wl_display_dispatch_queue_pending(display_, queue_.get()); }

 private:
  wl_display* display_;
  WaylandOwned<wl_event_queue> queue_;
};

}  // namespace tarnwick
