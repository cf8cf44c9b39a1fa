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
/// It gives way as soon as the pointer came, so that what is below gets the clicks. The events and the screens must
/// outlive it; nothing of it stays on the display when it goes.
class X11EdgeStrips final : public QObject {
  Q_OBJECT
 public:
  X11EdgeStrips(X11Events& events, const X11Screens& screens);
  ~X11EdgeStrips() override;

  /// Where the pointer is at an edge already, nothing is needed.
  void cover(const QList<ZoneRequest>& requests, const QHash<QString, PointerZones>& zones);

 Q_SIGNALS:
  void entered();
  /// A press was faster than the strip's giving way.
  void pressed(const QString& screen);

 private:
  struct Strip {
    QString screen;
    QRect line;  ///< Root pixels.
    xcb_window_t window = XCB_WINDOW_NONE;
  };

  xcb_window_t make(const QRect& line) const;
  const Strip* of(xcb_window_t window) const;

  X11Events& events_;
  const X11Screens& screens_;
  QList<Strip> strips_;
};

}  // namespace tarnwick
