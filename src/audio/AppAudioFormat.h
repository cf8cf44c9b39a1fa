#pragma once

#include "audio/ports/AudioHardware.h"

namespace tarnwick {

struct AppAudioFormat {
  static constexpr double kLeastRate = 8000;
  static constexpr double kMostRate = 384'000;

  /// Whether the renderer works with such a stream, as its input or as its output.
  static bool supported(const AudioStreamBasicDescription& description, bool input);
};

struct AppAudioHardware {
  /// Throws DomainError for any status but 0.
  static void check(AudioHardware::Status status, const char* operation);

  /// The value of what was read; throws DomainError where it was not.
  template <class Value>
  static Value read(const AudioHardware::Result<Value>& result, const char* operation) {
    check(result.status, operation);
    return result.value;
  }

  /// By what an output is known. Throws DomainError.
  static QString identity(AudioHardware& hardware, quint32 device);
};

}  // namespace tarnwick
