#pragma once

#include <QPointer>
#include <QWidget>
#include <optional>

#include "desktop/Panels.h"
#include "platform/wayland/ClearWindow.h"
#include "platform/wayland/HeldPointer.h"
#include "platform/wayland/PanelOrder.h"
#include "platform/wayland/PanelPointer.h"
#include "platform/wayland/TransientLayers.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// A dock window: an ordinary window of Qt's in a layer. The session, the screens and what else it is made with must
/// outlive it.
class WaylandPanel final : public Panel {
  Q_OBJECT
 public:
  WaylandPanel(const WaylandSession& session, WaylandScreens& screens, PanelPointer& pointer, PanelOrder& order,
               TransientLayers& transients, std::unique_ptr<QWidget> content);
  ~WaylandPanel() override;

  void place(const PanelPlacement& placement) override;
  void setShown(bool shown) override;
  bool isShown() const override { return content_->isVisible(); }
  void setInputRegion(const QRegion& region) override;
  /// Does nothing: here every window may be translucent.
  void setOutline(const QRegion&) override {}
  void setBlurBehind(const QRegion& region) override;
  void reserve(Edge edge, int thickness) override;
  void setKeyboard(Keyboard keyboard) override;
  void setAboveFullscreen(bool above) override;
  /// Does nothing: see WaylandPanels::captureProtection.
  void setHiddenFromCapture(bool) override {}
  std::unique_ptr<Popup> popup(std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style) override;
  void openMenu(QMenu& menu, const QRect& beside) override;

  /// The whole window, in desktop coordinates.
  QRect frame() const { return content_->geometry(); }
  /// Null while it is hidden.
  wl_surface* surface() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool applyPlacement();
  void applyReservation();
  void applyArea();
  void applyBlur();
  void followScreens();
  void screenGoes(const QScreen* screen);
  void hide();
  void lose();
  void follow(QEvent* event);
  void sendPointerMotion();
  void lendKeys();

  const WaylandSession& session_;
  WaylandScreens& screens_;
  PanelPointer& pointer_;
  PanelOrder& order_;
  TransientLayers& transients_;
  HeldPointer held_;
  Qt::MouseButton heldButton_ = Qt::NoButton;
  bool isSendingMotion_ = false;
  bool lendsKeys_ = false;
  QPointer<LayerWindow> layer_;  ///< Null until it is first shown.
  std::unique_ptr<ClearWindow> reservation_;
  std::optional<PanelPlacement> placement_;
  std::optional<QRegion> input_;
  QRegion blurBehind_;
  WaylandOwned<org_kde_kwin_blur> blur_;
  Edge edge_ = Edge::Bottom;
  int thickness_ = 0;
  Keyboard keyboard_ = Keyboard::None;
  bool isAboveFullscreen_ = true;
  std::unique_ptr<QWidget> content_;  ///< Destroyed first: its window reports its end.
};

}  // namespace tarnwick
