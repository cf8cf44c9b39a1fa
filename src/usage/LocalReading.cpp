#include "usage/LocalReading.h"

#include <QCoroTask>
#include <exception>
#include <memory>
#include <optional>

#include "base/Background.h"
#include "base/Cancelled.h"
#include "base/OneShotEvent.h"

namespace tarnwick {

namespace {

struct Outcome {
  std::optional<RemoteValue> value;
  std::exception_ptr failure;
};

QCoro::Task<RemoteValue> readInBackground(std::function<RemoteValue(const std::stop_token&)> read,
                                          std::stop_token stop) {
  const auto outcome = std::make_shared<Outcome>();
  const OneShotEvent over;
  throwIfStopped(stop);
  Background::run(Background::Lane::Reading, [read = std::move(read), outcome, over, stop] {
    auto found = std::make_shared<Outcome>();
    try {
      found->value = read(stop);
    } catch (...) {
      found->failure = std::current_exception();
    }
    Background::answer([outcome, over, found = std::move(found)] {
      *outcome = std::move(*found);
      over.happen();
    });
  });
  const std::stop_callback wake(stop, [over] { over.happen(); });
  co_await over.happened();
  throwIfStopped(stop);
  if (outcome->failure) std::rethrow_exception(outcome->failure);
  co_return *std::move(outcome->value);
}

}  // namespace

QCoro::Task<RemoteValue> readElsewhere(std::function<RemoteValue(const std::stop_token&)> read, std::stop_token stop) {
  return readInBackground(std::move(read), std::move(stop));
}

}  // namespace tarnwick
