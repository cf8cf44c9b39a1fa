#pragma once

#include <QHash>

#include "desktop/Zones.h"
#include "platform/x11/X11EdgeStrips.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11RawInput.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11Travel.h"

namespace tarnwick {

/// Listens to the pointer's motion on the whole display, over windows of others and during their grabs too. What is
/// being dragged by whom cannot be seen on X11; that a program took the drag-and-drop selection with a button down can.
/// The events and the screens must outlive it.
class X11ZoneSensor final : public ZoneSensor {
  Q_OBJECT
 public:
  /// `edges`: whether the server sees the pointer wherever it is; one that is itself a Wayland program does not.
  X11ZoneSensor(X11Events& events, const X11Screens& screens, const Capability& edges = Capability::yes());

  Capability edges() const override { return edges_; }

  void watch(const QList<ZoneRequest>& requests) override;
  void pointerLeft() override;
  PointerZones zones(const QString& screen) const override { return zones_.value(screen); }
  bool isDragging() const override { return isDragging_; }

 private:
  void listen();
  void ask();
  double distance(const QPoint& place) const;
  void ownerChanged(quint32 selection, quint32 owner);
  void follow(const X11RawInput::Pointer& pointer);
  bool update(const X11RawInput::Pointer& pointer);
  PointerZones zonesAt(const QPoint& place, const ZoneRequest& request) const;

  X11Events& events_;
  X11RawInput& input_;
  const X11Screens& screens_;
  Capability edges_;
  QList<ZoneRequest> requests_;
  X11RawInput::Subscription motion_;
  X11RawInput::Subscription buttons_;
  QHash<QString, PointerZones> zones_;
  X11EdgeStrips strips_;
  X11Travel travel_;
  bool isDragging_ = false;
  bool mayDrag_ = false;  ///< The selection was taken since the last time that no button was down.
};

}  // namespace tarnwick
