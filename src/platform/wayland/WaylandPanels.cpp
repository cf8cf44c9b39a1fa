#include "platform/wayland/WaylandPanels.h"

#include <QWidget>

#include "platform/wayland/WaylandPanel.h"

namespace tarnwick {

WaylandPanels::WaylandPanels(const WaylandSession& session, WaylandScreens& screens)
    : session_(session), screens_(screens), transients_(session) {
  connect(&session, &WaylandSession::pointerLost, &pointer_, &PanelPointer::forgetPointer);
  connect(&session, &WaylandSession::blurChanged, this, &Panels::compositingChanged);
}

std::unique_ptr<Panel> WaylandPanels::make(std::unique_ptr<QWidget> content) {
  auto panel = std::make_unique<WaylandPanel>(session_, screens_, pointer_, order_, transients_, std::move(content));
  panels_.append(panel.get());
  connect(panel.get(), &QObject::destroyed, this, [this](QObject* gone) {
    panels_.removeIf([gone](const WaylandPanel* one) { return static_cast<const QObject*>(one) == gone; });
  });
  return panel;
}

Capability WaylandPanels::captureProtection() const {
  return Capability::no(tr("On Wayland no app can hide its windows from screenshots and recordings."));
}

const WaylandPanel* WaylandPanels::panelAt(const QRectF& place) const {
  for (const WaylandPanel* panel : panels_) {
    if (panel->isShown() && QRectF(panel->frame()).contains(place.center())) return panel;
  }
  return nullptr;
}

}  // namespace tarnwick
