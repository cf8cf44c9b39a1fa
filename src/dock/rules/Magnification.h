#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// How tiles swell under the pointer. Only the drawing grows; no tile moves.
struct Magnification {
  static constexpr double kReach = 150;
  static constexpr double kMost = 0.08;
  static constexpr double kMuch = 0.16;

  /// By how much a tile grows at most: the amount of a settings value, "off", "little" or "much"; little for a word
  /// that is not known.
  static double amountNamed(const QString& name);

  /// The centre of each tile of a row that begins at `leadingInset`.
  static QList<double> centres(const QList<double>& widths, double spacing, double leadingInset);
  /// The scale of a tile whose centre lies at `centre`, with the pointer at `x`; both at scale 1.
  static double scale(double centre, double x, double most = kMost);
};

}  // namespace tarnwick
