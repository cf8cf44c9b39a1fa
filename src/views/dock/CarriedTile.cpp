#include "views/dock/CarriedTile.h"

#include <QPainter>

#include "views/theme/Glass.h"

namespace tarnwick {

CarriedTile::CarriedTile(const CarriedPicture& tile, bool isCut) : picture_(tile.picture) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  if (isCut)
    setMask(Glass::outline(QRect(QPoint(tile.margins.left(), tile.margins.top()), tile.place.size()), tile.corner));
}

QSize CarriedTile::sizeHint() const { return picture_.deviceIndependentSize().toSize(); }

void CarriedTile::paintEvent(QPaintEvent*) { QPainter(this).drawPixmap(0, 0, picture_); }

}  // namespace tarnwick
