#pragma once

#include "desktop/Panels.h"
#include "platform/wayland/PanelOrder.h"
#include "platform/wayland/PanelPointer.h"
#include "platform/wayland/TransientLayers.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

class WaylandPanel;

/// Makes dock windows. The session and the screens must outlive it, and it every panel.
class WaylandPanels final : public Panels {
  Q_OBJECT
 public:
  WaylandPanels(const WaylandSession& session, WaylandScreens& screens);

  std::unique_ptr<Panel> make(std::unique_ptr<QWidget> content) override;
  bool isComposited() const override { return true; }
  bool canBlur() const override { return session_.blur() != nullptr; }
  Capability captureProtection() const override;

  PanelPointer& pointer() { return pointer_; }
  const PanelPointer& pointer() const { return pointer_; }
  /// The shown panel that a place belongs to, in desktop coordinates; null where there is none.
  const WaylandPanel* panelAt(const QRectF& place) const;

 private:
  const WaylandSession& session_;
  WaylandScreens& screens_;
  PanelPointer pointer_;
  PanelOrder order_;
  TransientLayers transients_;
  QList<const WaylandPanel*> panels_;
};

}  // namespace tarnwick
