#pragma once

#include <QList>
#include <QRectF>
#include <chrono>
#include <optional>

#include "desktop/Capability.h"

namespace tarnwick {

/// Where windows of other programs are, and how they are moved. Frames are with what the window manager draws around a
/// window, in the window system's own pixels. Belongs to one thread, which is not the main one: calls wait for the
/// window system or for the program that a window is of, each for as long as `patience` says at most.
class WindowFrames {
 public:
  struct Window {
    quint32 number = 0;  ///< The window system's own; never 0, and no other window's as long as the session lasts.
    int pid = 0;         ///< 0 where nobody tells.
    QRectF frame;
    bool active = false;
    bool minimised = false;
    bool maximised = false;  ///< Whose frame is the window manager's to keep clear.
    bool fullscreen = false;
    /// Where it stood before the window manager itself moved it off the place that docks take; empty where it did not.
    QRectF before{};
  };

  virtual ~WindowFrames() = default;

  /// Whether windows can be moved.
  virtual Capability capability() = 0;
  /// Absent where this cannot be told now.
  virtual std::optional<QList<Window>> all(std::chrono::milliseconds patience) = 0;
  /// Absent where the window is gone or this cannot be told.
  virtual std::optional<QRectF> frame(quint32 number, std::chrono::milliseconds patience) = 0;
  /// The largest frame within the wanted one that the window accepts: one that grows by whole letters, say. Empty where
  /// it is never so small.
  virtual QRectF accepted(quint32 number, const QRectF& wanted) = 0;
  /// Gives a window a size and a place, and waits until it has them. False where it refused or did not answer.
  virtual bool setFrame(quint32 number, const QRectF& frame, std::chrono::milliseconds patience) = 0;
  /// Gives back what these calls keep in the window system. Another call begins anew.
  virtual void rest() {}
};

}  // namespace tarnwick
