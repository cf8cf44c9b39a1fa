#include "platform/wayland/WaylandZoneSensor.h"

#include <QScreen>
#include <algorithm>
#include <utility>

#include "desktop/ZoneMath.h"

namespace tarnwick {

WaylandZoneSensor::WaylandZoneSensor(const WaylandSession& session, const WaylandScreens& screens,
                                     const PanelPointer& pointer)
    : session_(session), screens_(screens), pointer_(pointer) {
  connect(&screens, &WaylandScreens::changed, this, &WaylandZoneSensor::layOut);
  connect(&pointer, &PanelPointer::areaChanged, this, &WaylandZoneSensor::layOut);
  connect(&pointer, &PanelPointer::placeChanged, this, &WaylandZoneSensor::publishLater);
  connect(&pointer, &PanelPointer::draggingChanged, this, &WaylandZoneSensor::publishLater);
  connect(&session, &WaylandSession::pointerLost, this, &WaylandZoneSensor::forgetPointer);
}

WaylandZoneSensor::~WaylandZoneSensor() = default;

void WaylandZoneSensor::watch(const QList<ZoneRequest>& requests) {
  requests_ = requests;
  layOut();
  update();
}

void WaylandZoneSensor::layOut() {
  std::erase_if(strips_, [&](const auto& entry) {
    return std::ranges::find(requests_, entry.first, &ZoneRequest::screen) == requests_.end() ||
           !screens_.native(entry.first);
  });
  for (const ZoneRequest& request : std::as_const(requests_)) {
    QScreen* screen = screens_.native(request.screen);
    if (!screen) continue;
    const QSize size = screen->size();
    Strips& strips = strips_[request.screen];
    const QRect top(0, 0, size.width(), kThickness);
    stand(strips.top, request.watchesTop, request.screen, top);
    stand(strips.bottom, request.watchesBottom, request.screen, top.translated(0, size.height() - kThickness));
  }
  publishLater();
}

void WaylandZoneSensor::stand(std::unique_ptr<ClearWindow>& strip, bool wanted, const QString& id,
                              const QRect& withinScreen) {
  if (!wanted) {
    strip.reset();
    return;
  }
  if (!strip) {
    strip = std::make_unique<ClearWindow>(session_);
    connect(strip.get(), &ClearWindow::pointerChanged, this, &WaylandZoneSensor::publishLater);
    // It is not destroyed while it reports the press.
    const auto tell = [this, id] { Q_EMIT edgePressed(id); };
    connect(strip.get(), &ClearWindow::pressed, this, tell, Qt::QueuedConnection);
  }
  QScreen& screen = *screens_.native(id);
  const QPoint corner = screen.geometry().topLeft() + withinScreen.topLeft();
  strip->setInput(QRegion(QRect(QPoint(), withinScreen.size())) - pointer_.area().translated(-corner));
  const bool stands = strip->isVisible() && strip->screen() == &screen;
  if (stands && strip->geometry() == QRect(corner, withinScreen.size())) return;
  strip->stand(screen, withinScreen, LayerLook::at(withinScreen, Layer::Overlay));
}

void WaylandZoneSensor::forgetPointer() {
  for (auto& [screen, strips] : strips_) {
    if (strips.top) strips.top->forgetPointer();
    if (strips.bottom) strips.bottom->forgetPointer();
  }
}

// The pointer leaves one surface before it enters the next; between the two it seems to be nowhere.
void WaylandZoneSensor::publishLater() {
  if (std::exchange(isPublishing_, true)) return;
  QMetaObject::invokeMethod(this, &WaylandZoneSensor::publish, Qt::QueuedConnection);
}

void WaylandZoneSensor::publish() {
  isPublishing_ = false;
  if (update()) Q_EMIT changed();
}

bool WaylandZoneSensor::update() {
  QHash<QString, PointerZones> zones;
  for (const ZoneRequest& request : std::as_const(requests_)) zones.insert(request.screen, zonesOf(request));
  bool isDragging = !requests_.isEmpty() && pointer_.isDragging();
  for (const auto& [screen, strips] : strips_) {
    isDragging |= (strips.top && strips.top->isDraggedOver()) || (strips.bottom && strips.bottom->isDraggedOver());
  }
  const bool zonesChanged = std::exchange(zones_, zones) != zones;
  const bool dragChanged = std::exchange(isDragging_, isDragging) != isDragging;
  return zonesChanged || dragChanged;
}

PointerZones WaylandZoneSensor::zonesOf(const ZoneRequest& request) const {
  const auto strips = strips_.find(request.screen);
  const QRectF frame = screens_.screen(request.screen).frame;
  PointerZones zones;
  if (const auto place = pointer_.place(); place && frame.contains(*place)) {
    zones = ZoneMath::zones(*place, frame, request.panel, kThickness);
    zones.inside = true;
  }
  if (strips == strips_.end()) return zones;
  zones.topEdge = zones.topEdge || (strips->second.top && strips->second.top->isMet());
  zones.bottomEdge = zones.bottomEdge || (strips->second.bottom && strips->second.bottom->isMet());
  return zones;
}

}  // namespace tarnwick
