#pragma once

#include <coroutine>
#include <functional>
#include <memory>
#include <utility>

namespace tarnwick {

/// Something that happens once and for which one coroutine waits: `co_await event.happened()`. Copies stand for the
/// same event, so that whoever makes it happen can outlive the coroutine and the other way round. Main thread only.
class OneShotEvent {
 public:
  /// What is awaited. The compiler may copy it, so it holds nothing of its own.
  struct Awaiter;

  /// Continues the coroutine, before this returns. Only the first call counts.
  void happen() const {
    if (std::exchange(state_->isOver, true)) return;
    if (const auto waiting = std::exchange(state_->waiting, {})) waiting.resume();
  }
  bool isOver() const { return state_->isOver; }
  Awaiter happened() const;

  /// Runs `work` on another thread, after what was begun so before; the event is that it has ended. What `work` holds
  /// ends on this thread.
  static OneShotEvent ofWork(std::function<void()> work);

 private:
  struct State {
    bool isOver = false;
    std::coroutine_handle<> waiting;
  };
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

struct OneShotEvent::Awaiter {
  std::shared_ptr<State> state;

  bool await_ready() const noexcept { return state->isOver; }
  void await_suspend(std::coroutine_handle<> coroutine) const noexcept { state->waiting = coroutine; }
  void await_resume() const noexcept {}
};

inline OneShotEvent::Awaiter OneShotEvent::happened() const { return {state_}; }

}  // namespace tarnwick
