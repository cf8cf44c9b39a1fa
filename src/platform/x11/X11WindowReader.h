#pragma once

#include <xcb/xcb.h>

#include <QRect>

#include "desktop/ClientWindows.h"
#include "platform/x11/X11Properties.h"
#include "platform/x11/X11Server.h"

namespace tarnwick {

/// Requests all properties of a window when made, reads the answers when asked to: with one reader for each
/// of many windows, all made first, the whole costs one round trip. What the server borrows must outlive it.
class X11WindowReader {
 public:
  struct Answer {
    ClientWindow window;  ///< Without `active`, `screens`, `frame`, `elsewhere` and `sandboxId`.
    QRect frame;          ///< Root pixels, without what the window manager draws around it.
    QRect outline;        ///< The same with that, and without a shadow that the window itself draws.
    quint32 desktop = 0;  ///< Of the window manager's; all bits set for a window on all of them.
  };

  X11WindowReader(const X11Server& server, xcb_window_t window);
  X11WindowReader(X11WindowReader&& other) noexcept;
  X11WindowReader& operator=(X11WindowReader&&) = delete;
  ~X11WindowReader();

  xcb_window_t window() const { return window_; }
  Answer read();
  /// Whether a change of this property changes the answer.
  static bool reads(const X11Server& server, xcb_atom_t property);

 private:
  QString applicationId(const QString& className);
  void readClass(ClientWindow& window);
  qint64 localPid();
  bool isListed(const QList<quint32>& states);
  QRect frame();

  X11Server server_;
  xcb_window_t window_;
  PropertyRequest visibleName_, name_, class_, pid_, machine_, states_, types_, gtkId_, kdeFile_, bamfFile_, desktop_,
      hints_, decoration_, shadow_, allowed_;
  xcb_get_geometry_cookie_t geometry_;
  xcb_translate_coordinates_cookie_t place_;
  bool isPending_ = true;
};

}  // namespace tarnwick
