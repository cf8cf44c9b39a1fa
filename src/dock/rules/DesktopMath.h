#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick {

/// Which displays take part.
struct DesktopMath {
  /// The displays that get a dock. `choice` is "all", "attached" or a display's identity ("main" names none, so it
  /// falls through to `fallback`); `attached` are the remembered identities, first connected first; `fallback` is the
  /// main display's identity, empty when there is none. The result is empty while nothing fits, which is no error.
  static QStringList selectedDisplays(const QString& choice, const QStringList& connected, const QStringList& attached,
                                      const QString& fallback);
};

}  // namespace tarnwick
