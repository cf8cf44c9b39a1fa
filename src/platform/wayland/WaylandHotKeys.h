#pragma once

#include "desktop/HotKeys.h"

namespace tarnwick {

/// On Wayland no program can take a key for itself: the desktop binds one to an order of ours.
class WaylandHotKeys final : public HotKeys {
  Q_OBJECT
 public:
  HotKeyBinding bind(quint32 identifier, const HotKeyWish& wish) override;
  void unbindAll() override {}
};

}  // namespace tarnwick
