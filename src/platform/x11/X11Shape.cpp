#include "platform/x11/X11Shape.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/x11/X11Events.h"

namespace tarnwick {

std::vector<xcb_rectangle_t> X11Shape::rectangles(const QRegion& region, double scale) {
  std::vector<xcb_rectangle_t> rectangles;
  for (const QRect& one : region) {
    const auto clamped = [](double value) {
      return std::clamp(static_cast<int>(value), 0, int{std::numeric_limits<qint16>::max()});
    };
    const int left = clamped(std::floor(one.left() * scale));
    const int top = clamped(std::floor(one.top() * scale));
    const int right = clamped(std::ceil((one.left() + one.width()) * scale));
    const int bottom = clamped(std::ceil((one.top() + one.height()) * scale));
    rectangles.push_back({static_cast<qint16>(left), static_cast<qint16>(top), static_cast<quint16>(right - left),
                          static_cast<quint16>(bottom - top)});
  }
  return rectangles;
}

void X11Shape::apply(const X11Events& events, xcb_window_t window, xcb_shape_kind_t kind,
                     const std::optional<QRegion>& region, double scale) {
  if (region) {
    const std::vector<xcb_rectangle_t> all = rectangles(*region, scale);
    xcb_shape_rectangles(events.connection(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                         static_cast<quint32>(all.size()), all.data());
  } else {
    xcb_shape_mask(events.connection(), XCB_SHAPE_SO_SET, kind, window, 0, 0, XCB_PIXMAP_NONE);
  }
  xcb_flush(events.connection());
}

}  // namespace tarnwick
