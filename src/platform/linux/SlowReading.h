#pragma once

#include <QtGlobal>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace tarnwick {

/// A reading that usually takes microseconds but can stall (a laptop's firmware, a volume on the network). It runs on a
/// thread of its own, which is kept from the first question on and sleeps between two; the caller waits briefly
/// and otherwise gets the value before. The very first question waits for a few blinks, so that a tile begins with the
/// truth where that is to be had.
template <typename T>
class SlowReading {
 public:
  /// `read` runs on another thread and may outlive this object: it owns all that it touches. It must not throw.
  explicit SlowReading(std::function<std::optional<T>()> read) : read_(std::move(read)) {}
  Q_DISABLE_COPY_MOVE(SlowReading)
  /// Never waits for a reading that stalls; its thread ends after it.
  ~SlowReading() {
    const std::lock_guard lock(shared_->mutex);
    shared_->ends = true;
    shared_->changed.notify_all();
  }

  std::optional<T> value() {
    collect(std::chrono::microseconds(0));
    if (!isPending_) ask();
    collect(asked_ ? kBlink : kFirstPatience);
    asked_ = true;
    return last_;
  }
  /// Whether it was asked for and there has been no answer yet.
  bool isAwaited() const { return asked_ && !answered_; }

 private:
  static constexpr std::chrono::microseconds kBlink{200};
  static constexpr std::chrono::microseconds kFirstPatience{2'000};

  struct Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool isWanted = false;
    bool ends = false;
    bool hasAnswer = false;
    std::optional<T> answer;
  };

  static void work(const std::shared_ptr<Shared>& shared, const std::function<std::optional<T>()>& read) {
    std::unique_lock lock(shared->mutex);
    while (true) {
      shared->changed.wait(lock, [&shared] { return shared->isWanted || shared->ends; });
      if (shared->ends) return;
      shared->isWanted = false;
      lock.unlock();
      std::optional<T> answer = read();
      lock.lock();
      shared->answer = std::move(answer);
      shared->hasAnswer = true;
      shared->changed.notify_all();
    }
  }

  void ask() {
    if (!hasThread_) {
      try {
        // Detached, for a volume that never answers must not keep the program from ending.
        std::thread([shared = shared_, read = read_] { work(shared, read); }).detach();
        hasThread_ = true;
      } catch (const std::system_error&) {
        return;  // No thread is to be had now: the value before is kept, and the next question tries again.
      }
    }
    const std::lock_guard lock(shared_->mutex);
    shared_->isWanted = isPending_ = true;
    shared_->changed.notify_all();
  }

  void collect(std::chrono::microseconds patience) {
    if (!isPending_) return;
    std::unique_lock lock(shared_->mutex);
    if (!shared_->changed.wait_for(lock, patience, [this] { return shared_->hasAnswer; })) return;
    last_ = std::move(shared_->answer);
    shared_->hasAnswer = isPending_ = false;
    answered_ = true;
  }

  std::function<std::optional<T>()> read_;
  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
  std::optional<T> last_;
  bool hasThread_ = false;
  bool isPending_ = false;
  bool asked_ = false;
  bool answered_ = false;
};

}  // namespace tarnwick
