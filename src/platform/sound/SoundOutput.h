#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace tarnwick {

/// What a sound server last said of the output that is used by default.
struct SoundState {
  bool connected = false;  ///< The server answers; once it no longer does, nothing follows.
  bool hasOutput = false;
  bool muted = false;

  bool operator==(const SoundState&) const = default;
};

/// A conversation with a sound server, which lasts as long as this object. Lives in a module of its own, for the
/// library that it needs.
class SoundOutput {
 public:
  using Changed = std::function<void(const SoundState&)>;

  virtual ~SoundOutput() = default;

  /// Asks the server; what came of it is reported, whether or not anything changed.
  virtual void setMuted(bool muted) = 0;
};

/// The module and its entry point, which begins a conversation that its caller owns. An empty address means the one
/// that the environment names. `changed` runs on a thread of the module, from now until the object is gone.
constexpr const char* kSoundModule = "tarnwick-sound.so";
constexpr const char* kSoundDoor = "tarnwickSoundOutput";
using MakeSoundOutput = SoundOutput* (*)(const QString& address, SoundOutput::Changed changed);

}  // namespace tarnwick
