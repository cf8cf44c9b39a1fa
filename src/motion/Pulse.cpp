#include "motion/Pulse.h"

#include <cmath>
#include <utility>

namespace tarnwick {

Pulse::Pulse(Animator& animator, const Beat& beat, std::function<void()> changed)
    : animator_(animator), beat_(beat), changed_(std::move(changed)) {}

double Pulse::value() const {
  if (!isMoving()) return 1;
  const double share = std::fmod(passed_, beat_.seconds) / beat_.seconds;
  return 1 - (1 - beat_.lowest) * (1 - std::abs(1 - share * 2));
}

void Pulse::start() {
  if (passed_ < beat_.seconds * beat_.most) animator_.run(*this);
}

void Pulse::stop() {
  animator_.stop(*this);
  passed_ = 0;
}

bool Pulse::advance(double seconds) {
  passed_ += seconds;
  const bool goesOn = passed_ < beat_.seconds * beat_.most;
  if (!goesOn) animator_.stop(*this);  // So that the last picture is the one at rest.
  changed_();
  return goesOn;
}

}  // namespace tarnwick
