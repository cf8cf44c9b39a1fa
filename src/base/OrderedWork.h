#pragma once

#include <QObject>
#include <QThreadPool>
#include <stop_token>
#include <utility>

namespace tarnwick {

/// Work of one object that is done on a thread of its own, one piece after the other, and answered on the thread that
/// made this. Where only the latest answer counts and the others need not be waited for, there is LatestWork.
class OrderedWork {
 public:
  /// The thread is there while there is work and `keptMs` after it.
  explicit OrderedWork(int keptMs = 2000) {
    pool_.setMaxThreadCount(1);
    pool_.setExpiryTimeout(keptMs);
  }
  Q_DISABLE_COPY_MOVE(OrderedWork)
  /// Cancels, and waits for what runs.
  ~OrderedWork() {
    cancel();
    pool_.waitForDone();
  }

  /// Runs `work`, and then `done` with what it gave. What `done` holds ends on this thread.
  template <class Work, class Done>
  void start(Work work, Done done) {
    if (stopping_.stop_requested()) return;
    pool_.start([this, work = std::move(work), done = std::move(done)]() mutable {
      auto answer = [done = std::move(done), result = work(), stop = stopToken()]() mutable {
        if (!stop.stop_requested()) done(std::move(result));
      };
      QMetaObject::invokeMethod(&answers_, std::move(answer), Qt::QueuedConnection);
    });
  }

  /// Says whether long work should stop.
  std::stop_token stopToken() const { return stopping_.get_token(); }
  /// From here on nothing is begun and nothing answered; what runs is asked to stop. Waits for nothing.
  void cancel() {
    stopping_.request_stop();
    pool_.clear();
  }

 private:
  std::stop_source stopping_;
  QObject answers_;  ///< Takes answers that wait along when it goes.
  QThreadPool pool_;
};

}  // namespace tarnwick
