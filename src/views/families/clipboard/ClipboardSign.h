#pragma once

#include <QRectF>

#include "clipboard/ClipboardEntry.h"
#include "views/theme/Palette.h"

class QImage;
class QPainter;

namespace tarnwick {

inline constexpr double kClipboardSignCorner = 6;

/// What stands before an entry of the history: the picture (none as long as it was not read), the colour, or the
/// symbol of its kind.
void paintClipboardSign(QPainter& painter, const QRectF& box, const ClipboardEntry& entry, bool isFolder,
                        const QImage& picture, const Palette& palette);

}  // namespace tarnwick
