#include "views/snapshot/SnapshotPainting.h"

#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "views/controls/GlassPane.h"
#include "views/dock/DockView.h"
#include "views/families/Rooms.h"
#include "views/panels/TilePanel.h"
#include "views/theme/Glass.h"
#include "views/theme/SnapshotScenery.h"
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

// Docks below each other.
constexpr double kListGap = 36;
constexpr double kListBelow = 10;
constexpr int kDusk = 0;
constexpr int kDay = 1;
constexpr QSizeF kScene{1280, 360};
constexpr double kSceneFoot = 12;

QColor groundOf(bool light) { return windowPalette(!light).color(QPalette::Window); }
QColor inkOf(bool light) { return windowPalette(!light).color(QPalette::WindowText); }

QPixmap appIcon(const DockApp& app, int size, double ratio) { return SnapshotScenery::icon(app.icon, size, ratio); }

const TileIcons kIcons = &SnapshotScenery::icon;

/// Puts the row into a dock that is as large as it wants to be.
void fill(DockView& view, const DockRow& row) {
  view.setIconProvider(appIcon);
  view.setRow(row);
  view.refresh(SnapshotFixture::sources());
  const QSizeF slot(view.idealRowWidth(), theme::kDockHeight * row.scale);
  view.resize(QSize(static_cast<int>(std::ceil(slot.width())), static_cast<int>(std::ceil(slot.height())))
                  .grownBy(view.margins()));
}

/// What tiles and panels show in a further state.
TileSources sourcesIn(const PanelState& state) {
  TileSources sources = SnapshotFixture::sources();
  if (state.fill) state.fill(sources);
  return sources;
}

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
double stack(QList<Piece>& pieces, double top) {
  double pitch = 1;
  for (const Piece& piece : pieces) pitch = std::max(pitch, piece.size().width() - kOverlap);
  const auto count = std::max<qsizetype>(1, static_cast<qsizetype>((kSheetWidth - kEdge * 2 + kOverlap) / pitch));
  QList<double> columns(count, top);
  for (Piece& piece : pieces) {
    // A line of text more or less moves nothing out of its order.
    const double enough = *std::ranges::min_element(columns) + kCaption;
    const auto shortest = std::ranges::find_if(columns, [enough](double height) { return height <= enough; });
    piece.place = {kEdge + pitch * static_cast<double>(shortest - columns.begin()), *shortest};
    *shortest += piece.size().height() - kOverlap + kCaption;
  }
  return *std::ranges::max_element(columns) + kCaption;
}

/// Pieces that have their place, and what they are called.
void paintSheet(QImage& sheet, const QString& title, const QList<Piece>& pieces, const QColor& ink) {
  QPainter painter(&sheet);
  TextLine(title, TextStyle::Headline).draw(painter, {kEdge, kEdge + kCaption}, ink);
  for (const Piece& piece : pieces) painter.drawImage(piece.place, piece.image);
  for (const Piece& piece : pieces) {
    const QRectF frame = piece.frame();
    TextLine(piece.caption, TextStyle::Caption)
        .elided(frame.width(), Elide::Middle)
        .drawCentred(painter, {frame.center().x(), frame.bottom() - kOverlap / 2}, ink);
  }
}

}  // namespace

QImage SnapshotPainter::blank(const QSizeF& size) const {
  QImage image((size * density_).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(density_);
  image.fill(Qt::transparent);
  return image;
}

QImage SnapshotPainter::ground(const QSizeF& size) const {
  QImage image((size * density_).toSize(), QImage::Format_RGB32);
  image.setDevicePixelRatio(density_);
  image.fill(groundOf(scheme_.isLight()));
  return image;
}

QImage SnapshotPainter::picture(QWidget& widget) const {
  // Never shown, so that no window is made for it: the controls are given their look explicitly.
  announceLook(widget);
  widget.resize(widget.sizeHint());
  return render(widget);
}

QImage SnapshotPainter::pane(const SnapshotPane& pane) const {
  const auto made =
      pane.make([this](GlassPane& glass) { glass.setDockLook(scheme_.style, Backdrop::Plain, scheme_.monochrome); });
  const QImage picture = render(*made);
  QImage image = ground(made->size());
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  SnapshotScenery::paintLandscape(painter, made->rect(), scheme_.isLight() ? kDay : kDusk);
  painter.drawImage(QPointF(), picture);
  return image;
}

QImage SnapshotPainter::window(QWidget& window) const {
  QImage image = blank(window.size());
  QPainter painter(&image);
  window.render(&painter);
  return image;
}

QImage SnapshotPainter::render(QWidget& widget) const {
  QImage image = blank(widget.size());
  QPainter painter(&image);
  widget.render(&painter, {}, {}, QWidget::DrawChildren);
  return image;
}

QImage SnapshotPainter::tile(const QString& kind, double scale) {
  return tile(kind, scale, SnapshotFixture::sources());
}

QImage SnapshotPainter::tile(const QString& kind, const PanelState& state) { return tile(kind, 1, sourcesIn(state)); }

QImage SnapshotPainter::tile(const QString& kind, double scale, const TileSources& sources) {
  const DockWidget widget = SnapshotFixture::widgetOf(kind);
  const WidgetDefinition& definition = Catalog::find(kind);
  const Palette palette = Palette::make(scheme_.style, Backdrop::Plain, scheme_.monochrome);
  const QMargins space = Glass::margins(palette.glass, scale);
  const double width = std::round(definition.width * scale);
  const double inset = std::round(theme::kInset * scale);
  const double paneWidth = std::max(width + inset * 2, std::round(theme::kDockLeastWidth * scale));
  const QRectF pane(space.left(), space.top(), paneWidth, std::round(theme::kDockHeight * scale));
  QImage image = blank(QSizeF(pane.right() + space.right(), pane.bottom() + space.bottom()));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  glass_[scale].paint(painter, pane, palette.glass, theme::kDockCorner, scale);
  TileStyle style;
  style.palette = palette;
  style.accent = tileAccent(definition);
  style.scale = scale;
  style.direction = QGuiApplication::layoutDirection();
  style.icons = &kIcons;
  const double left = pane.left() + std::round((paneWidth - width) / 2);
  const QRectF tile(left, pane.top() + inset, width, std::round(theme::kTileHeight * scale));
  paintTile(painter, tile, makeTileContent(widget, definition, sources), style);
  return image;
}

QImage SnapshotPainter::panel(SnapshotStore& fixture, const QString& kind) {
  if (const auto kept = panels_.constFind(kind); kept != panels_.constEnd()) return *kept;
  const std::unique_ptr<TilePanel> panel = makePanel(fixture.contextOf(kind));
  panel->setDockLook(scheme_.style, Backdrop::Plain, scheme_.monochrome);
  panel->start();
  return *panels_.insert(kind, picture(*panel));
}

QImage SnapshotPainter::panel(const QString& kind, const PanelState& state) const {
  SnapshotStore fixture;
  if (state.prepare) state.prepare(fixture.store(), fixture.readings());
  PanelContext context = fixture.contextOf(kind);
  context.sources = [&state] { return KeptSources::given([&state] { return sourcesIn(state); }); };
  const std::unique_ptr<TilePanel> panel = makePanel(context);
  panel->setDockLook(scheme_.style, Backdrop::Plain, scheme_.monochrome);
  panel->start();
  if (state.arrange) state.arrange(*panel);
  return picture(*panel);
}

QImage SnapshotPainter::dock(const DockRow& row) const {
  SystemScheduler scheduler;
  DockView view(scheduler);
  fill(view, row);
  const QImage picture = render(view);  // Only now everything has its place.
  QImage image = ground(view.size());
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF whole = view.rect();
  const double middle = std::round(whole.width() / 2);
  SnapshotScenery::paintLandscape(painter, whole.adjusted(0, 0, middle - whole.width(), 0), kDusk);
  SnapshotScenery::paintLandscape(painter, whole.adjusted(middle, 0, 0, 0), kDay);
  if (!row.composited) painter.setClipRegion(view.outlineRegion());
  painter.drawImage(QPointF(), picture);
  return image;
}

QImage SnapshotPainter::scene(const DockRow& row) const {
  SystemScheduler scheduler;
  DockView view(scheduler);
  fill(view, row);
  const QImage picture = render(view);
  QImage image = ground(kScene);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  SnapshotScenery::paintLandscape(painter, QRectF(QPointF(), kScene), kDusk);
  const double left = std::round((kScene.width() - view.width()) / 2);
  const double top = kScene.height() - kSceneFoot - view.glassRect().bottom();
  painter.drawImage(QPointF(left, std::round(top)), picture);
  return image;
}

QImage SnapshotPainter::list(const QString& title, const QList<SnapshotPicture>& pictures) const {
  QSizeF size(0, kEdge * 2 + kTitle);
  for (const SnapshotPicture& picture : pictures) {
    const QSizeF one = picture.image.deviceIndependentSize();
    size = {std::max(size.width(), one.width() + kEdge * 2), size.height() + one.height() + kListGap};
  }
  QImage image = ground(size);
  QPainter painter(&image);
  const QColor ink = inkOf(scheme_.isLight());
  TextLine(title, TextStyle::Headline).draw(painter, {kEdge, kEdge + kCaption}, ink);
  double y = kEdge + kTitle;
  for (const SnapshotPicture& picture : pictures) {
    TextLine(picture.name, TextStyle::Caption).draw(painter, {kEdge, y + kCaption}, ink);
    painter.drawImage(QPointF(kEdge, y + kListGap - kListBelow), picture.image);
    y += picture.image.deviceIndependentSize().height() + kListGap;
  }
  return image;
}

QImage SnapshotPainter::onGround(const QImage& piece) const {
  QImage image = ground(piece.deviceIndependentSize());
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
    take(part, stack);
  }

  QImage image = ground(QSizeF(kSheetWidth, height));
  paintSheet(image, title, all, inkOf(scheme_.isLight()));
  return image;
}

QImage SnapshotPainter::sheet(const QString& title, const QList<SnapshotPicture>& tiles,
                              const QList<SnapshotPicture>& panels) const {
  QList<Piece> all;
  for (const SnapshotPicture& each : tiles) all << Piece{each.image, each.name};
  double height = flow(all, kEdge + kTitle);
  QList<Piece> below;
  for (const SnapshotPicture& each : panels) below << Piece{each.image, each.name};
  height = stack(below, height);
  all << below;
  QImage image = ground(QSizeF(kSheetWidth, height));
  paintSheet(image, title, all, inkOf(scheme_.isLight()));
  return image;
}

}  // namespace tarnwick
