#pragma once

#include <QColor>
#include <QStringView>
#include <optional>

namespace tarnwick {

/// Copied colours as they are seen.
struct ClipboardColor {
  /// The colour that a text stands for, as style sheets have it: "#rgb", "#rgba", "#rrggbb", "#rrggbbaa", and the
  /// functions rgb(), rgba(), hsl() and hsla(). Numbers beyond their range count as its end. Absent for a text in which
  /// there are too few numbers, or too many.
  static std::optional<QColor> of(QStringView text);
};

}  // namespace tarnwick
