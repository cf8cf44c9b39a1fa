#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace tarnwick {

/// A reading that usually takes microseconds but can stall (a laptop's firmware, a volume on the network). It runs on a
/// thread of its own; whoever asks waits for a blink and otherwise gets the value before. The very first question waits
/// for a few blinks, so that a tile begins with the truth where that is to be had.
template <typename T>
class SlowReading {
 public:
  /// `read` runs on another thread and may outlive this object: it owns all that it touches.
  explicit SlowReading(std::function<std::optional<T>()> read) : read_(std::move(read)) {}

  std::optional<T> value() {
    collect(std::chrono::microseconds(0));
    if (!pending_.valid()) start();
    collect(asked_ ? kBlink : kFirstPatience);
    asked_ = true;
    return last_;
  }
  /// Whether it was asked for and there has been no answer yet.
  bool isAwaited() const { return asked_ && !answered_; }

 private:
  static constexpr std::chrono::microseconds kBlink{200};
  static constexpr std::chrono::microseconds kFirstPatience{2'000};

  void start() {
    std::packaged_task<std::optional<T>()> task(read_);
    auto result = task.get_future();
    try {
      // Detached, for a volume that never answers must not keep the program from ending.
      std::thread(std::move(task)).detach();
      pending_ = std::move(result);
    } catch (const std::system_error&) {
      // No thread is to be had now: the value before stands, and the next question tries again.
    }
  }

  void collect(std::chrono::microseconds patience) {
    if (!pending_.valid() || pending_.wait_for(patience) != std::future_status::ready) return;
    last_ = pending_.get();
    answered_ = true;
  }

  std::function<std::optional<T>()> read_;
  std::future<std::optional<T>> pending_;
  std::optional<T> last_;
  bool asked_ = false;
  bool answered_ = false;
};

}  // namespace tarnwick
