#pragma once

#include <QPainter>
#include <QPointF>

#include "views/theme/Palette.h"

namespace tarnwick {

/// The square that pictures of files are drawn in.
inline constexpr double kFilePicture = 40;

/// Where a glyph on a folder has its middle, from the picture's corner, and its size.
inline constexpr QPointF kFolderGlyph{20, 23.5};
inline constexpr double kFolderGlyphSize = 15;

void drawFolder(QPainter& painter, QPointF topLeft, const PictureColors& colors);
/// One sheet.
void drawDocument(QPainter& painter, QPointF topLeft, const PictureColors& colors);
/// A fan of three sheets.
void drawPapers(QPainter& painter, QPointF topLeft, const PictureColors& colors);
/// A tray with up to two sheets in it.
void drawShelf(QPainter& painter, QPointF topLeft, int sheets, const PictureColors& colors);

}  // namespace tarnwick
