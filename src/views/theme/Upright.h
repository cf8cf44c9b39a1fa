#pragma once

#include <QPainter>

namespace tarnwick {

/// Whether what is drawn now is mirrored: tiles are where people read from right to left.
inline bool isMirrored(const QPainter& painter) { return painter.worldTransform().determinant() < 0; }

/// While the painter is mirrored, draws what follows the right way round again, about the vertical line at `middle`,
/// until the painter is restored. Letters, symbols and pictures keep their place there, but are not mirrored
/// themselves.
inline void keepUpright(QPainter& painter, double middle) {
  if (!isMirrored(painter)) return;
  painter.translate(middle * 2, 0);
  painter.scale(-1, 1);
}

}  // namespace tarnwick
