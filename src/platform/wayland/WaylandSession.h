#pragma once

#include <QHash>
#include <QObject>
#include <QSize>

#include "platform/wayland/WaylandProtocols.h"

class QScreen;
class QWindow;

namespace tarnwick {

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

  /// Throws DomainError where the application does not run on Wayland or the compositor knows no layers.
  WaylandSession();
  ~WaylandSession() override;

  wl_display* display() const { return display_; }
  wl_compositor* compositor() const { return compositor_.get(); }
  zwlr_layer_shell_v1* layerShell() const { return layerShell_.get(); }
  /// Null where there is no seat.
  wl_seat* seat() const { return seat_.get(); }
  /// Null where the compositor cannot stretch pictures.
  wp_viewporter* viewporter() const { return viewporter_.get(); }
  /// Whether the compositor (KWin) gives the keyboard only to surfaces that wanted it from the first.
  bool judgesKeysOnce() const { return judgesKeysOnce_; }
  /// Makes small windows above others. Null where the compositor has none.
  xdg_wm_base* windows() const { return windows_.get(); }
  /// Null where the compositor does not tell of windows. Its events go to the event loop.
  WaylandOwned<zwlr_foreign_toplevel_manager_v1> bindToplevels() const;

  /// A picture of that size without a visible pixel.
  WaylandOwned<wl_buffer> clearBuffer(const QSize& size) const;

  /// Null while the window has no surface.
  static wl_surface* surfaceOf(QWindow& window);
  /// Null for the screen that Qt makes up while none is connected.
  static wl_output* outputOf(QScreen& screen);

 Q_SIGNALS:
  /// The last pointer device went away: no surface is told that the pointer left it.
  void pointerLost();

 private:
  struct Global {
    QByteArray interface;
    quint32 version = 0;
  };

  template <typename Object>
  WaylandOwned<Object> bind(const wl_interface& interface, quint32 greatestVersion) const;
  void bindSeat();
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
  WaylandOwned<wl_seat> seat_;
  quint32 seatName_ = 0;
  bool hasPointer_ = false;
  bool judgesKeysOnce_ = false;
};

}  // namespace tarnwick
