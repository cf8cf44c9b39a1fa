#pragma once

#include <QCoroTask>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "services/ports/LocationSource.h"

namespace tarnwick {

/// Where the user is, for the weather of the current location. Copies are the same. Main thread only.
class WeatherLocation {
 public:
  /// For so long, in seconds, an answer is good for whoever asks next: tiles are not refreshed at one moment.
  static constexpr double kKept = 300;

  /// `reference`: seconds on a clock that never jumps.
  explicit WeatherLocation(std::shared_ptr<LocationSource> source, std::function<double()> reference = steadySeconds);

  /// All who ask meanwhile share one question, which ends when the last of them leaves. Throws DomainError with a
  /// finished sentence, and Cancelled as soon as `stop` is requested.
  QCoro::Task<Coordinate> coordinate(std::stop_token stop) const;

  static double steadySeconds();

 private:
  struct Question;
  struct State;
  static QCoro::Task<Coordinate> shared(std::shared_ptr<State> state, std::stop_token stop);
  static QCoro::Task<> ask(std::shared_ptr<State> state, std::shared_ptr<Question> question);

  std::shared_ptr<State> state_;
};

}  // namespace tarnwick
