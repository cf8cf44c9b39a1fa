#include "views/library/PreviewTiles.h"

#include <algorithm>
#include <cmath>

#include "views/families/Rooms.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

void PreviewTiles::setPalette(const Palette& palette) {
  if (palette == palette_) return;
  palette_ = palette;
  pictures_.clear();
}

void PreviewTiles::setDirection(Qt::LayoutDirection direction) {
  if (direction == direction_) return;
  direction_ = direction;
  pictures_.clear();
}

double PreviewTiles::widthOf(const DockWidget& widget) { return Catalog::find(widget.kind).width; }

QList<QUuid> PreviewTiles::refresh(const QList<DockWidget>& widgets, const QDateTime& now) {
  if (widgets.isEmpty() || !sources_.values) return {};
  QList<DockWidget> shown;
  shown.reserve(widgets.size());
  for (const DockWidget& widget : widgets)
    shown.append(examples_ ? PreviewSamples::shown(widget, now, applications_) : widget);
  const TileSources own = sources_.values(shown);
  TileSources values = own;
  if (examples_) samples_.fill(values, shown);
  QList<QUuid> changed;
  for (qsizetype i = 0; i < shown.size(); ++i) {
    const DockWidget& widget = shown[i];
    const WidgetDefinition& definition = Catalog::find(widget.kind);
    TileContent content = makeTileContent(widget, definition, values);
    // What the widget would show as it is added is no sample.
    const bool isSample = examples_ && content != makeTileContent(widgets[i], definition, own);
    const bool wasSample = samplesShown_.contains(widget.id);
    if (isSample)
      samplesShown_.insert(widget.id);
    else
      samplesShown_.remove(widget.id);
    const auto known = contents_.find(widget.id);
    if (known != contents_.end() && *known == content) {
      if (isSample != wasSample) changed.append(widget.id);
      continue;
    }
    contents_.insert(widget.id, std::move(content));
    pictures_.remove(widget.id);
    changed.append(widget.id);
  }
  return changed;
}

const TileContent* PreviewTiles::content(const QUuid& widget) const {
  const auto found = contents_.constFind(widget);
  return found == contents_.constEnd() ? nullptr : &*found;
}

QPixmap PreviewTiles::render(const DockWidget& widget, const TileContent& content, double ratio) const {
  const QSizeF size(widthOf(widget), theme::kTileHeight);
  QPixmap picture((size * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  TileStyle style;
  style.palette = palette_;
  style.direction = direction_;
  style.accent = tileAccent(Catalog::find(widget.kind));
  style.editing = true;
  style.icons = &sources_.icons;
  paintTile(painter, QRectF(QPointF(), size), content, style);
  return picture;
}

void PreviewTiles::paint(QPainter& painter, const QPointF& place, const DockWidget& widget) {
  const TileContent* shown = content(widget.id);
  if (!shown) return;
  // A picture between device pixels would blur.
  const QTransform device = painter.deviceTransform();
  const QPointF at = device.inverted().map(QPointF(device.map(place).toPoint()));
  const double ratio = painter.device()->devicePixelRatioF();
  const QPixmap* kept = pictures_.object(widget.id);
  if (!kept || kept->devicePixelRatio() != ratio) {
    QPixmap picture = render(widget, *shown, ratio);
    painter.drawPixmap(at, picture);
    const qsizetype cost = std::max<qsizetype>(1, qsizetype{picture.width()} * picture.height() * 4 / 1024);
    pictures_.insert(widget.id, new QPixmap(std::move(picture)), cost);
    return;
  }
  painter.drawPixmap(at, *kept);
}

QPixmap PreviewTiles::dragPicture(const DockWidget& widget, double ratio) {
  const TileContent* shown = content(widget.id);
  const QSizeF size(widthOf(widget), theme::kTileHeight);
  QPixmap picture((size * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  drawRounded(painter, QRectF(QPointF(), size), theme::kTileCorner, palette_.tileDragged);
  if (shown) painter.drawPixmap(QPointF(), render(widget, *shown, ratio));
  return picture;
}

}  // namespace tarnwick
