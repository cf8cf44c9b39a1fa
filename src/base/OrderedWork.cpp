#include "base/OrderedWork.h"

#include <condition_variable>
#include <deque>
#include <mutex>

#include "base/Background.h"

namespace tarnwick {

class OrderedWork::Queue {
 public:
  /// True when a thread is to be asked for.
  bool add(std::function<void()> piece) {
    const std::lock_guard lock(mutex_);
    pieces_.push_back(std::move(piece));
    return !std::exchange(hasThread_, true);
  }

  /// Does all there is, on a thread that was asked for.
  void work() {
    std::unique_lock lock(mutex_);
    while (!pieces_.empty()) {
      std::function<void()> piece = std::move(pieces_.front());
      pieces_.pop_front();
      isWorking_ = true;
      lock.unlock();
      piece();
      piece = nullptr;
      lock.lock();
      isWorking_ = false;
      rests_.notify_all();
    }
    hasThread_ = false;
  }

  /// What was not begun ends on the calling thread.
  void clear() {
    std::deque<std::function<void()>> dropped;
    const std::lock_guard lock(mutex_);
    dropped.swap(pieces_);
  }

  /// Until nothing runs; with `all` until nothing is left to run either.
  void waitForRest(bool all) {
    std::unique_lock lock(mutex_);
    rests_.wait(lock, [this, all] { return !isWorking_ && (!all || pieces_.empty()); });
  }

 private:
  std::mutex mutex_;
  std::condition_variable rests_;
  std::deque<std::function<void()>> pieces_;
  bool hasThread_ = false;
  bool isWorking_ = false;
};

OrderedWork::OrderedWork() : queue_(std::make_shared<Queue>()) {}

OrderedWork::~OrderedWork() {
  cancel();
  queue_->waitForRest(false);
}

void OrderedWork::finish() { queue_->waitForRest(true); }

void OrderedWork::add(std::function<void()> piece) {
  if (queue_->add(std::move(piece))) Background::run(Background::Lane::Ordered, [queue = queue_] { queue->work(); });
}

void OrderedWork::cancel() {
  stopping_.request_stop();
  queue_->clear();
}

}  // namespace tarnwick
