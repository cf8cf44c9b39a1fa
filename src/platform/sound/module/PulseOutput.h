#pragma once

#include <pulse/pulseaudio.h>

#include <QByteArray>

#include "platform/sound/SoundOutput.h"

namespace tarnwick {

/// The default output of a server that speaks PulseAudio's protocol: PulseAudio itself, or PipeWire. Follows the
/// server's own events and is otherwise asleep.
class PulseOutput final : public SoundOutput {
 public:
  PulseOutput(const QByteArray& address, Changed changed);
  ~PulseOutput() override;
  PulseOutput(const PulseOutput&) = delete;
  PulseOutput& operator=(const PulseOutput&) = delete;

  void setMuted(bool muted) override;

 private:
  void contextChanged();
  void askForDefault();
  void askForOutput();

  Changed changed_;
  pa_threaded_mainloop* loop_;
  pa_context* context_ = nullptr;
  // What follows belongs to the loop's thread, or to the holder of its lock.
  SoundState state_;
  QByteArray sink_;  ///< The name of the default output.
};

}  // namespace tarnwick
