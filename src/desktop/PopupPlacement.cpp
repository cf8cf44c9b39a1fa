#include "desktop/PopupPlacement.h"

#include <algorithm>

namespace tarnwick {
namespace {

/// How far it keeps from the sides of what is usable, where there is space for that.
constexpr int kSide = 8;

}  // namespace

QRect PopupPlacement::outline(const QRect& beside, const QSize& wanted, int gap, const QRect& usable) {
  const int usableEnd = usable.y() + usable.height();
  const int besideEnd = beside.y() + beside.height();
  const bool isAbove = beside.center().y() >= usable.center().y();
  const int start = isAbove ? usable.y() : std::clamp(besideEnd + gap, usable.y(), usableEnd);
  const int end = isAbove ? std::clamp(beside.y() - gap, usable.y(), usableEnd) : usableEnd;

  const int width = std::max(1, std::min(wanted.width(), usable.width()));
  const int height = std::max(1, std::min(wanted.height(), end - start));
  const int left = beside.x() + (beside.width() - width) / 2;
  const int side = std::min(kSide, (usable.width() - width) / 2);
  const int first = usable.x() + side;
  const int last = std::max(first, usable.x() + usable.width() - side - width);
  return {std::clamp(left, first, last), isAbove ? std::max(usable.y(), end - height) : start, width, height};
}

}  // namespace tarnwick
