#pragma once

#include <QtGlobal>
#include <memory>
#include <stop_token>
#include <utility>

#include "base/Background.h"

namespace tarnwick {

/// Reading that is done on another thread for an object on the main thread. Only the answer to the latest request
/// arrives, and none once this is destroyed: an earlier one is asked to stop, and what it still finds is dropped.
class LatestWork {
 public:
  LatestWork() = default;
  Q_DISABLE_COPY_MOVE(LatestWork)
  ~LatestWork() { cancel(); }

  /// Runs `work`, which takes a stop token and holds everything that it needs, and then `done` with what it gave.
  template <class Work, class Done>
  void start(Work work, Done done) {
    cancel();
    *wanted_ = ++last_;
    stop_ = std::stop_source();
    Background::run(Background::Lane::Reading, [work = std::move(work), done = std::move(done), wanted = wanted_,
                                                number = last_, token = stop_.get_token()] {
      if (token.stop_requested()) return;
      auto result = std::make_shared<decltype(work(token))>(work(token));
      Background::answer([result, done, wanted, number] {
        if (*wanted != number) return;
        *wanted = 0;
        done(std::move(*result));
      });
    });
  }

  /// What runs gives no answer any more.
  void cancel() {
    stop_.request_stop();
    *wanted_ = 0;
  }
  /// Whether an answer is still to come.
  bool busy() const { return *wanted_ != 0; }

 private:
  std::stop_source stop_;
  quint64 last_ = 0;
  std::shared_ptr<quint64> wanted_ = std::make_shared<quint64>(0);  ///< Main thread only; 0 for none.
};

}  // namespace tarnwick
