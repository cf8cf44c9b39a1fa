#include "views/dock/RowTiles.h"

#include <algorithm>
#include <utility>

#include "views/families/Rooms.h"
#include "widgets/DropRules.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

Palette paletteOf(const DockRow& row) {
  const Palette usual = Palette::make(row.style, row.backdrop(), row.monochrome, row.highContrast);
  Palette palette = usual;
  if (row.reduceTransparency && !row.highContrast) {
    palette = Palette::make(row.style, Backdrop::Opaque, row.monochrome, false);
    // Only the glass is opaque; the window around it is what it was.
    palette.glass.shadow = usual.glass.shadow;
    palette.glass.outline = usual.glass.outline;
    palette.panel.shadow = usual.panel.shadow;
    palette.panel.outline = usual.panel.outline;
  }
  // A picture has the shape of the glass where the style has none.
  if (!row.picture.file.isEmpty() && !palette.glass.bodyTop.isValid())
    palette.glass.bodyTop = palette.glass.bodyBottom = QColor(0, 0, 0, 1);
  if (!row.tileBorders && !row.highContrast) palette.tileEdge = QColor(Qt::transparent);
  return palette;
}

}  // namespace

RowTiles::RowTiles(const QWidget& surface)
    : surface_(surface), palette_(Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false)) {}

void RowTiles::take(const DockRow& row) {
  row_ = row;
  palette_ = paletteOf(row);
  tiles_.clear();
}

bool RowTiles::looksLike(const DockRow& row) const {
  if (row.widgets.size() != row_.widgets.size()) return false;
  DockRow other = row_;
  for (qsizetype i = 0; i < row.widgets.size(); ++i) {
    if (row.widgets[i].id != row_.widgets[i].id || row.widgets[i].kind != row_.widgets[i].kind) return false;
    other.widgets[i] = row.widgets[i];
  }
  return row == other;
}

RowTiles::Refreshed RowTiles::refresh(const TileSources& sources, const std::function<bool(const DockWidget&)>& which) {
  if (&sources != &sources_) sources_ = sources;
  Refreshed refreshed;
  for (qsizetype item = 0; item < count(); ++item) {
    const DockWidget* widget = widgetOf(item);
    if (!widget || (which && !which(*widget))) continue;
    const WidgetDefinition& definition = Catalog::find(widget->kind);
    TileContent content = makeTileContent(*widget, definition, sources);
    TileText text = content.describe(widget->title.isEmpty() ? definition.name : widget->title);
    text.problem = tileProblem(definition, sources);
    Tile& tile = tiles_[widget->id];
    refreshed.saysOther = refreshed.saysOther || text != tile.text;
    const bool isMarkKept = text.problem.isEmpty() == tile.text.problem.isEmpty();
    tile.text = std::move(text);
    if (content == tile.content && isMarkKept) continue;
    tile.content = std::move(content);
    refreshed.items.append(item);
  }
  return refreshed;
}

RowTiles::Refreshed RowTiles::takeWidgets(const DockRow& row) {
  const QList<DockWidget> before = std::exchange(row_, row).widgets;
  return refresh(sources_, [&before](const DockWidget& widget) { return !before.contains(widget); });
}

// --- What an item is ------------------------------------------------------------------------------------------------

const DockWidget* RowTiles::widgetOf(qsizetype item) const {
  if (!isItem(item) || layout_.items[item].kind != RowItem::Kind::Widget) return nullptr;
  return &row_.widgets[layout_.items[item].index];
}

const DockApp* RowTiles::appOf(qsizetype item) const {
  if (!isItem(item) || layout_.items[item].kind != RowItem::Kind::App) return nullptr;
  return &row_.runningApps[layout_.items[item].index];
}

const TileContent* RowTiles::contentOf(qsizetype item) const {
  const DockWidget* widget = widgetOf(item);
  if (!widget) return nullptr;
  const auto tile = tiles_.constFind(widget->id);
  return tile == tiles_.constEnd() ? nullptr : &tile->content;
}

quint64 RowTiles::applicationOf(qsizetype item) const {
  if (const DockApp* app = appOf(item)) return app->id;
  const TileContent* content = contentOf(item);
  return content ? content->application().identity : 0;
}

TileText RowTiles::textOf(qsizetype item) const {
  if (const DockWidget* widget = widgetOf(item)) return tiles_.value(widget->id).text;
  const DockApp* app = appOf(item);
  return app ? TileText{app->name, describe(app->marks())} : TileText{};
}

bool RowTiles::hasFailed(qsizetype item) const {
  const DockWidget* widget = widgetOf(item);
  const auto tile = widget ? tiles_.constFind(widget->id) : tiles_.constEnd();
  return tile != tiles_.constEnd() && !tile->text.problem.isEmpty();
}

bool RowTiles::isApplication(qsizetype item) const {
  const DockWidget* widget = widgetOf(item);
  return widget ? DropRules::takerOf(*widget) == DropRules::Taker::Application : appOf(item) != nullptr;
}

bool RowTiles::isLaunching(qsizetype item) const {
  if (const DockApp* app = appOf(item)) return app->launching;
  const TileContent* content = contentOf(item);
  return content && content->application().isLaunching;
}

bool RowTiles::isLoading(qsizetype item) const {
  const TileContent* content = contentOf(item);
  return content && content->isLoading();
}

bool RowTiles::answersPointer(qsizetype item) const {
  if (!isItem(item)) return false;
  const TileContent* content = contentOf(item);
  return !content || content->isSolid();
}

TileClick RowTiles::clickAt(qsizetype item, QPointF point) const {
  const QRectF& tile = layout_.items[item].rect;
  return {tile.width() / row_.scale, (point - tile.topLeft()) / row_.scale, row_.scale, surface_.layoutDirection()};
}

// --- The row as a whole ---------------------------------------------------------------------------------------------

QUuid RowTiles::widgetAt(QPointF point) const {
  const DockWidget* widget = widgetOf(layout_.itemAt(point).value_or(-1));
  return widget ? widget->id : QUuid();
}

QRectF RowTiles::placeOf(const QUuid& widget) const {
  const auto found = std::ranges::find(row_.widgets, widget, &DockWidget::id);
  if (found == row_.widgets.end()) return {};
  return place(layout_.itemOf(RowItem::Kind::Widget, found - row_.widgets.begin()));
}

QList<DockAppItem> RowTiles::apps() const {
  QList<DockAppItem> apps;
  for (qsizetype item = 0; item < count(); ++item) {
    if (!isApplication(item)) continue;
    const DockWidget* widget = widgetOf(item);
    apps.append(widget ? DockAppItem{widget->id, 0} : DockAppItem{{}, appOf(item)->id});
  }
  return apps;
}

QHash<quint64, QRectF> RowTiles::applicationPlaces() const {
  QHash<quint64, QRectF> places;
  for (qsizetype item = 0; item < count(); ++item)
    if (const quint64 application = applicationOf(item)) places.insert(application, layout_.items[item].rect);
  return places;
}

QStringList RowTiles::names() const {
  QStringList names;
  for (qsizetype item = 0; item < count(); ++item) names << textOf(item).name;
  return names;
}

QString RowTiles::description() const {
  QStringList tips;
  for (const DockWidget& widget : row_.widgets)
    if (const auto tile = tiles_.constFind(widget.id); tile != tiles_.constEnd() && tile->content.isSolid())
      tips.append(tile->text.tip());
  return tips.join(u"; "_s);
}

}  // namespace tarnwick
