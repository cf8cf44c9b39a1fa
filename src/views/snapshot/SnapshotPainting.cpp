#include "views/snapshot/SnapshotPainting.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "views/dock/DockView.h"
#include "views/panels/Panels.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/theme/WindowPalette.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSheetWidth = 1480;
constexpr double kEdge = 32;
constexpr double kCaption = 18;
constexpr double kTitle = 40;
constexpr double kOverlap = 28;

QColor groundOf(bool light) { return windowPalette(!light).color(QPalette::Window); }
QColor inkOf(bool light) { return windowPalette(!light).color(QPalette::WindowText); }

/// A picture with words below it, and its place on the sheet.
struct Piece {
  QImage image;
  QString caption;
  double scale = 1;
  QPointF place{};

  QSizeF size() const { return image.deviceIndependentSize(); }
  QRectF frame() const { return {place, size()}; }
};

/// Puts pieces into rows, so close that their shadows overlap; returns the height below the last one.
double flow(QList<Piece>& pieces, double top) {
  double x = kEdge;
  double y = top;
  double row = 0;
  for (Piece& piece : pieces) {
    const QSizeF size = piece.size();
    const double overlap = kOverlap * piece.scale;
    if (x > kEdge && x + size.width() > kSheetWidth - kEdge) {
      x = kEdge;
      y += row + kCaption;
      row = 0;
    }
    piece.place = {x, y};
    x += size.width() - overlap;
    row = std::max(row, size.height() - overlap);
  }
  return pieces.isEmpty() ? top : y + row + kCaption * 2;
}

/// Puts pieces of one width into columns of about the same height.
double fill(QList<Piece>& pieces, double top) {
  double pitch = 1;
  for (const Piece& piece : pieces) pitch = std::max(pitch, piece.size().width() - kOverlap);
  const auto count = std::max<qsizetype>(1, static_cast<qsizetype>((kSheetWidth - kEdge * 2 + kOverlap) / pitch));
  QList<double> columns(count, top);
  for (Piece& piece : pieces) {
    const auto shortest = std::ranges::min_element(columns);
    piece.place = {kEdge + pitch * static_cast<double>(shortest - columns.begin()), *shortest};
    *shortest += piece.size().height() - kOverlap + kCaption;
  }
  return *std::ranges::max_element(columns) + kCaption;
}

}  // namespace

QImage SnapshotPainter::blank(const QSizeF& size) const {
  QImage image((size * density_).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(density_);
  image.fill(Qt::transparent);
  return image;
}

QImage SnapshotPainter::picture(QWidget& widget) const {
  // Never shown, so that no window is made for it: the controls are told their look by hand.
  announceLook(widget);
  widget.resize(widget.sizeHint());
  QImage image = blank(widget.size());
  QPainter painter(&image);
  widget.render(&painter, {}, {}, QWidget::DrawChildren);
  return image;
}

QImage SnapshotPainter::tile(const QString& kind, double scale) {
  const DockWidget widget = SnapshotFixture::widgetOf(kind);
  const WidgetDefinition& definition = Catalog::find(kind);
  const Palette palette = Palette::make(scheme_.style, Backdrop::Plain, scheme_.monochrome);
  const QMargins room = Glass::margins(palette.glass, scale);
  const double width = std::round(definition.width * scale);
  const double inset = std::round(theme::kInset * scale);
  const double paneWidth = std::max(width + inset * 2, std::round(theme::kDockLeastWidth * scale));
  const QRectF pane(room.left(), room.top(), paneWidth, std::round(theme::kDockHeight * scale));
  QImage image = blank(QSizeF(pane.right() + room.right(), pane.bottom() + room.bottom()));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  glass_[scale].paint(painter, pane, palette.glass, theme::kDockCorner, scale);
  TileStyle style;
  style.palette = palette;
  style.accent = tileAccent(definition);
  style.scale = scale;
  const double left = pane.left() + std::round((paneWidth - width) / 2);
  const QRectF tile(left, pane.top() + inset, width, std::round(theme::kTileHeight * scale));
  paintTile(painter, tile, makeTileContent(widget, definition, SnapshotFixture::sources()), style);
  return image;
}

QImage SnapshotPainter::panel(SnapshotStore& fixture, const QString& kind) {
  if (const auto kept = panels_.constFind(kind); kept != panels_.constEnd()) return *kept;
  const std::unique_ptr<TilePanel> panel = makePanel(fixture.contextOf(kind));
  panel->setDockLook(scheme_.style, Backdrop::Plain, scheme_.monochrome);
  panel->start();
  return *panels_.insert(kind, picture(*panel));
}

QImage SnapshotPainter::dock(DockStyle style) const {
  DockView view;
  DockRow row = SnapshotFixture::dock();
  row.style = style;
  view.setRow(row);
  view.refresh(SnapshotFixture::sources());
  const QSize slot(static_cast<int>(std::ceil(view.idealRowWidth())), static_cast<int>(theme::kDockHeight));
  view.resize(slot.grownBy(view.margins()));
  QImage image = blank(view.size());
  QPainter painter(&image);
  const QRectF whole = view.rect();
  painter.fillRect(whole, groundOf(false));
  painter.fillRect(whole.adjusted(whole.width() / 2, 0, 0, 0), groundOf(true));
  view.render(&painter, {}, {}, QWidget::DrawChildren);
  return image;
}

QImage SnapshotPainter::onGround(const QImage& piece) const {
  QImage image = blank(piece.deviceIndependentSize());
  image.fill(groundOf(scheme_.isLight()));
  QPainter(&image).drawImage(QPointF(), piece);
  return image;
}

QImage SnapshotPainter::sheet(SnapshotStore& fixture, const QString& title, const QStringList& kinds, bool tiles,
                              bool panels) {
  QList<Piece> all;
  double height = kEdge + kTitle;
  const auto take = [&](QList<Piece> part, double (*arrange)(QList<Piece>&, double)) {
    height = arrange(part, height);
    all << part;
  };
  if (tiles)
    for (const double scale : {1.0, 1.6, 0.5}) {
      QList<Piece> part;
      for (const QString& kind : kinds)
        part << Piece{tile(kind, scale), scale == 1 ? Catalog::find(kind).name : QString(), scale};
      take(part, flow);
    }
  if (panels) {
    QList<Piece> part;
    for (const QString& kind : kinds) part << Piece{panel(fixture, kind), Catalog::find(kind).name};
    take(part, fill);
  }

  QImage image = blank(QSizeF(kSheetWidth, height));
  const bool light = scheme_.isLight();
  image.fill(groundOf(light));
  QPainter painter(&image);
  TextLine(title, TextStyle::Headline).draw(painter, {kEdge, kEdge + kCaption}, inkOf(light));
  for (const Piece& piece : all) painter.drawImage(piece.place, piece.image);
  for (const Piece& piece : all) {
    const QRectF frame = piece.frame();
    TextLine(piece.caption, TextStyle::Caption)
        .elided(frame.width(), Elide::Middle)
        .drawCentred(painter, {frame.center().x(), frame.bottom() - kOverlap / 2}, inkOf(light));
  }
  return image;
}

}  // namespace tarnwick
