#include "views/library/TilePreview.h"

#include <cmath>

#include "store/AppStore.h"
#include "views/controls/ControlLook.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/theme/WindowPalette.h"
#include "widgets/LibraryWords.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

namespace {

constexpr int kSpace = 20;  // Above and below the tile.
constexpr double kPreviewCorner = 12;

}  // namespace

TilePreview::TilePreview(AppStore& store, const PreviewSources& sources)
    : store_(store), tiles_(sources, [this] { return isVisible(); }) {
  tiles_.setExamples(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(&store, &AppStore::ticked, this, &TilePreview::refresh);
  connect(&tiles_, &PreviewTiles::changed, this, &TilePreview::takeContent);
}

void TilePreview::show(const DockWidget& widget) {
  widget_ = widget;
  refresh();
}

QSize TilePreview::sizeHint() const { return {200, static_cast<int>(theme::kTileHeight) + kSpace * 2}; }

void TilePreview::refresh() {
  if (isVisible() && !widget_.id.isNull()) tiles_.show({widget_}, store_.now());
}

void TilePreview::takeContent() {
  const TileContent* content = tiles_.content(widget_.id);
  if (!content) return;
  const QString& name = widget_.title.isEmpty() ? Catalog::find(widget_.kind).name : widget_.title;
  const QString value = content->describe(name).tip();
  setAccessibleName(LibraryWords::tr("Preview: %1").arg(value));
  update();
}

void TilePreview::takeLook() {
  const bool light = lookOf(*this).palette.light;
  tiles_.setDirection(layoutDirection());
  tiles_.setPalette(
      Palette::make(light ? DockStyle::LightGlass : DockStyle::DarkGlass, Backdrop::Plain, store_.config().monochrome));
  update();
}

void TilePreview::showEvent(QShowEvent* event) {
  takeLook();
  QWidget::showEvent(event);
  refresh();
}

void TilePreview::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::StyleChange || event->type() == QEvent::LayoutDirectionChange) takeLook();
}

void TilePreview::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  drawRounded(painter, rect(), kPreviewCorner, windowColors(!look.palette.light).side);
  drawInnerLine(painter, rect(), kPreviewCorner, hairline(painter), look.palette.tileEdge);
  const double width = PreviewTiles::widthOf(widget_);
  tiles_.paint(painter, {std::round((this->width() - width) / 2), double(kSpace)}, widget_);
}

}  // namespace tarnwick
