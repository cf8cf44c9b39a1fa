#pragma once

#include <exception>
#include <stop_token>

namespace tarnwick {

/// Thrown through work whose result is not wanted any more. It is never shown: where a DomainError becomes a
/// sentence, this becomes nothing.
class Cancelled : public std::exception {
 public:
  const char* what() const noexcept override { return "cancelled"; }
};

/// To be called after everything that may have taken time.
inline void throwIfStopped(const std::stop_token& stop) {
  if (stop.stop_requested()) throw Cancelled();
}

}  // namespace tarnwick
