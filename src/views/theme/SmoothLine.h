#pragma once

#include <QList>
#include <QPainterPath>
#include <QPointF>

namespace tarnwick {

/// A smooth line through samples whose x grows: a monotone cubic. It rises and falls with the samples, has its extremes
/// at them, and never leaves the range of two neighbours; samples in a row give a straight line. Empty for none.
QPainterPath smoothLine(const QList<QPointF>& samples);

}  // namespace tarnwick
