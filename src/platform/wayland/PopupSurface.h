#pragma once

#include <QRect>
#include <functional>

#include "platform/wayland/LayerSurface.h"

namespace tarnwick {

/// The role of one surface as a small window that belongs to a part of a layer, or to another such window, and lies
/// above it. The surface has neither a role nor a picture when this is made, and it and the parent outlive this.
class PopupSurface {
 public:
  enum class Fit {
    Exact,
    SlidIn  ///< Moved to where the compositor finds it well visible.
  };

  /// `place` is in the coordinates of the parent. Waits until the compositor gave the surface its place. `closed` is
  /// called by the event loop.
  PopupSurface(const WaylandSession& session, wl_surface* surface, const LayerSurface& parent, const QRect& place,
               std::function<void()> closed, Fit fit = Fit::Exact);
  PopupSurface(const WaylandSession& session, wl_surface* surface, const PopupSurface& parent, const QRect& place,
               std::function<void()> closed);
  Q_DISABLE_COPY_MOVE(PopupSurface)

  /// The compositor has no place for it (any more); it must be let go of.
  bool isClosed() const { return isClosed_; }
  /// Where the compositor put it, in the coordinates of the parent.
  QPoint corner() const { return corner_; }

 private:
  void make(const WaylandSession& session, wl_surface* surface, const LayerSurface* layer, xdg_surface* parent,
            const QRect& place, Fit fit);

  WaylandOwned<xdg_surface> window_;
  WaylandOwned<xdg_popup> popup_;
  std::function<void()> closed_;
  QPoint corner_;
  bool isConfigured_ = false;
  bool isClosed_ = false;
};

}  // namespace tarnwick
