#include "views/families/clipboard/ClipboardSign.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include "clipboard/ClipboardColor.h"
#include "views/controls/ControlLook.h"
#include "views/families/clipboard/ClipboardWords.h"
#include "views/theme/Glass.h"

namespace tarnwick {

namespace {

constexpr double kSignSymbol = 14;

/// It fills the box; what does not fit is cut away at its sides.
void paintThumbnail(QPainter& painter, const QRectF& box, const QImage& image, const Palette& palette) {
  const QSizeF whole = QSizeF(image.size());
  const QSizeF part = box.size().scaled(whole, Qt::KeepAspectRatio);
  const QPointF corner((whole.width() - part.width()) / 2, (whole.height() - part.height()) / 2);
  painter.save();
  QPainterPath outline;
  outline.addRoundedRect(box, kClipboardSignCorner, kClipboardSignCorner);
  painter.setClipPath(outline, Qt::IntersectClip);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(box, image, QRectF(corner, part));
  painter.restore();
  drawInnerLine(painter, box, kClipboardSignCorner, hairline(painter), palette.tileEdge);
}

}  // namespace

void paintClipboardSign(QPainter& painter, const QRectF& box, const ClipboardEntry& entry, bool isFolder,
                        const QImage& picture, const Palette& palette) {
  if (entry.kind == ClipboardEntry::Kind::Color) {
    if (const auto color = ClipboardColor::of(entry.value)) {
      drawRounded(painter, box, kClipboardSignCorner, palette.well);
      drawRounded(painter, box, kClipboardSignCorner, *color);
      drawInnerLine(painter, box, kClipboardSignCorner, hairline(painter), palette.separator);
      return;
    }
  }
  if (entry.kind == ClipboardEntry::Kind::Image && !picture.isNull())
    return paintThumbnail(painter, box, picture, palette);
  drawRounded(painter, box, kClipboardSignCorner, palette.button);
  QRectF mark(0, 0, kSignSymbol, kSignSymbol);
  mark.moveCenter(box.center());
  drawControlSymbol(painter, ClipboardWords::symbol(entry.kind, isFolder), mark, palette.primary);
}

}  // namespace tarnwick
