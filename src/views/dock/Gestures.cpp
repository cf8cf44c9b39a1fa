#include "views/dock/Gestures.h"

#include <cmath>

namespace tarnwick {

namespace {

constexpr quint64 kMemory = 100;  // Milliseconds.
constexpr double kSwipe = 60;
constexpr double kFlick = 400;  // Units a second.
constexpr double kWheelNotch = 120;

}  // namespace

void FlickMeter::add(double x, quint64 milliseconds) {
  samples_.append({x, milliseconds});
  while (samples_.size() > 2 && samples_.first().at + kMemory < milliseconds) samples_.removeFirst();
}

double FlickMeter::velocity(quint64 now) const {
  if (samples_.size() < 2 || samples_.last().at + kMemory < now) return 0;
  const double passed = static_cast<double>(samples_.last().at) - static_cast<double>(samples_.first().at);
  return passed <= 0 ? 0 : (samples_.last().x - samples_.first().x) / passed * 1000;
}

int WheelMeter::steps(qsizetype over, double turned) {
  if (over != over_ || turned_ * turned < 0) turned_ = 0;
  over_ = over;
  turned_ += turned;
  const int steps = static_cast<int>(turned_ / kWheelNotch);
  turned_ -= steps * kWheelNotch;
  return steps;
}

bool swipeSwitches(double distance, double velocity) {
  const bool onwards = distance * velocity >= 0;  // A drag that is taken back means nothing.
  return std::abs(distance) >= kSwipe ? onwards || std::abs(velocity) < kFlick
                                      : onwards && distance != 0 && std::abs(velocity) >= kFlick;
}

}  // namespace tarnwick
