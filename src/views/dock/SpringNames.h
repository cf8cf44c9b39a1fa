#pragma once

#include <QString>

namespace tarnwick {

// What travels in a dock, beside the tiles themselves.
inline const QString kTabsSpring = QStringLiteral("tabs");    ///< How far the glass has grown for the tabs.
inline const QString kLiftSpring = QStringLiteral("lift");    ///< How far the dragged tile is above the row.
inline const QString kGapSpring = QStringLiteral("gap");      ///< The left edge of the place that is kept for it.
inline const QString kSlideSpring = QStringLiteral("slide");  ///< How far the row is from the middle of its glass.

}  // namespace tarnwick
