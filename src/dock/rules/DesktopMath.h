#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <optional>

#include "config/DockConfiguration.h"
#include "desktop/Screens.h"

namespace tarnwick {

/// Which displays take part, and what the settings remember of them. Pure.
struct DesktopMath {
  /// How far a full-screen window may fall short of the screen at each side and still cover it.
  static constexpr double kCoverTolerance = 3;

  /// The displays that get a dock. `choice` is "all", "attached" or a display's identity ("main" names none, so it
  /// falls through to `fallback`); `attached` are the remembered identities, first connected first; `fallback` is the
  /// main display's identity, empty when there is none. The result is empty while nothing fits, which is no error.
  static QStringList selectedDisplays(const QString& choice, const QStringList& connected, const QStringList& attached,
                                      const QString& fallback);

  /// Whether a full-screen window's frame covers a whole screen. Both in the same coordinates.
  static bool covers(const QRectF& frame, const QRectF& screen);

  /// The settings with the older identities of the connected screens (Screen::legacyId) rewritten to the current ones,
  /// or nothing where there is none to rewrite. What is already stored under a current identity wins over what an
  /// older one holds. Displays that are not connected keep what they have.
  static std::optional<DockConfiguration> migrated(const DockConfiguration& config, const QList<Screen>& screens);

  /// `attached` followed by the connected screens that it lacks. Nothing ever leaves the list, so its order shows which
  /// display was connected first.
  static QStringList remembered(const QStringList& attached, const QList<Screen>& screens);
};

}  // namespace tarnwick
