#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRectF>

#include "views/theme/Palette.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

/// How much of a badge is drawn.
enum class BadgeDetail {
  Whole,
  Initial,  ///< For small docks: the first letter, except where nothing but both tells two services apart.
};

/// Draws a service's badge, a rounded square with its letters, which are paths and look alike in every font.
void drawServiceBadge(QPainter& painter, const QRectF& box, double corner, const ServiceBadge& badge,
                      const Palette& palette, BadgeDetail detail = BadgeDetail::Whole);

/// The strokes of a letter from A to Z, 8 wide and 12 high; empty for any other.
QPainterPath badgeLetter(QChar letter);

}  // namespace tarnwick
