#pragma once

#include <QObject>
#include <QPointF>
#include <optional>

#include "platform/wayland/WaylandSession.h"

namespace tarnwick {

/// Where the pointer is while it holds a window of ours that moves along with it. Compositors do not agree on what they
/// tell of the pointer then: some measure from where the window was when it was pressed. The motion of the device is
/// the same with all of them. Both come over a pointer of our own, which says what belongs together, so that no motion
/// is counted twice or lost when the window begins to move. The session must outlive it.
class HeldPointer final : public QObject {
  Q_OBJECT
 public:
  explicit HeldPointer(const WaylandSession& session) : session_(session) {}

  /// The pointer came over the window, or went.
  void listen();
  void rest();

  /// The window stands still from now on: what the toolkit says of the pointer is right.
  void settle();
  /// The window leaves the place where it stood, in desktop coordinates.
  void leave(const QPointF& corner);
  /// Where the pointer is. Nothing as long as the window stands still, and where the compositor reports no motion of
  /// the device.
  std::optional<QPointF> place() const;

 Q_SIGNALS:
  /// The pointer moved on, which the toolkit may not notice: to it the pointer may seem to rest.
  void moved();

 private:
  static HeldPointer& of(void* data) { return *static_cast<HeldPointer*>(data); }
  void frameEnds();
  void moveBy(const QPointF& way);

  const WaylandSession& session_;
  WaylandOwned<wl_pointer> pointer_;
  WaylandOwned<zwp_relative_pointer_v1> device_;
  QPointF coming_;  ///< What was reported so far of a frame that has not ended.
  QPointF way_;
  QPointF within_;  ///< From the corner of the window, as the compositor sees it.
  QPointF place_;
  bool isStill_ = true;
  bool hasMoved_ = false;
  bool isTelling_ = false;
};

}  // namespace tarnwick
