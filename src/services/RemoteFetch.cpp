#include "services/RemoteFetch.h"

#include <QCoroTask>
#include <utility>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/ServiceHTTPError.h"
#include "services/ServiceUnreachable.h"
#include "services/ServiceWords.h"

namespace tarnwick {

namespace {

/// What the coroutine came to: a value, a failure, or neither when it was cancelled.
struct Outcome {
  std::optional<RemoteValue> value;
  std::optional<FetchFailure> failure;
};

/// Turns all that a fetch can throw into a sentence. `work` is kept in the frame for as long as its coroutine runs.
QCoro::Task<Outcome> outcomeOf(RemoteFetch::Work work, std::stop_token stop) {
  Outcome outcome;
  try {
    RemoteValue value = co_await work(stop);
    outcome.value = std::move(value);
  } catch (...) {
    outcome.failure = FetchFailure::ofException();
  }
  co_return outcome;
}

/// The caller may be gone when this goes on; until `stop` is requested the owner of the functions is there.
QCoro::Task<> tellOutcome(RemoteFetch::Work work, RemoteFetch::Done done, RemoteFetch::Failed failed,
                          std::stop_token stop) {
  const Outcome outcome = co_await outcomeOf(std::move(work), stop);
  if (stop.stop_requested()) co_return;
  if (outcome.value) {
    done(*outcome.value);
  } else if (outcome.failure) {
    failed(*outcome.failure);
  }
}

}  // namespace

std::optional<FetchFailure> FetchFailure::ofException() {
  try {
    throw;
  } catch (const Cancelled&) {
    return std::nullopt;
  } catch (const ServiceHTTPError& error) {
    return FetchFailure{error.errorDescription(), error.status(), error.retryAt()};
  } catch (const ServiceUnreachable& error) {
    return FetchFailure{.sentence = error.message(), .isUnreachable = true};
  } catch (const DomainError& error) {
    return FetchFailure{error.message()};
  } catch (const std::exception& error) {
    qWarning("A fetch failed: %s", error.what());
    return FetchFailure{ServiceWords::tr("The service returned an invalid response.")};
  }
}

RemoteFetch::RemoteFetch(Scheduler& scheduler, Work work, Done done, Failed failed) {
  start_ = scheduler.after(0, [work = std::move(work), done = std::move(done), failed = std::move(failed),
                               stop = stop_.get_token()] { tellOutcome(work, done, failed, stop); });
}

RemoteFetch::~RemoteFetch() { stop_.request_stop(); }

}  // namespace tarnwick
