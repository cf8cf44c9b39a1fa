#include "platform/wayland/PanelPointer.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

void PanelPointer::setArea(const QObject* panel, const QRegion& area) {
  Known& known = panels_[panel];
  if (std::exchange(known.area, area) == area) return;
  Q_EMIT areaChanged();
  // A panel that becomes transparent for the pointer does not always get the event that it left.
  if (known.place && !area.contains(known.place->toPoint())) setPlace(panel, std::nullopt);
}

QRegion PanelPointer::area() const {
  QRegion all;
  for (const Known& known : panels_) all |= known.area;
  return all;
}

void PanelPointer::setPlace(const QObject* panel, const std::optional<QPointF>& place) {
  if (std::exchange(panels_[panel].place, place) != place) Q_EMIT placeChanged();
}

std::optional<QPointF> PanelPointer::place() const {
  for (const Known& known : panels_) {
    if (known.place) return known.place;
  }
  return std::nullopt;
}

void PanelPointer::setDragging(const QObject* panel, bool isDragging) {
  if (std::exchange(panels_[panel].isDragging, isDragging) != isDragging) Q_EMIT draggingChanged();
}

bool PanelPointer::isDragging() const { return std::ranges::any_of(panels_, &Known::isDragging); }

void PanelPointer::forget(const QObject* panel) {
  setPlace(panel, std::nullopt);
  setDragging(panel, false);
  setArea(panel, {});
  panels_.remove(panel);
}

void PanelPointer::forgetPointer() {
  for (Known& known : panels_) {
    known.place.reset();
    known.isDragging = false;
  }
  Q_EMIT placeChanged();
  Q_EMIT draggingChanged();
}

}  // namespace tarnwick
