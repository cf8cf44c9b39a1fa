#pragma once

#include <QSize>
#include <functional>

#include "platform/wayland/LayerLook.h"
#include "platform/wayland/WaylandSession.h"

namespace tarnwick {

/// The role of one surface as a part of a layer. The surface has neither a role nor a picture when this is made, and
/// outlives it.
class LayerSurface {
 public:
  /// Called by the event loop. They may destroy nothing at once.
  struct Listener {
    std::function<void(const QSize&)> resized = [](const QSize&) {};
    std::function<void()> closed = [] {};
  };

  /// Waits until the compositor gave the surface its place; see isClosed().
  LayerSurface(const WaylandSession& session, wl_surface* surface, wl_output* output, const LayerLook& look,
               Listener listener);
  Q_DISABLE_COPY_MOVE(LayerSurface)

  /// What the compositor made of the size. 0 where it leaves it to us.
  QSize size() const { return size_; }
  /// The compositor has no place for it (any more); it must be let go of.
  bool isClosed() const { return isClosed_; }
  zwlr_layer_surface_v1* object() const { return object_.get(); }
  /// Takes effect at once. A compositor of the first version keeps the layer that it had.
  void setLook(const LayerLook& look);

 private:
  void apply(const LayerLook& look);
  void configured(quint32 serial, const QSize& size);

  wl_surface* surface_;
  WaylandOwned<zwlr_layer_surface_v1> object_;
  LayerLook look_;
  Listener listener_;
  QSize size_;
  bool isConfigured_ = false;
  bool isClosed_ = false;
};

}  // namespace tarnwick
