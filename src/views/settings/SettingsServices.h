#pragma once

#include "views/settings/KeyRecorder.h"
#include "views/window/WindowServices.h"

namespace tarnwick {

/// What Settings asks of the rest of the program: what all windows do, and to record keys.
struct SettingsServices : WindowServices {
  KeyRecorder& keys;
};

}  // namespace tarnwick
