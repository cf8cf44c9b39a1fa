#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <stop_token>
#include <utility>

namespace tarnwick {

/// Work of one object that is done on another thread, one piece after the other, and answered on the thread that made
/// this. All share threads, but none waits for another (see Background::Lane::Ordered). Where only the latest answer
/// counts and the others need not be waited for, there is LatestWork.
class OrderedWork {
 public:
  OrderedWork();
  Q_DISABLE_COPY_MOVE(OrderedWork)
  /// Cancels, and waits for what runs.
  ~OrderedWork();

  /// Runs `work`, and then `done` with what it gave. What `done` holds ends on this thread.
  template <class Work, class Done>
  void start(Work work, Done done) {
    if (stopping_.stop_requested()) return;
    add([this, work = std::move(work), done = std::move(done)]() mutable {
      auto answer = [done = std::move(done), result = work(), stop = stopToken()]() mutable {
        if (!stop.stop_requested()) done(std::move(result));
      };
      QMetaObject::invokeMethod(&answers_, std::move(answer), Qt::QueuedConnection);
    });
  }

  /// Waits until all that was started is done. The answers come afterwards, as ever.
  void finish();

  /// Says whether long work should stop.
  std::stop_token stopToken() const { return stopping_.get_token(); }
  /// From here on nothing is begun and nothing answered; what runs is asked to stop. Waits for nothing.
  void cancel();

 private:
  class Queue;

  void add(std::function<void()> piece);

  std::stop_source stopping_;
  QObject answers_;               ///< Takes answers that wait along when it goes.
  std::shared_ptr<Queue> queue_;  ///< A thread that was asked for may come to it after this has gone.
};

}  // namespace tarnwick
