#pragma once

#include <memory>

#include "platform/wayland/LayerWindow.h"
#include "platform/wayland/PopupSurface.h"

namespace tarnwick {

/// Keeps one window of Qt's above another of ours, at the place that Qt thinks it has. The compositor allows no move:
/// a window whose geometry changed is taken away and put back.
class PopupWindow final : public RoleWindow {
  Q_OBJECT
 public:
  PopupWindow(const WaylandSession& session, QWindow& window) : RoleWindow(session, window) {}
  ~PopupWindow() override;

  /// What it lies above; a layer or another popup that is shown. It goes when that goes.
  void setParent(RoleWindow& parent);
  /// The layer below it all.
  LayerWindow* layer() const;
  /// Where it is to be, in desktop coordinates.
  void setPlace(const QRect& place);

 protected:
  bool assign(wl_surface* surface) override;
  void release() override { role_.reset(); }
  bool hasRole() const override { return role_ != nullptr; }

 private:
  QPointer<RoleWindow> parent_;
  QRect place_;
  std::unique_ptr<PopupSurface> role_;
};

}  // namespace tarnwick
