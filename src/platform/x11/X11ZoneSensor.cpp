#include "platform/x11/X11ZoneSensor.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "desktop/ZoneMath.h"

namespace tarnwick {

X11ZoneSensor::X11ZoneSensor(X11Events& events, const X11Screens& screens, const Capability& edges)
    : events_(events), input_(events.rawInput()), screens_(screens), edges_(edges), strips_(events, screens) {
  connect(&screens, &X11Screens::changed, this, [this] {
    travel_.reset();
    if (!requests_.isEmpty()) ask();
  });
  connect(&events, &X11Events::selectionOwnerChanged, this, &X11ZoneSensor::ownerChanged);
  connect(&strips_, &X11EdgeStrips::entered, this, &X11ZoneSensor::ask);
  connect(&strips_, &X11EdgeStrips::left, this, &X11ZoneSensor::ask);
}

void X11ZoneSensor::watch(const QList<ZoneRequest>& requests) {
  requests_ = requests;
  travel_.reset();
  listen();
  if (requests.isEmpty()) {
    zones_.clear();
    isDragging_ = mayDrag_ = false;
    strips_.cover({}, {});
  } else {
    update(input_.read());
  }
}

void X11ZoneSensor::listen() {
  const bool wanted = !requests_.isEmpty();
  if (wanted == static_cast<bool>(motion_)) return;
  events_.watchSelection(X11Atom::XdndSelection, wanted);
  if (wanted) {
    motion_ = input_.subscribeToMotion();
    buttons_ = input_.subscribeToButtons();
    connect(&input_, &X11RawInput::moved, this, [this](quint16 device, const QPointF& way) {
      const bool needsNoStrip = strips_.letGo();
      if (travel_.moved(device, way) || needsNoStrip) ask();
    });
    connect(&input_, &X11RawInput::buttonChanged, this, &X11ZoneSensor::ask);
    connect(&input_, &X11RawInput::answered, this, &X11ZoneSensor::follow);
  } else {
    input_.disconnect(this);
    motion_.reset();
    buttons_.reset();
  }
}

void X11ZoneSensor::pointerLeft() {
  if (!requests_.isEmpty()) ask();
}

// A program takes the selection anew for every drag, but often keeps it afterwards.
void X11ZoneSensor::ownerChanged(quint32 selection, quint32 owner) {
  if (requests_.isEmpty() || selection != events_.atom(X11Atom::XdndSelection)) return;
  mayDrag_ = owner != XCB_WINDOW_NONE;
  ask();
}

void X11ZoneSensor::ask() {
  travel_.asked();
  input_.ask();
}

void X11ZoneSensor::follow(const X11RawInput::Pointer& pointer) {
  travel_.found(pointer.place, distance(pointer.place));
  if (!requests_.isEmpty() && update(pointer)) Q_EMIT changed();
}

bool X11ZoneSensor::update(const X11RawInput::Pointer& pointer) {
  QHash<QString, PointerZones> zones;
  for (const ZoneRequest& request : std::as_const(requests_)) {
    zones.insert(request.screen, zonesAt(pointer.place, request));
  }
  mayDrag_ = mayDrag_ && pointer.hasButton;
  const bool zonesChanged = std::exchange(zones_, zones) != zones;
  if (edges_) strips_.cover(requests_, zones_);
  const bool dragChanged = std::exchange(isDragging_, mayDrag_) != mayDrag_;
  return zonesChanged || dragChanged;
}

double X11ZoneSensor::distance(const QPoint& place) const {
  double least = std::numeric_limits<double>::max();
  for (const ZoneRequest& request : requests_) {
    const auto native = screens_.native(request.screen);
    if (!native) continue;
    const double distance = ZoneMath::distance(native->toDesktop(place), native->desktopFrame, request);
    least = std::min(least, distance * native->scale);
  }
  return least;
}

PointerZones X11ZoneSensor::zonesAt(const QPoint& place, const ZoneRequest& request) const {
  const auto native = screens_.native(request.screen);
  if (!native) return {};
  PointerZones zones = ZoneMath::zones(native->toDesktop(place), native->desktopFrame, request);
  // Where displays adjoin, the outer line of one is the first of the next.
  if (!native->frame.contains(place)) zones.topEdge = zones.bottomEdge = false;
  return zones;
}

}  // namespace tarnwick
