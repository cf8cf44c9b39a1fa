#pragma once

#include <memory>

#include "system/ports/ProcessorTemperatures.h"
#include "system/ports/SmcTransport.h"

namespace tarnwick {

/// The value of one key of four characters: 1 with the value in `out`, or 0. Fixed point ("sp78") and 32-bit floats
/// ("flt ") of a plausible temperature count, nothing else does.
int read_key(SmcTransport& connection, const char* key, double* out);

/// Processor temperatures of a system management controller in degrees Celsius: those of the keys that newer machines
/// have, or else those that older ones have. Returns how many were written; 0 on any failure. No state, any thread.
quint32 tw_smc_temperatures(SmcTransport& connection, double* values, quint32 capacity);

/// The same as a source of readings.
class SmcTemperatures final : public ProcessorTemperatures {
 public:
  explicit SmcTemperatures(std::unique_ptr<SmcTransport> transport) : transport_(std::move(transport)) {}
  quint32 read(double* values, quint32 capacity) override { return tw_smc_temperatures(*transport_, values, capacity); }

 private:
  std::unique_ptr<SmcTransport> transport_;
};

}  // namespace tarnwick
