#pragma once

#include <QPoint>
#include <cstdint>

struct wl_display;
struct zwlr_virtual_pointer_v1;

namespace tarnwick::testing {

/// A pointer device of a compositor, over a connection of its own: to the program under test it is a device like any
/// other. It is plugged in as long as this lives.
class VirtualPointer {
 public:
  /// Throws std::runtime_error where the compositor takes none.
  VirtualPointer();
  Q_DISABLE_COPY_MOVE(VirtualPointer)
  ~VirtualPointer();

  void moveBy(QPoint way);
  /// `code`: as the kernel numbers buttons.
  void button(std::uint32_t code, bool down);

 private:
  wl_display* display_;
  zwlr_virtual_pointer_v1* pointer_ = nullptr;
  std::uint32_t time_ = 0;
};

}  // namespace tarnwick::testing
