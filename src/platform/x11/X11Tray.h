#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace tarnwick {

/// A tray of the older kind, in which programs put windows: it owns a selection of the first screen and announces
/// itself to the root window. Does nothing where the program does not speak X11.
class X11Tray final : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT
 public:
  explicit X11Tray(QObject* parent = nullptr);
  ~X11Tray() override;

  /// Asks the server.
  bool isThere() const;

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 Q_SIGNALS:
  /// One came. Sent from the event loop, so that windows may be made in answer.
  void found();

 private:
  xcb_connection_t* connection_ = nullptr;  ///< The toolkit's; null without X11.
  xcb_atom_t selection_ = XCB_ATOM_NONE;
  xcb_atom_t manager_ = XCB_ATOM_NONE;
};

}  // namespace tarnwick
