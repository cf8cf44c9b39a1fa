#pragma once

#include <QRect>
#include <QSize>

namespace tarnwick {

/// Where a popup or a menu is placed. Pure; desktop coordinates.
struct PopupPlacement {
  static constexpr int kMenuGap = 6;  ///< Between a tile and its menu.

  /// A rectangle of the wanted size beside another, above it in the lower half of what is usable of the screen and
  /// below it in the upper half, `gap` away and centred as far as that lies within what is usable, a little off its
  /// sides. Where the wanted size finds no space it becomes smaller: neither the other rectangle nor what is not usable
  /// is ever covered.
  static QRect outline(const QRect& beside, const QSize& wanted, int gap, const QRect& usable);
};

}  // namespace tarnwick
