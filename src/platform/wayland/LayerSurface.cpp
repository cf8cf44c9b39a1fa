#include "platform/wayland/LayerSurface.h"

#include <utility>

#include "platform/wayland/WaylandQueue.h"

namespace tarnwick {
namespace {

// KWin gives the focus to a clicked surface of any other name, and never to one of this name.
constexpr const char* kDock = "dock";
constexpr const char* kTakesKeys = "tarnwick-keys";

}  // namespace

LayerSurface::LayerSurface(const WaylandSession& session, wl_surface* surface, wl_output* output, const LayerLook& look,
                           Listener listener)
    : surface_(surface), look_(look) {
  static constexpr zwlr_layer_surface_v1_listener kListener{
      .configure =
          [](void* data, zwlr_layer_surface_v1*, uint32_t serial, uint32_t width, uint32_t height) {
            static_cast<LayerSurface*>(data)->configured(serial,
                                                         QSize(static_cast<int>(width), static_cast<int>(height)));
          },
      .closed =
          [](void* data, zwlr_layer_surface_v1*) {
            auto* self = static_cast<LayerSurface*>(data);
            self->isClosed_ = true;
            self->listener_.closed();
          }};
  WaylandQueue queue(session.display());
  {
    const WaylandQueue::Face<zwlr_layer_shell_v1> face(queue, session.layerShell());
    object_.reset(zwlr_layer_shell_v1_get_layer_surface(face.get(), surface, output, static_cast<uint32_t>(look.layer),
                                                        look.takesKeys ? kTakesKeys : kDock));
  }
  zwlr_layer_surface_v1_add_listener(object_.get(), &kListener, this);
  apply(look);
  wl_surface_commit(surface);
  // A picture must not come before the place.
  isClosed_ = !queue.waitUntil([this] { return isConfigured_ || isClosed_; }) || isClosed_;
  WaylandQueue::release(object_.get());
  queue.handleRest();
  listener_ = std::move(listener);
}

void LayerSurface::setLook(const LayerLook& look) {
  if (look_ == look) return;
  const bool hasOtherLayer = std::exchange(look_, look).layer != look.layer;
  const auto version = zwlr_layer_surface_v1_get_version(object_.get());
  if (hasOtherLayer && version >= ZWLR_LAYER_SURFACE_V1_SET_LAYER_SINCE_VERSION) {
    zwlr_layer_surface_v1_set_layer(object_.get(), static_cast<uint32_t>(look.layer));
  }
  apply(look);
  wl_surface_commit(surface_);
}

void LayerSurface::apply(const LayerLook& look) {
  zwlr_layer_surface_v1* object = object_.get();
  zwlr_layer_surface_v1_set_anchor(object, look.anchors);
  zwlr_layer_surface_v1_set_margin(object, look.margins.top(), look.margins.right(), look.margins.bottom(),
                                   look.margins.left());
  zwlr_layer_surface_v1_set_size(object, static_cast<uint32_t>(look.size.width()),
                                 static_cast<uint32_t>(look.size.height()));
  zwlr_layer_surface_v1_set_exclusive_zone(object, look.zone);
  // In every version 0 is never and 1 as much as there is.
  zwlr_layer_surface_v1_set_keyboard_interactivity(object, look.takesKeys ? 1 : 0);
}

void LayerSurface::configured(quint32 serial, const QSize& size) {
  isConfigured_ = true;
  zwlr_layer_surface_v1_ack_configure(object_.get(), serial);
  if (std::exchange(size_, size) != size) listener_.resized(size);
}

}  // namespace tarnwick
