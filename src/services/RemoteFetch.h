#pragma once

#include <QCoroFwd>
#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>
#include <stop_token>

#include "base/Scheduler.h"
#include "services/RemoteValue.h"

namespace tarnwick {

/// Why a fetch gave nothing.
struct FetchFailure {
  QString sentence;  ///< Finished, for the user.
  int status = 0;    ///< Of the service's answer; 0 when there was none.
  std::optional<QDateTime> retryAt = std::nullopt;
  bool isUnreachable = false;  ///< No answer came, perhaps for want of a network.

  /// To be called while an exception is handled, which is what it says. Absent for one that was Cancelled.
  static std::optional<FetchFailure> ofException();
};

/// A fetch under way, for an owner that may go away at any time. It starts in a turn of its own, never inside the
/// constructor, and ends with one call of `done` or `failed`; one that cancels itself ends with neither. Destroying it
/// cancels: the coroutine learns it from its stop token, and nothing is called any more, even if an answer comes. Both
/// functions may destroy the fetch, or all that owns it. Main thread only.
class RemoteFetch {
 public:
  using Work = std::function<QCoro::Task<RemoteValue>(std::stop_token)>;
  using Done = std::function<void(const RemoteValue&)>;
  using Failed = std::function<void(const FetchFailure&)>;

  /// `work` is kept until its coroutine has ended, so that it may be a lambda whose captures the coroutine uses.
  RemoteFetch(Scheduler& scheduler, Work work, Done done, Failed failed);
  Q_DISABLE_COPY_MOVE(RemoteFetch)
  ~RemoteFetch();

 private:
  std::stop_source stop_;
  JobHandle start_;
};

}  // namespace tarnwick
