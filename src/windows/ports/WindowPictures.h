#pragma once

#include <QImage>
#include <QList>
#include <QSize>
#include <algorithm>

#include "desktop/Capability.h"

namespace tarnwick {

/// Small pictures of windows of other programs. Belongs to one thread, which is not the main one: taking one waits for
/// the window system and for the program to paint.
class WindowPictures {
 public:
  static constexpr int kWidth = 360;
  static constexpr int kLeastHeight = 80;
  static constexpr int kMostHeight = 300;

  /// How large the picture of a window is, in pixels.
  static QSize sizeFor(const QSize& window) {
    const int height = window.width() > 0 ? kWidth * window.height() / window.width() : kLeastHeight;
    return {kWidth, std::clamp(height, kLeastHeight, kMostHeight)};
  }

  virtual ~WindowPictures() = default;

  /// Whether pictures can be taken.
  virtual Capability capability() = 0;
  /// Has these windows keep what is painted in them, also where others cover them, and waits until that is there: once
  /// for all of them.
  virtual void hold(const QList<quint64>& windows) = 0;
  /// A window as it is now, in `sizeFor` its own size; null where that cannot be had: it is gone or minimised, or the
  /// window system refuses.
  virtual QImage take(quint64 window) = 0;
  /// Whether a window was painted since it was taken last; true where nobody tells.
  virtual bool hasChanged(quint64 window) = 0;
  /// Gives back what taking pictures keeps in the window system. Taking one begins anew.
  virtual void rest() = 0;
};

}  // namespace tarnwick
