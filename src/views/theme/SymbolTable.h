#pragma once

#include <QHash>
#include <QLatin1StringView>
#include <QPainterPath>
#include <QString>

namespace tarnwick {

/// The drawings behind Symbols, as texts. Upper-case letters are commands with absolute coordinates: M, L, H, V, C and
/// Z as in SVG paths, and O (circle: centre, radius), R (rounded rectangle: left, top, width, height, radius), A (arc:
/// centre, radius, begin and sweep in degrees, clockwise from the top) and P (a dot).
const QHash<QString, QLatin1StringView>& symbolTable();

/// Turns such a text into a path. What is not understood ends the path.
QPainterPath parseSymbol(QLatin1StringView text);

}  // namespace tarnwick
