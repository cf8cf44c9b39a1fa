#include "views/dock/RowLayout.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "dock/rules/DropRouting.h"
#include "views/dock/DockWords.h"
#include "views/dock/RowBlocks.h"
#include "views/theme/Theme.h"
#include "widgets/catalog/KindTraits.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

bool isLine(const DockWidget& widget) { return KindTraits::of(widget.kind).isLine; }
bool isGap(const DockWidget& widget) { return KindTraits::of(widget.kind).isGap; }

/// Rounds lengths of the window to whole device pixels.
struct Grid {
  double ratio;
  double operator()(double length) const { return std::round(length * ratio) / ratio; }
  QRectF operator()(double left, double top, double right, double bottom) const {
    return {QPointF((*this)(left), (*this)(top)), QPointF((*this)(right), (*this)(bottom))};
  }
};

/// What tabs of these widths get of a space: the widest give way first, until all are alike.
QList<double> sharesOf(const QList<double>& widths, double space) {
  QList<double> ascending = widths;
  std::ranges::sort(ascending);
  double left = space;
  double most = space;
  for (qsizetype i = 0; i < ascending.size(); ++i) {
    most = left / static_cast<double>(ascending.size() - i);
    if (ascending[i] > most) break;
    left -= ascending[i];
    most = ascending[i];
  }
  QList<double> shares;
  for (const double width : widths) shares.append(std::min(width, most));
  return shares;
}

/// At scale 1, with its whole name.
double tabWidth(const QString& name, double scale) {
  return TextLine(name, TextStyle::TabLabel, scale).width() + theme::kTabPadding * 2;
}

double idealRowWidth(const QList<RowBlock>& blocks, const DockRow& row) {
  return std::max((widthOf(blocks, row.spacing) + theme::kInset * 2) * row.scale, theme::kDockLeastWidth);
}

void placeTabs(RowLayout& layout, const DockRow& row, const Grid& grid) {
  // Where there is no space for all of them, those around the active one show.
  const double space = layout.glass.width() / row.scale - theme::kInset * 2;
  const auto most = static_cast<qsizetype>((space + theme::kTabGap) / (theme::kTabLeastWidth + theme::kTabGap));
  const qsizetype count = std::clamp<qsizetype>(most, 1, row.tabs.size());
  const qsizetype first = std::clamp<qsizetype>(row.activeTab - count / 2, 0, row.tabs.size() - count);
  QList<double> widths;
  for (const QString& tab : row.tabs.mid(first, count)) widths.append(tabWidth(tab, row.scale));
  const double gaps = theme::kTabGap * static_cast<double>(count - 1);
  widths = sharesOf(widths, space - gaps);
  const double total = std::accumulate(widths.cbegin(), widths.cend(), gaps);
  layout.tabs.fill(QRectF(), row.tabs.size());
  // They stand still while the glass grows out to them.
  const double grown = theme::kDockHeightWithTabs * row.scale;
  const double top = row.edge == Edge::Bottom
                         ? layout.glass.bottom() - grown + theme::kTabTop * row.scale
                         : layout.glass.top() + grown - (theme::kTabTop + theme::kTabHeight) * row.scale;
  double x = layout.glass.center().x() - total * row.scale / 2;
  for (qsizetype i = 0; i < count; ++i) {
    layout.tabs[first + i] = grid(x, top, x + widths[i] * row.scale, top + theme::kTabHeight * row.scale);
    x += (widths[i] + theme::kTabGap) * row.scale;
  }
}

/// The glass hugs the row; a slot that keeps space for tabs leaves it free, on the inner side, until they show.
QRectF glassOf(const DockRow& row, const QRectF& slot, double width, double tabs, const Grid& grid) {
  const double height = (theme::kDockHeight + theme::kTabRowHeight * tabs) * row.scale;
  const double left = slot.center().x() - width / 2;
  const double top = row.edge == Edge::Bottom ? slot.bottom() - height : slot.top();
  return grid(left, top, left + width, top + height);
}

void placeEntry(RowLayout& layout, const RowEntry& entry, double x, double top, double scale, const Grid& grid) {
  const double right = x + entry.width * scale;
  if (entry.kind == RowEntry::Kind::Separator) {
    const double middle = grid((x + right) / 2);
    const double height = theme::kSeparatorHeight * scale;
    const double lineTop = top + (theme::kTileHeight * scale - height) / 2;
    layout.separator = grid(middle - 0.5 / grid.ratio, lineTop, middle + 0.5 / grid.ratio, lineTop + height);
    layout.separator.setWidth(std::max(1.0, std::round(scale * grid.ratio)) / grid.ratio);
    return;
  }
  if (entry.kind == RowEntry::Kind::Invitation) {
    layout.invitation = grid(x, top, right, top + theme::kTileHeight * scale);
    return;
  }
  const auto kind = entry.kind == RowEntry::Kind::Widget ? RowItem::Kind::Widget : RowItem::Kind::App;
  layout.items.append({kind, entry.index, grid(x, top, right, top + theme::kTileHeight * scale)});
}

/// Within the ends, also where the first lies beyond the last.
double between(double first, double x, double last) { return std::max(first, std::min(x, last)); }

/// An edge that two rectangles share belongs to one of them.
bool covers(const QRectF& rect, QPointF point) {
  return point.x() >= rect.left() && point.x() < rect.right() && point.y() >= rect.top() && point.y() < rect.bottom();
}

/// From `x` on; returns where the next block would be.
double placeBlocks(RowLayout& layout, const QList<RowBlock>& blocks, double x, double top, const DockRow& row,
                   const Grid& grid) {
  for (const RowBlock& block : blocks) {
    for (const RowEntry& entry : block.entries) {
      placeEntry(layout, entry, x, top, row.scale, grid);
      x += entry.width * row.scale;
    }
    x += row.spacing * row.scale;
  }
  return x;
}

/// A row that is wider than its glass: its ends where they always are, what lies between them as far as it is scrolled.
void placeScrolled(RowLayout& layout, const QList<RowBlock>& blocks, const RowEnds& ends, double top,
                   const DockRow& row, const Grid& grid) {
  const double scale = row.scale;
  const double inset = theme::kInset * scale;
  const auto placeEnd = [&](const QList<RowBlock>& end, double x) {
    const qsizetype first = layout.items.size();
    placeBlocks(layout, end, x, top, row, grid);
    for (qsizetype item = first; item < layout.items.size(); ++item) layout.items[item].stays = true;
    for (const RowBlock& block : end)
      for (const RowEntry& entry : block.entries)
        if (entry.kind == RowEntry::Kind::Separator) layout.separatorStays = true;
  };
  const QList<RowBlock> leading = blocks.first(ends.leading);
  const QList<RowBlock> trailing = blocks.last(ends.trailing);
  const double spacing = row.spacing * scale;
  double x = layout.glass.left() + inset;
  placeEnd(leading, x);
  if (!leading.isEmpty()) {
    x += widthOf(leading, row.spacing) * scale;
    layout.middle.setLeft(grid(x));
    x += spacing;
  }
  placeBlocks(layout, blocks.mid(ends.leading, blocks.size() - ends.leading - ends.trailing), x - layout.scroll, top,
              row, grid);
  if (!trailing.isEmpty()) {
    x = layout.glass.right() - inset - widthOf(trailing, row.spacing) * scale;
    layout.middle.setRight(std::max(layout.middle.left(), grid(x)));
    placeEnd(trailing, x);
  }
  QRectF arrow(layout.middle.left(), top, grid(theme::kEndFade * scale), grid(theme::kTileHeight * scale));
  if (arrow.width() * 2 > layout.middle.width()) return;
  if (layout.scroll > 0) layout.backArrow = arrow;
  arrow.moveRight(layout.middle.right());
  if (layout.scroll < layout.overflow) layout.onArrow = arrow;
}

}  // namespace

RunningAppsPlacement runningAppsPlacementNamed(const QString& name) {
  static const QHash<QString, RunningAppsPlacement> placements = {{u"none"_s, RunningAppsPlacement::None},
                                                                  {u"left"_s, RunningAppsPlacement::Left},
                                                                  {u"beforeApps"_s, RunningAppsPlacement::BeforeApps},
                                                                  {u"afterApps"_s, RunningAppsPlacement::AfterApps},
                                                                  {u"right"_s, RunningAppsPlacement::Right}};
  return placements.value(name, RunningAppsPlacement::Right);
}

double RowLayout::idealWidth(const DockRow& row) {
  const double tabs = row.offersTabs() ? tabsWidth(row.tabs, row.scale) : 0;
  return std::max(idealRowWidth(rowBlocks(row), row), tabs);
}

TextLine RowLayout::invitationLine(double scale) {
  return TextLine(DockWords::tr("Add Widgets…"), TextStyle::Body, scale);
}

double RowLayout::tabsWidth(const QStringList& names, double scale) {
  double width = theme::kInset * 2 + theme::kTabGap * static_cast<double>(std::max<qsizetype>(0, names.size() - 1));
  for (const QString& name : names) width += std::min(tabWidth(name, scale), theme::kTabMostWidth);
  return std::ceil(width * scale);
}

DockRow RowLayout::withGuest(const DockRow& row, const RowGuest& guest) {
  DockRow whole = row;
  whole.widgets.insert(std::clamp<qsizetype>(guest.index, 0, row.widgets.size()), guest.widget);
  return whole;
}

/// How far a row that scrolls is scrolled for its guest, the widget of that index: what stands beside it makes way to
/// both sides, as far as all of the guest is seen then.
double RowLayout::scrollToGuest(const DockRow& whole, const QRectF& slot, double ratio, RowPose pose, qsizetype index) {
  pose.mirrored = false;
  const RowLayout layout = of(whole, slot, ratio, pose);
  const RowItem& guest = layout.items[layout.itemOf(RowItem::Kind::Widget, index)];
  if (guest.stays) return pose.scroll;
  const double half = (guest.rect.width() + whole.spacing * whole.scale) / 2;
  const double space = (theme::kInset + theme::kEndFade) * whole.scale;
  const double beyondLeft = layout.middle.left() + space - (guest.rect.left() - half);
  const double beyondRight = guest.rect.right() - half + space - layout.middle.right();
  return pose.scroll + half + (beyondLeft > 0 ? -beyondLeft : std::max(0.0, beyondRight));
}

/// The row with the guest in it, and then without.
RowLayout RowLayout::aroundGuest(const DockRow& row, const QRectF& slot, double ratio, RowPose pose) {
  const RowGuest guest = *std::exchange(pose.guest, std::nullopt);
  const DockRow whole = withGuest(row, guest);
  const qsizetype index = std::clamp<qsizetype>(guest.index, 0, row.widgets.size());
  if (idealRowWidth(rowBlocks(whole), whole) > slot.width()) {
    pose.held = guest.widget.id;
    pose.scroll = scrollToGuest(whole, slot, ratio, pose, index);
  }
  RowLayout layout = of(whole, slot, ratio, pose);
  const qsizetype item = layout.itemOf(RowItem::Kind::Widget, index);
  layout.gap = layout.items.takeAt(item).rect;
  for (RowItem& other : layout.items)
    if (other.kind == RowItem::Kind::Widget && other.index > index) --other.index;
  return layout;
}

RowLayout RowLayout::of(const DockRow& row, const QRectF& slot, double ratio, const RowPose& pose) {
  if (pose.guest && !row.widgets.isEmpty()) return aroundGuest(row, slot, ratio, pose);
  const Grid grid{ratio};
  const double scale = row.scale;
  const double ideal = idealRowWidth(rowBlocks(row), row);
  RowLayout layout;
  const double tabs = row.keepsSpaceForTabs() ? pose.tabs : 0;
  layout.glass = glassOf(row, slot, std::min(idealWidth(row), slot.width()), tabs, grid);
  layout.overflow = std::max(0.0, ideal - slot.width());
  if (tabs > 0) placeTabs(layout, row, grid);

  const QList<RowBlock> blocks = rowBlocks(row);
  const double rowWidth = widthOf(blocks, row.spacing) * scale;
  const double free = layout.glass.width() - rowWidth;
  const double top = row.edge == Edge::Bottom ? layout.glass.bottom() - (theme::kInset + theme::kTileHeight) * scale
                                              : layout.glass.top() + theme::kInset * scale;
  layout.middle = layout.glass;
  if (layout.overflow <= 0) {
    placeBlocks(layout, blocks, layout.glass.left() + free / 2, top, row, grid);
  } else {
    const RowEnds ends = rowEnds(blocks, row, layout.glass.width() / scale, pose.held);
    layout.scroll = std::clamp(pose.scroll, 0.0, layout.overflow);
    placeScrolled(layout, blocks, ends, top, row, grid);
  }
  if (pose.mirrored) layout.mirror();
  return layout;
}

/// Turns everything in the glass over.
void RowLayout::mirror() {
  mirrored = true;
  const double sum = glass.left() + glass.right();
  const auto turn = [sum](QRectF& rect) {
    if (!rect.isEmpty()) rect.moveLeft(sum - rect.right());
  };
  for (RowItem& item : items) turn(item.rect);
  for (QRectF& tab : tabs) turn(tab);
  turn(middle);
  turn(backArrow);
  turn(onArrow);
  turn(separator);
  turn(invitation);
}

QRectF RowLayout::seen(const RowItem& item) const {
  const QRectF& stretch = item.stays ? glass : middle;
  const double left = std::max(item.rect.left(), stretch.left());
  const double right = std::min(item.rect.right(), stretch.right());
  return left < right ? QRectF(left, item.rect.top(), right - left, item.rect.height()) : QRectF();
}

double RowLayout::seenMiddle(const RowItem& item) const {
  const double x = item.rect.center().x();
  return item.stays || overflow <= 0 ? x : between(middle.left(), x, middle.right());
}

int RowLayout::arrowAt(QPointF point) const {
  if (covers(backArrow, point)) return -1;
  return covers(onArrow, point) ? 1 : 0;
}

std::optional<qsizetype> RowLayout::itemAt(QPointF point) const {
  if (!glass.contains(point) || arrowAt(point) != 0) return std::nullopt;
  for (qsizetype i = 0; i < items.size(); ++i)
    if (covers(seen(items[i]), point)) return i;
  return std::nullopt;
}

std::optional<qsizetype> RowLayout::itemUnder(QPointF point, double scale) const {
  if (items.isEmpty() || !glass.contains(point) || arrowAt(point) != 0) return std::nullopt;
  const double inset = theme::kInset * scale;
  const QRectF& any = items.first().rect;
  if (point.y() < any.top() - inset || point.y() >= any.bottom() + inset) return std::nullopt;
  // What scrolls lies under the ends that stay.
  const bool scrolls = overflow > 0 && isInMiddle(point);
  // What lies between two items is an entry of its own.
  QList<qsizetype> found;
  QList<DropRouting::Tile> entries;
  double end = 0;
  for (qsizetype i = 0; i < items.size(); ++i) {
    const QRectF& rect = items[i].rect;
    if (overflow > 0 && items[i].stays == scrolls) continue;
    if (!found.isEmpty()) entries << DropRouting::Tile{{}, {}, {}, beginOf(rect) - end};
    entries << DropRouting::Tile{{}, {}, {}, rect.width()};
    end = endOf(rect);
    found << i;
  }
  if (found.isEmpty()) return std::nullopt;
  const qsizetype at = DropRouting::indexAt(along(point.x()), entries, 0, beginOf(items[found.first()].rect));
  return at < 0 || at % 2 != 0 ? std::nullopt : std::optional(found[at / 2]);
}

std::optional<qsizetype> RowLayout::tabAt(QPointF point) const {
  for (qsizetype i = 0; i < tabs.size(); ++i)
    if (covers(tabs[i], point)) return i;
  return std::nullopt;
}

QList<QRectF> RowLayout::plates(const DockRow& row) const {
  QList<QRectF> plates;
  bool afterApp = false;
  for (const RowItem& item : items) {
    const bool isApp = item.kind == RowItem::Kind::App;
    const QRectF rect = seen(item);
    if (rect.isEmpty() || (!isApp && isGap(row.widgets[item.index]))) {
      afterApp = false;
      continue;
    }
    if (isApp && afterApp)
      plates.last() |= rect;
    else
      plates.append(rect);
    afterApp = isApp;
  }
  return plates;
}

QList<QRectF> RowLayout::lines(const DockRow& row, double ratio) const {
  QList<QRectF> lines;
  if (!separator.isEmpty()) lines << separator;
  const QSizeF size(row.scale, theme::kSeparatorHeight * row.scale);
  for (const RowItem& item : items) {
    if (item.kind == RowItem::Kind::App || !isLine(row.widgets[item.index])) continue;
    const QPointF centre = item.rect.center();
    if (overflow > 0 && !item.stays && !isInMiddle(centre)) continue;
    lines << QRectF(centre - QPointF(size.width(), size.height()) / 2, size);
  }
  for (QRectF& line : lines) line.adjust(-1 / ratio, -1 / ratio, 1 / ratio, 1 / ratio);
  return lines;
}

qsizetype RowLayout::itemOf(RowItem::Kind kind, qsizetype index) const {
  const auto found =
      std::ranges::find_if(items, [&](const RowItem& item) { return item.kind == kind && item.index == index; });
  return found == items.end() ? -1 : found - items.begin();
}

qsizetype RowLayout::widgetsBefore(double x) const {
  return std::ranges::count_if(items, [this, x](const RowItem& item) {
    return item.kind == RowItem::Kind::Widget && along(seenMiddle(item)) < along(x);
  });
}

double RowLayout::insertionX(qsizetype index, double spacing) const {
  // Beside what is out of sight it stands at the edge beyond which that is.
  const auto shown = [this](qsizetype item, double x) {
    return items[item].stays || overflow <= 0 ? x : between(middle.left(), x, middle.right());
  };
  if (const qsizetype next = itemOf(RowItem::Kind::Widget, index); next >= 0)
    return shown(next, along(beginOf(items[next].rect) - spacing / 2));
  if (const qsizetype last = itemOf(RowItem::Kind::Widget, index - 1); last >= 0)
    return shown(last, along(endOf(items[last].rect) + spacing / 2));
  if (!invitation.isEmpty()) return invitation.center().x();
  return items.isEmpty() ? glass.center().x() : along(beginOf(items.first().rect));
}

QString itemKey(const DockRow& row, const RowItem& item) {
  return item.kind == RowItem::Kind::Widget ? row.widgets[item.index].id.toString()
                                            : QString::number(row.runningApps[item.index].id);
}

qsizetype itemWithKey(const DockRow& row, const RowLayout& layout, const QString& key) {
  for (qsizetype item = 0; item < layout.items.size(); ++item)
    if (itemKey(row, layout.items[item]) == key) return item;
  return -1;
}

}  // namespace tarnwick
