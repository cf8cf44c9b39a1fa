#pragma once

#include <QScreen>
#include <memory>

#include "platform/wayland/LayerSurface.h"
#include "platform/wayland/RoleWindow.h"

namespace tarnwick {

/// Keeps one window of Qt's in a layer of the desktop.
class LayerWindow final : public RoleWindow {
  Q_OBJECT
 public:
  LayerWindow(const WaylandSession& session, QWindow& window) : RoleWindow(session, window) {}
  ~LayerWindow() override;

  /// Before prepare(). Qt guesses a window's screen from its geometry; a layer must know.
  void setScreen(QScreen& screen);
  void setLook(const LayerLook& look);
  /// Takes the keyboard even where the look does not, as while a menu of the window is open.
  void borrowKeys(bool borrows);
  /// Null while the window is hidden.
  LayerSurface* role() const { return role_.get(); }

 protected:
  bool assign(wl_surface* surface) override;
  void release() override { role_.reset(); }
  bool hasRole() const override { return role_ != nullptr; }

 private:
  LayerLook wanted() const;

  QPointer<QScreen> screen_;
  LayerLook look_;
  bool borrowsKeys_ = false;
  bool takesKeys_ = false;  ///< Since it has this role.
  std::unique_ptr<LayerSurface> role_;
};

}  // namespace tarnwick
