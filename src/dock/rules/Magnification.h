#pragma once

#include <QList>

namespace tarnwick {

/// How tiles swell under the pointer. Only the drawing grows; no tile moves.
struct Magnification {
  static constexpr double kReach = 150;
  static constexpr double kMost = 0.08;

  /// The centre of each tile of a row that begins at `leadingInset`.
  static QList<double> centres(const QList<double>& widths, double spacing, double leadingInset);
  /// The scale of a tile whose centre lies at `centre`, with the pointer at `x`; both at scale 1.
  static double scale(double centre, double x);
};

}  // namespace tarnwick
