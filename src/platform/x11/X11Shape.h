#pragma once

#include <xcb/shape.h>

#include <QRegion>
#include <optional>
#include <vector>

namespace tarnwick {

class X11Events;

/// Regions of a widget in the pixels of its window.
struct X11Shape {
  /// Grown to whole device pixels, so that no visible pixel is cut off.
  static std::vector<xcb_rectangle_t> rectangles(const QRegion& region, double scale);
  /// Cuts what is seen of a window, or what takes clicks, to the region; without one the whole window counts.
  static void apply(const X11Events& events, xcb_window_t window, xcb_shape_kind_t kind,
                    const std::optional<QRegion>& region, double scale);
};

}  // namespace tarnwick
