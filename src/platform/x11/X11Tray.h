#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

#include "desktop/Tray.h"

namespace tarnwick {

/// A tray of the older kind, in which programs put windows: it owns a selection of the first screen and announces
/// itself to the root window. There is none where the program does not speak X11.
class X11Tray final : public Tray, public QAbstractNativeEventFilter {
  Q_OBJECT
 public:
  ~X11Tray() override;

  /// Asks the server; one that comes later is reported from the event loop, so that windows may be made in answer.
  void look() override;

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 private:
  void listen();
  bool isThere() const;

  xcb_connection_t* connection_ = nullptr;  ///< The toolkit's; null without X11.
  xcb_atom_t selection_ = XCB_ATOM_NONE;
  xcb_atom_t manager_ = XCB_ATOM_NONE;
};

}  // namespace tarnwick
