#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>

#include "desktop/Panels.h"

namespace tarnwick {

enum class Layer : quint32 { Background = 0, Bottom = 1, Top = 2, Overlay = 3 };

/// How a surface lies in its layer. Device-independent pixels.
struct LayerLook {
  static constexpr int kIgnoresOthers = -1;

  Layer layer = Layer::Overlay;
  quint32 anchors = 0;
  QMargins margins;  ///< From the anchored edges.
  QSize size;        ///< 0 where it lies between two anchors.
  /// How much it keeps free, 0 to be moved by what others keep free, or kIgnoresOthers to be nowhere moved.
  int zone = kIgnoresOthers;
  bool takesKeys = false;

  bool operator==(const LayerLook&) const = default;

  /// At a place within the screen, whatever others keep free.
  static LayerLook at(const QRect& withinScreen, Layer layer);
  /// A line along the edge that keeps space free.
  static LayerLook reservation(Edge edge, int zone);
  /// Fills what others leave free of the screen.
  static LayerLook between();
};

}  // namespace tarnwick
