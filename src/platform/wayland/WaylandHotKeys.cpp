#include "platform/wayland/WaylandHotKeys.h"

namespace tarnwick {

HotKeyBinding WaylandHotKeys::bind(quint32, const HotKeyWish&) {
  return {.bound = false,
          .text = {},
          .reason = tr("On Wayland a key is bound in the desktop's own settings, to an order such as "
                       "\"tarnwick --toggle\".")};
}

}  // namespace tarnwick
