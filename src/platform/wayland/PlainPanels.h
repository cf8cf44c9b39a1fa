#pragma once

#include "desktop/Panels.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// Panels for a compositor without layers for docks: ordinary windows without a frame. Where they are on the display
/// is for the compositor to say; within the program they are where they were put, so that what opens beside a tile
/// finds its place. The screens must outlive it and every panel.
class PlainPanels final : public Panels {
  Q_OBJECT
 public:
  explicit PlainPanels(WaylandScreens& screens) : screens_(screens) {}

  std::unique_ptr<Panel> make(std::unique_ptr<QWidget> content) override;
  bool isComposited() const override { return true; }
  bool canBlur() const override { return false; }
  Capability captureProtection() const override;
  bool keepsPlaces() const override { return false; }

 private:
  WaylandScreens& screens_;
};

}  // namespace tarnwick
