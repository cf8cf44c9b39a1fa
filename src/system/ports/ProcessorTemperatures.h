#pragma once

#include <QtGlobal>

namespace tarnwick {

/// The sensors of the machine's processor. Called on any thread, one call at a time; may take as long as a sensor does.
class ProcessorTemperatures {
 public:
  virtual ~ProcessorTemperatures() = default;

  /// Writes up to `capacity` values in degrees Celsius, each finite and within -40 to 150, and returns how many. 0 on
  /// any failure, without sensors, and for null `values`.
  virtual quint32 read(double* values, quint32 capacity) = 0;
};

}  // namespace tarnwick
