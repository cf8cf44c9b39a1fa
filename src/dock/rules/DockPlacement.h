#pragma once

#include <QMarginsF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <optional>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// How large a dock's panel is and where it is. Desktop coordinates: origin at the top left, y downwards,
/// device-independent pixels.
struct DockPlacement {
  /// What the row holds, at scale 1.
  struct Row {
    double tileWidths = 0;  ///< The sum of the widgets' widths.
    int widgets = 0;
    int runningApps = 0;  ///< Those that are shown; none where the user hides them.

    bool operator==(const Row&) const = default;
  };

  struct Size {
    double scale = 1;  ///< The user's, or less where the row is fitted to the screen.
    QSizeF panel;

    bool operator==(const Size&) const = default;
  };

  static constexpr double kLeastScale = 0.5;

  /// The row's measure for a profile's widgets: catalog widths, 140 for a kind that the catalog lacks.
  static Row row(const QList<DockWidget>& widgets, int runningApps);

  /// `usableWidth` is the width of the screen without others' bars. `leastWidth` is what the content needs at the
  /// scale that comes of it, such as for the names of the profiles; 0 for no more than the row.
  static Size size(const DockConfiguration& config, const Row& row, double usableWidth, double leastWidth = 0);

  /// The panel's slot on a screen. `floating` is the saved top left corner in that layout, relative to the screen's
  /// frame; the panel is kept inside `usable`. `beside` is how much wider than the glass the slot is, on the left and
  /// on the right: the gap is that of the glass, which may be flush, so the slot itself may reach beyond.
  static QRectF place(const DockConfiguration& config, const QSizeF& panel, const QRectF& frame, const QRectF& usable,
                      const std::optional<QPointF>& floating, const QMarginsF& beside = {});

  /// Whether the glass is at the upper end of its slot and the tabs come out below it. A floating dock that was
  /// moved against the top does, or the space for its tabs would keep its glass from standing flush there.
  static bool hangs(const DockConfiguration& config, const QRectF& slot, const QRectF& usable);

  /// The part of a slot, over its whole width, that the glass covers while no pointer is at it: the space for the
  /// tabs is left out.
  static QRectF atRest(const QRectF& slot, double scale, bool hangs);
};

}  // namespace tarnwick
