#pragma once

#include <xcb/xcb.h>

#include <QList>
#include <QRect>
#include <QString>
#include <optional>

#include "desktop/Edid.h"

namespace tarnwick {

class X11Events;

/// One monitor as RandR 1.5 knows it.
struct X11Monitor {
  QString name;        ///< The connector's, or the one that the user gave.
  quint32 output = 0;  ///< The number of its first output; 0 for a monitor without one.
  QRect frame;         ///< Root pixels.
  std::optional<Edid> edid;

  /// Whether the server knows monitors at all.
  static bool areKnown(const X11Events& events);
  /// The active ones, in the server's order.
  static QList<X11Monitor> read(const X11Events& events);
};

}  // namespace tarnwick
