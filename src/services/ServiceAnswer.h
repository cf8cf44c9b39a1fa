#pragma once

#include <QCoroTask>
#include <QString>
#include <functional>
#include <optional>
#include <stop_token>

#include "services/RemoteFetch.h"

namespace tarnwick {

/// What something that was awaited of a service came to: a value, or the sentence of its failure.
template <class T>
struct ServiceAnswer {
  std::optional<T> value;
  QString sentence;
};

/// Absent for work that was cancelled.
template <class T>
QCoro::Task<std::optional<ServiceAnswer<T>>> serviceAnswer(QCoro::Task<T> work) {
  ServiceAnswer<T> answer;
  try {
    T value = co_await work;
    answer.value = std::move(value);
  } catch (...) {
    const std::optional<FetchFailure> failure = FetchFailure::ofException();
    if (!failure) co_return std::nullopt;
    answer.sentence = failure->sentence;
  }
  co_return answer;
}

/// Calls `tell` with what the work came to, perhaps at once; never when it was cancelled, and never after `stop` was
/// requested: whoever asked may be gone then. `tell` throws nothing.
template <class T>
QCoro::Task<> tellAnswer(QCoro::Task<T> work, std::function<void(const ServiceAnswer<T>&)> tell, std::stop_token stop) {
  const std::optional<ServiceAnswer<T>> answer = co_await serviceAnswer(std::move(work));
  if (answer && !stop.stop_requested()) tell(*answer);
}

}  // namespace tarnwick
