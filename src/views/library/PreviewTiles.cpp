#include "views/library/PreviewTiles.h"

#include <algorithm>
#include <cmath>

#include "views/families/Rooms.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

PreviewTiles::PreviewTiles(const PreviewSources& sources, std::function<bool()> seen) : icons_(sources.icons) {
  if (!sources.keep) return;
  kept_ = sources.keep();
  kept_->setSeen(std::move(seen));
  connect(kept_.get(), &KeptSources::changed, this, qOverload<const QSet<QUuid>&>(&PreviewTiles::remake));
}

void PreviewTiles::setApplications(const QStringList& paths) {
  if (paths == applications_) return;
  applications_ = paths;
  widgets_.clear();  // Those that are looked at are others by that.
}

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

void PreviewTiles::show(const QList<DockWidget>& widgets, const QDateTime& now) {
  if (!kept_) return;
  now_ = now;
  if (widgets == widgets_) return kept_->beat();
  widgets_ = widgets;
  kept_->setWidgets(shownWidgets());
  QSet<QUuid> all;
  for (const DockWidget& widget : widgets_) all.insert(widget.id);
  remake(all);
}

QList<DockWidget> PreviewTiles::shownWidgets() const {
  QList<DockWidget> shown;
  shown.reserve(widgets_.size());
  for (const DockWidget& widget : widgets_)
    shown.append(examples_ ? PreviewSamples::shown(widget, now_, applications_) : widget);
  return shown;
}

void PreviewTiles::remake(const QSet<QUuid>& widgets) {
  // An example may be of this moment.
  const QList<DockWidget> shown = shownWidgets();
  kept_->setWidgets(shown);
  const TileSources& own = kept_->values();
  TileSources values = own;
  if (examples_) samples_.fill(values, shown);
  QSet<QUuid> others;
  for (qsizetype i = 0; i < shown.size(); ++i)
    if (widgets.contains(shown[i].id) && remake(widgets_[i], shown[i], own, values)) others.insert(shown[i].id);
  if (!others.isEmpty()) Q_EMIT changed(others);
}

bool PreviewTiles::remake(const DockWidget& widget, const DockWidget& shown, const TileSources& own,
                          const TileSources& values) {
  const WidgetDefinition& definition = Catalog::find(shown.kind);
  TileContent content = makeTileContent(shown, definition, values);
  // What the widget would show as it is added is no sample.
  const bool isSample = examples_ && content != makeTileContent(widget, definition, own);
  const bool wasSample = samplesShown_.contains(shown.id);
  if (isSample)
    samplesShown_.insert(shown.id);
  else
    samplesShown_.remove(shown.id);
  const auto known = contents_.find(shown.id);
  if (known != contents_.end() && *known == content) return isSample != wasSample;
  contents_.insert(shown.id, std::move(content));
  pictures_.remove(shown.id);
  return true;
}

const TileContent* PreviewTiles::content(const QUuid& widget) const {
  const auto found = contents_.constFind(widget);
  return found == contents_.constEnd() ? nullptr : &*found;
}

QPixmap PreviewTiles::render(const DockWidget& widget, const TileContent& content, const Palette& palette,
                             double ratio) const {
  const QSizeF size(widthOf(widget), theme::kTileHeight);
  QPixmap picture((size * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  TileStyle style;
  style.palette = palette;
  style.direction = direction_;
  style.accent = tileAccent(Catalog::find(widget.kind));
  style.editing = true;
  style.icons = &icons_;
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
    QPixmap picture = render(widget, *shown, palette_, ratio);
    painter.drawPixmap(at, picture);
    const qsizetype cost = std::max<qsizetype>(1, qsizetype{picture.width()} * picture.height() * 4 / 1024);
    pictures_.insert(widget.id, new QPixmap(std::move(picture)), cost);
    return;
  }
  painter.drawPixmap(at, *kept);
}

QPixmap PreviewTiles::dragPicture(const DockWidget& widget, const Palette& palette, double ratio) const {
  const TileContent* shown = content(widget.id);
  const QSizeF size(widthOf(widget), theme::kTileHeight);
  QPixmap picture((size * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  drawRounded(painter, QRectF(QPointF(), size), theme::kTileCorner, palette.tileDragged);
  if (shown) painter.drawPixmap(QPointF(), render(widget, *shown, palette, ratio));
  return picture;
}

}  // namespace tarnwick
