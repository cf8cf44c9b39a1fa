#pragma once

#include <QObject>

#include "desktop/Toggles.h"

namespace tarnwick {

/// What is behind one of the desktop's switches.
class ToggleSource : public QObject {
  Q_OBJECT
 public:
  virtual ToggleState state() const = 0;
  /// Asks for the other state; `changed` follows whether it took effect or was refused.
  virtual void set(bool on) = 0;
  /// Begins to listen. Called once, before `set`.
  virtual void start() = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
