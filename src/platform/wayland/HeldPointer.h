#pragma once

#include <QList>
#include <QPointF>
#include <optional>

#include "platform/wayland/WaylandSession.h"

namespace tarnwick {

/// Where a hand is while it holds a window of ours that moves along with it. Compositors do not agree on what they tell
/// of the pointer then: some measure from where the window was when it was pressed. The motion of the device is the
/// same with all of them; it is listened to only while a button is held. The session must outlive it.
class HeldPointer {
 public:
  explicit HeldPointer(const WaylandSession& session) : session_(session) {}
  Q_DISABLE_COPY_MOVE(HeldPointer)

  /// A button went down. `timestamp` as events have it, here and below.
  void press(const QPointF& place, quint64 timestamp);
  void release();
  /// Where the hand was at that moment, which is known as long as the window stands where it was pressed. What the
  /// device said comes before or behind the toolkit's word on the same motion.
  void note(const QPointF& place, quint64 timestamp);
  /// Nothing while no button is held, and as long as the device has not moved that the compositor tells of.
  std::optional<QPointF> place();

 private:
  struct Motion {
    quint64 timestamp;
    QPointF way;
  };

  const WaylandSession& session_;
  WaylandOwned<wl_pointer> pointer_;
  WaylandOwned<zwp_relative_pointer_v1> device_;
  QPointF place_;
  quint64 moment_ = 0;     ///< Of the place.
  QList<Motion> motions_;  ///< Since then.
  bool hasMoved_ = false;
};

}  // namespace tarnwick
