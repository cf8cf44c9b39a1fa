#pragma once

#include <QList>
#include <QObject>

#include "desktop/Capability.h"

namespace tarnwick {

/// A switch of the desktop that the quick toggles offer.
enum class Toggle { WiFi, Bluetooth, DarkMode, DoNotDisturb, Mute, KeepAwake };

struct ToggleState {
  bool on = false;
  Capability capability;  ///< Whether the service behind the switch is there.

  bool operator==(const ToggleState&) const = default;
};

/// The desktop's switches, listened to rather than asked.
class Toggles : public QObject {
  Q_OBJECT
 public:
  virtual ToggleState state(Toggle toggle) const = 0;
  /// Asks the service for the other state; `changed` follows when it took effect.
  virtual void set(Toggle toggle, bool on) = 0;
  /// Starts listening; until then every state is the last one known.
  virtual void start() = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
