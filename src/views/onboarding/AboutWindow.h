#pragma once

#include "views/window/AppWindow.h"

namespace tarnwick {

/// The program's name, version and licence, and those of what it is built on.
class AboutWindow final : public AppWindow {
  Q_OBJECT
 public:
  explicit AboutWindow(AppStore& store);
};

}  // namespace tarnwick
