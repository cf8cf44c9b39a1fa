#include "support/VirtualPointer.h"

#include <cstring>
#include <stdexcept>

#include "wlr-virtual-pointer-unstable-v1-client.h"

namespace tarnwick::testing {

VirtualPointer::VirtualPointer() : display_(wl_display_connect(nullptr)) {
  if (!display_) throw std::runtime_error("the compositor takes no connection");
  zwlr_virtual_pointer_manager_v1* manager = nullptr;
  const wl_registry_listener listener{
      .global =
          [](void* data, wl_registry* registry, uint32_t name, const char* interface, uint32_t) {
            if (std::strcmp(interface, zwlr_virtual_pointer_manager_v1_interface.name) != 0) return;
            *static_cast<zwlr_virtual_pointer_manager_v1**>(data) = static_cast<zwlr_virtual_pointer_manager_v1*>(
                wl_registry_bind(registry, name, &zwlr_virtual_pointer_manager_v1_interface, 1));
          },
      .global_remove = [](void*, wl_registry*, uint32_t) {}};
  wl_registry* registry = wl_display_get_registry(display_);
  wl_registry_add_listener(registry, &listener, &manager);
  wl_display_roundtrip(display_);
  wl_registry_destroy(registry);
  if (!manager) throw std::runtime_error("the compositor takes no virtual pointer");
  pointer_ = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(manager, nullptr);
  zwlr_virtual_pointer_manager_v1_destroy(manager);
  wl_display_roundtrip(display_);
}

VirtualPointer::~VirtualPointer() {
  zwlr_virtual_pointer_v1_destroy(pointer_);
  wl_display_roundtrip(display_);
  wl_display_disconnect(display_);
}

void VirtualPointer::moveBy(QPoint way) {
  zwlr_virtual_pointer_v1_motion(pointer_, ++time_, wl_fixed_from_int(way.x()), wl_fixed_from_int(way.y()));
  zwlr_virtual_pointer_v1_frame(pointer_);
  wl_display_roundtrip(display_);
}

void VirtualPointer::button(std::uint32_t code, bool down) {
  zwlr_virtual_pointer_v1_button(pointer_, ++time_, code,
                                 down ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
  zwlr_virtual_pointer_v1_frame(pointer_);
  wl_display_roundtrip(display_);
}

}  // namespace tarnwick::testing
