#pragma once

#include <QHash>
#include <QObject>
#include <QRegion>
#include <QSize>

#include "platform/wayland/WaylandProtocols.h"

class QScreen;
class QWindow;

namespace tarnwick {

class WaylandQueue;

/// What the compositor offers us, over Qt's own connection. Made once, after the application object on Qt's platform
/// "wayland" and before all else of this folder, which it outlives.
class WaylandSession final : public QObject {
  Q_OBJECT
 public:
  enum class Offer {
    Nothing,       ///< No compositor answers where WAYLAND_DISPLAY points.
    PlainWindows,  ///< One answers, but it knows no layers: a dock can be an ordinary window at best.
    Layers
  };
  /// Asks over a short connection of its own, so that it can be asked before there is an application object.
  static Offer offer();
  static bool isAvailable() { return offer() == Offer::Layers; }

  static constexpr quint32 kLayerShellVersion = 4;

  /// Throws DomainError where the application does not run on Wayland. `layers`: the greatest version of the protocol
  /// of layers that is spoken, as with a compositor that has no newer one; 0 as with one that has none.
  explicit WaylandSession(quint32 layers = kLayerShellVersion);
  ~WaylandSession() override;

  wl_display* display() const { return display_; }
  wl_compositor* compositor() const { return compositor_.get(); }
  /// Null where the compositor knows no layers.
  zwlr_layer_shell_v1* layerShell() const { return layerShell_.get(); }
  /// Null where there is no seat.
  wl_seat* seat() const { return seat_.get(); }
  /// Null where the compositor cannot stretch pictures.
  wp_viewporter* viewporter() const { return viewporter_.get(); }
  /// Lets one program bring the window of another to the front. Null where the compositor has no such thing.
  xdg_activation_v1* activation() const { return activation_.get(); }
  /// Reports the motion of devices. Null where the compositor does not.
  zwp_relative_pointer_manager_v1* devices() const { return devices_.get(); }
  /// Blurs what lies behind a surface. Null while the compositor does not: KWin's effect comes and goes.
  org_kde_kwin_blur_manager* blur() const { return blur_.get(); }
  /// Whether the compositor (KWin) gives the keyboard only to surfaces that wanted it from the first.
  bool judgesKeysOnce() const { return judgesKeysOnce_; }
  /// Whether the compositor can be asked to put a frame with a title around a window.
  bool framesWindows() const { return framesWindows_; }
  /// Makes small windows above others. Null where the compositor has none.
  xdg_wm_base* windows() const { return windows_.get(); }
  /// Null where the compositor does not report windows. Its events go to the event loop.
  WaylandOwned<zwlr_foreign_toplevel_manager_v1> bindToplevels() const;
  /// See DataControl. Null where the compositor does not have it.
  WaylandOwned<ext_data_control_manager_v1> bindDataControl() const;
  WaylandOwned<zwlr_data_control_manager_v1> bindOlderDataControl() const;
  /// KWin's own way. Null for all but KWin, and where its permission was not asked for.
  WaylandOwned<org_kde_plasma_window_management> bindPlasmaWindows(const WaylandQueue& queue) const;
  /// Its virtual desktops. Null for all but KWin.
  WaylandOwned<org_kde_plasma_virtual_desktop_management> bindPlasmaDesktops() const;

  /// A picture of that size without a visible pixel.
  WaylandOwned<wl_buffer> clearBuffer(const QSize& size) const;
  WaylandOwned<wl_region> region(const QRegion& region) const;

  /// Null while the window has no surface.
  static wl_surface* surfaceOf(QWindow& window);
  /// Null for the screen that Qt makes up while none is connected.
  static wl_output* outputOf(QScreen& screen);

 Q_SIGNALS:
  /// The last pointer device went away: no surface gets the event that the pointer left it.
  void pointerLost();
  /// Another seat, or none, took the place of the one that was there.
  void seatChanged();
  void blurChanged();

 private:
  struct Global {
    QByteArray interface;
    quint32 version = 0;
  };

  template <typename Object>
  WaylandOwned<Object> bind(const wl_interface& interface, quint32 greatestVersion,
                            wl_registry* through = nullptr) const;
  void bindSeat();
  void bindBlur();
  void removed(quint32 name);
  void seatHas(quint32 capabilities);

  wl_display* display_ = nullptr;
  QHash<quint32, Global> globals_;
  WaylandOwned<wl_registry> registry_;
  WaylandOwned<wl_compositor> compositor_;
  WaylandOwned<wl_shm> shm_;
  WaylandOwned<zwlr_layer_shell_v1> layerShell_;
  WaylandOwned<wp_viewporter> viewporter_;
  WaylandOwned<xdg_wm_base> windows_;
  WaylandOwned<xdg_activation_v1> activation_;
  WaylandOwned<zwp_relative_pointer_manager_v1> devices_;
  WaylandOwned<org_kde_kwin_blur_manager> blur_;
  quint32 blurName_ = 0;
  WaylandOwned<wl_seat> seat_;
  quint32 seatName_ = 0;
  bool hasPointer_ = false;
  bool judgesKeysOnce_ = false;
  bool framesWindows_ = false;
};

}  // namespace tarnwick
