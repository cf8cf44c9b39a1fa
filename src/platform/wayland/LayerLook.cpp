#include "platform/wayland/LayerLook.h"

#include "platform/wayland/WaylandProtocols.h"

namespace tarnwick {
namespace {

constexpr quint32 kTop = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP;
constexpr quint32 kBottom = ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM;
constexpr quint32 kLeft = ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT;
constexpr quint32 kRight = ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;

}  // namespace

LayerLook LayerLook::at(const QRect& withinScreen, Layer layer) {
  LayerLook look;
  look.layer = layer;
  look.anchors = kTop | kLeft;
  look.margins = QMargins(withinScreen.x(), withinScreen.y(), 0, 0);
  look.size = withinScreen.size().expandedTo(QSize(1, 1));
  return look;
}

LayerLook LayerLook::reservation(Edge edge, int zone) {
  LayerLook look;
  look.layer = Layer::Bottom;
  look.anchors = kLeft | kRight | (edge == Edge::Top ? kTop : kBottom);
  look.size = QSize(0, 1);
  look.zone = zone;
  return look;
}

LayerLook LayerLook::between() {
  LayerLook look;
  look.layer = Layer::Background;
  look.anchors = kTop | kBottom | kLeft | kRight;
  look.size = QSize(0, 0);
  look.zone = 0;
  return look;
}

}  // namespace tarnwick
