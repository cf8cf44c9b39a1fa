#pragma once

#include <QList>
#include <QPainter>
#include <QRectF>
#include <optional>

#include "views/theme/Palette.h"

namespace tarnwick {

/// What tiles and the panel of the weather draw alike. Nothing of it is mirrored.

/// The temperature of the coming hours as a line over `box`, the first of them marked. Empty for fewer than two.
void paintHours(QPainter& painter, const QRectF& box, const QList<double>& degrees, const Palette& palette);
/// The way of the sun over the horizon, which is the foot of `box`; the sun is where `share` of its day has passed,
/// and not to be seen where that is absent.
void paintSunPath(QPainter& painter, const QRectF& box, const std::optional<double>& share, const Palette& palette);
/// A wind rose whose arrow points where a wind from `direction`, in degrees from north, blows to.
void paintRose(QPainter& painter, QPointF centre, double radius, const std::optional<double>& direction,
               const Palette& palette);
/// The lows and the highs of several days as two lines with what lies between them, the days below each other: each in
/// the middle of its `row` of the height, on a scale from `least` to `most` over the width of `box`.
void paintDays(QPainter& painter, const QRectF& box, double row, const QList<std::pair<double, double>>& days,
               double least, double most, const Palette& palette);
/// The span of a day's temperatures on a scale from `least` to `most`, from cold to warm.
void paintRange(QPainter& painter, const QRectF& track, double low, double high, double least, double most,
                const Palette& palette);

}  // namespace tarnwick
