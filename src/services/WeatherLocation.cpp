#include "services/WeatherLocation.h"

#include <chrono>
#include <map>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/OneShotEvent.h"
#include "services/ServiceWords.h"

namespace tarnwick {

using QCoro::Task;

/// One question to the desktop, and those who wait for its answer.
struct WeatherLocation::Question {
  std::map<quint64, OneShotEvent> waiting;
  quint64 last = 0;
  std::stop_source stop;
  bool isOver = false;
  std::optional<Coordinate> found;
  std::optional<DomainError> failure;
};

struct WeatherLocation::State {
  std::shared_ptr<LocationSource> source;
  std::function<double()> reference;
  std::shared_ptr<Question> question;  ///< Null while none is under way.
  std::optional<Coordinate> cached;
  double cachedAt = 0;
};

namespace {

QString sentenceOf(LocationFailure::Reason reason) {
  switch (reason) {
    case LocationFailure::Reason::Refused:
      return ServiceWords::tr("Location access was not granted. Choose a city or enable access in Privacy settings.");
    case LocationFailure::Reason::TimedOut:
      return ServiceWords::tr("Location timed out. Try again or choose a city.");
    default:
      return ServiceWords::tr("Location Services are disabled. Choose a city or enable Location Services.");
  }
}

}  // namespace

WeatherLocation::WeatherLocation(std::shared_ptr<LocationSource> source, std::function<double()> reference)
    : state_(std::make_shared<State>()) {
  state_->source = std::move(source);
  state_->reference = std::move(reference);
}

double WeatherLocation::steadySeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

Task<Coordinate> WeatherLocation::coordinate(std::stop_token stop) const { return shared(state_, std::move(stop)); }

Task<Coordinate> WeatherLocation::shared(std::shared_ptr<State> state, std::stop_token stop) {
  throwIfStopped(stop);
  if (state->cached && state->reference() - state->cachedAt < kKept) co_return *state->cached;
  std::shared_ptr<Question> question = state->question;
  if (!question) {
    question = std::make_shared<Question>();
    state->question = question;
    ask(state, question);
  }
  if (!question->isOver) {
    const quint64 place = ++question->last;
    const OneShotEvent woken;
    question->waiting.emplace(place, woken);
    const std::stop_callback<std::function<void()>> wake(stop, [woken] { woken.happen(); });
    co_await woken.happened();
    question->waiting.erase(place);
  }
  if (stop.stop_requested()) {
    if (!question->isOver && question->waiting.empty()) {
      // Whoever asks next gets a question that is not about to end.
      if (state->question == question) state->question.reset();
      question->stop.request_stop();
    }
    throw Cancelled();
  }
  if (question->failure) throw DomainError(*question->failure);
  co_return *question->found;
}

Task<> WeatherLocation::ask(std::shared_ptr<State> state, std::shared_ptr<Question> question) {
  try {
    const Coordinate found = co_await state->source->locate(question->stop.get_token());
    question->found = found;
    state->cached = found;
    state->cachedAt = state->reference();
  } catch (const LocationFailure& failure) {
    question->failure = DomainError::invalid(sentenceOf(failure.reason()));
  } catch (const std::exception&) {
    // Also where nobody waits any more.
    question->failure = DomainError::invalid(sentenceOf(LocationFailure::Reason::Disabled));
  }
  question->isOver = true;
  if (state->question == question) state->question.reset();
  const std::map<quint64, OneShotEvent> waiting = std::exchange(question->waiting, {});
  for (const auto& [place, woken] : waiting) woken.happen();
}

}  // namespace tarnwick
