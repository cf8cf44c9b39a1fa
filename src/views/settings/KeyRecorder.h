#pragma once

#include "desktop/HotKeys.h"

namespace tarnwick {

/// Lets a key be recorded for one of the program's actions.
class KeyRecorder {
 public:
  virtual ~KeyRecorder() = default;
  /// While a key is being recorded the program's own keys are given back to the desktop, so that they reach the window
  /// that records; afterwards they are taken anew.
  virtual void setRecording(bool recording) = 0;
  /// Whether a key could be taken for a new action at this moment, and the sentence where not. It may be kept until the
  /// settings change next or setRecording(false) is called.
  virtual HotKeyBinding tryKey(const HotKeyRequest& request) = 0;
  /// Whether a key that the settings ask for is the program's now. Not asked while one is recorded.
  virtual bool holds(const HotKeyRequest& request) const = 0;
};

}  // namespace tarnwick
