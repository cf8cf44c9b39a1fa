#pragma once

#include <QFileSystemWatcher>
#include <QTimer>
#include <memory>

#include "platform/dbus/toggles/ToggleSource.h"
#include "platform/sound/SoundOutput.h"

namespace tarnwick {

/// Silence from the default sound output. Nothing is loaded or asked before the switch is shown, nor while no
/// sound server is there; one that comes later is noticed by its socket.
class MuteToggle final : public ToggleSource {
  Q_OBJECT
 public:
  MuteToggle();

  /// The first question after `start` begins the conversation; `changed` follows.
  ToggleState state() const override;
  void set(bool on) override;
  void start() override;

 private:
  void connectToServer();
  void take(const SoundState& state);
  void awaitServer();

  bool started_ = false;
  mutable bool asked_ = false;
  int failures_ = 0;  ///< In a row, of a server whose socket is there.
  SoundState state_;
  std::unique_ptr<QFileSystemWatcher> sockets_;
  std::unique_ptr<QTimer> attempt_;
  std::unique_ptr<SoundOutput> output_;
};

}  // namespace tarnwick
