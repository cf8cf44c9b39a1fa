#pragma once

#include <xcb/xcb.h>

#include <QList>
#include <QObject>
#include <QRect>

#include "desktop/Zones.h"

namespace tarnwick {

class X11Events;
class X11Screens;

/// A pointer that a program puts somewhere makes no raw motion; only the windows that it enters and leaves get events.
/// So an invisible line of one pixel lies along each watched edge of a display for as long as the pointer is not there.
/// The one that the pointer came into stays until the pointer is moved by hand, and tells when a program takes it away
/// again. It passes a press on to what is below. The events and the screens must outlive it; nothing of it stays on the
/// display when it goes.
class X11EdgeStrips final : public QObject {
  Q_OBJECT
 public:
  X11EdgeStrips(X11Events& events, const X11Screens& screens);
  ~X11EdgeStrips() override;

  /// Where the pointer is at an edge already, no strip is made, and one that was let go of goes.
  void cover(const QList<ZoneRequest>& requests, const QHash<QString, PointerZones>& zones);
  /// The pointer is moved by hand: there are other events that tell of it. True where a strip is not needed any more.
  bool letGo();

 Q_SIGNALS:
  void entered();
  /// A program put the pointer elsewhere, or another window came over the strip.
  void left();

 private:
  struct Strip {
    QString screen;
    QRect line;  ///< Root pixels.
    xcb_window_t window = XCB_WINDOW_NONE;

    bool isAt(const Strip& other) const { return screen == other.screen && line == other.line; }
  };

  xcb_window_t make(const QRect& line) const;
  void remove(xcb_window_t window) const;
  bool has(xcb_window_t window) const;
  void giveWay(xcb_window_t window);

  X11Events& events_;
  const X11Screens& screens_;
  QList<Strip> strips_;
  xcb_window_t held_ = XCB_WINDOW_NONE;      ///< The one that the pointer came into last, and not by hand since.
  xcb_window_t released_ = XCB_WINDOW_NONE;  ///< The one that was let go of, until it is known where the pointer is.
};

}  // namespace tarnwick
