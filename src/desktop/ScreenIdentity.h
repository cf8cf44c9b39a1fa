#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "desktop/Edid.h"

namespace tarnwick {

/// Gives each connected display an identity that survives a reconnection (Screen::id), the same under every window
/// system.
struct ScreenIdentity {
  struct Source {
    QString connector;         ///< Such as "DP-1"; distinguishes monitors that report the same.
    std::optional<Edid> edid;  ///< Absent where the monitor reports nothing.
  };

  /// One identity for each source, in its order: an upper-case UUID without braces made from maker, product and serial,
  /// or the connector's name. Where several monitors say the same, the first in the order of the connectors' names
  /// keeps the plain identity, so that plugging in a second one leaves the first alone.
  static QStringList assign(const QList<Source>& sources);
};

}  // namespace tarnwick
