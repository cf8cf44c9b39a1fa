#include "platform/wayland/PopupSurface.h"

#include <utility>

#include "platform/wayland/WaylandQueue.h"

namespace tarnwick {

PopupSurface::PopupSurface(const WaylandSession& session, wl_surface* surface, const LayerSurface& parent,
                           const QRect& place, std::function<void()> closed, Fit fit)
    : closed_(std::move(closed)) {
  make(session, surface, &parent, nullptr, place, fit);
}

PopupSurface::PopupSurface(const WaylandSession& session, wl_surface* surface, const PopupSurface& parent,
                           const QRect& place, std::function<void()> closed)
    : closed_(std::move(closed)) {
  make(session, surface, nullptr, parent.window_.get(), place, Fit::Exact);
}

void PopupSurface::make(const WaylandSession& session, wl_surface* surface, const LayerSurface* layer,
                        xdg_surface* parent, const QRect& place, Fit fit) {
  if (!session.windows()) {
    isClosed_ = true;
    return;
  }
  static constexpr xdg_surface_listener kWindowListener{
      .configure = [](void* data, xdg_surface* window, uint32_t serial) {
        xdg_surface_ack_configure(window, serial);
        static_cast<PopupSurface*>(data)->isConfigured_ = true;
      }};
  static constexpr xdg_popup_listener kPopupListener{
      .configure = [](void* data, xdg_popup*, int32_t x, int32_t y, int32_t,
                      int32_t) { static_cast<PopupSurface*>(data)->corner_ = QPoint(x, y); },
      .popup_done =
          [](void* data, xdg_popup*) {
            auto* self = static_cast<PopupSurface*>(data);
            self->isClosed_ = true;
            self->closed_();
          },
      .repositioned = [](void*, xdg_popup*, uint32_t) {}};
  const WaylandOwned<xdg_positioner> positioner(xdg_wm_base_create_positioner(session.windows()));
  xdg_positioner_set_size(positioner.get(), std::max(1, place.width()), std::max(1, place.height()));
  xdg_positioner_set_anchor_rect(positioner.get(), place.x(), place.y(), 1, 1);
  xdg_positioner_set_anchor(positioner.get(), XDG_POSITIONER_ANCHOR_TOP_LEFT);
  xdg_positioner_set_gravity(positioner.get(), XDG_POSITIONER_GRAVITY_BOTTOM_RIGHT);
  if (fit == Fit::SlidIn) {
    xdg_positioner_set_constraint_adjustment(
        positioner.get(), XDG_POSITIONER_CONSTRAINT_ADJUSTMENT_SLIDE_X | XDG_POSITIONER_CONSTRAINT_ADJUSTMENT_SLIDE_Y);
  }

  WaylandQueue queue(session.display());
  {
    const WaylandQueue::Face<xdg_wm_base> face(queue, session.windows());
    window_.reset(xdg_wm_base_get_xdg_surface(face.get(), surface));
  }
  xdg_surface_add_listener(window_.get(), &kWindowListener, this);
  popup_.reset(xdg_surface_get_popup(window_.get(), parent, positioner.get()));
  xdg_popup_add_listener(popup_.get(), &kPopupListener, this);
  if (layer) zwlr_layer_surface_v1_get_popup(layer->object(), popup_.get());
  wl_surface_commit(surface);
  // A picture must not come before the place.
  isClosed_ = !queue.waitUntil([this] { return isConfigured_ || isClosed_; }) || isClosed_;
  WaylandQueue::release(popup_.get());
  WaylandQueue::release(window_.get());
  queue.handleRest();
}

}  // namespace tarnwick
