// How the shelves of the library are painted.

#include <QLineEdit>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/library/LibraryView.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kCardCorner = 14;
constexpr double kActiveLine = 1.5;
constexpr double kPlus = 20;
constexpr double kCountGap = 8;

}  // namespace

void LibraryView::paintEvent(QPaintEvent* event) {
  // Cards that come into sight are asked what they show before they are painted.
  const auto [first, last] = seen();
  bool isFresh = false;
  for (int row = first; row < last; ++row) {
    const auto& widget = itemAt(row).entry.widget;
    isFresh = isFresh || (widget && !tiles_.content(widget->id));
  }
  if (isFresh) showTiles();

  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  paintShelves(painter, event->rect());
  for (int row = first; row < last; ++row)
    if (cardRect(row).intersects(event->rect())) paintCard(painter, row);
  if (layout_.cards.isEmpty())
    drawTextIn(painter, QRectF(0, 0, viewport()->width(), viewport()->height() * 0.6),
               LibraryWords::tr("No widget matches “%1”.").arg(field_ ? field_->text().trimmed() : QString()),
               TextStyle::Body, lookOf(*this).palette.secondary, Qt::AlignHCenter);
  paintThumb(painter);
}

void LibraryView::paintShelves(QPainter& painter, const QRect& part) const {
  const ControlLook& look = lookOf(*this);
  for (qsizetype i = 0; i < layout_.headings.size(); ++i) {
    const int top = layout_.headings[i] - verticalOffset();
    const QRect box(CardLayout::kMargin, top, viewport()->width() - CardLayout::kMargin * 2, CardLayout::kHeading);
    if (!box.intersects(part)) continue;
    const TextLine name(shelves()[i].name, TextStyle::Title);
    const TextLine count(locale().toString(shelves()[i].items.size()), TextStyle::Title);
    const double baseline = top + CardLayout::kHeadingMiddle + name.capHeight() / 2;
    if (isRightToLeft()) {
      name.drawRight(painter, {box.right() + 1.0, baseline}, look.palette.primary);
      count.drawRight(painter, {box.right() + 1 - name.width() - kCountGap, baseline}, look.palette.tertiary);
    } else {
      name.draw(painter, {double(box.left()), baseline}, look.palette.primary);
      count.draw(painter, {box.left() + name.width() + kCountGap, baseline}, look.palette.tertiary);
    }
  }
}

void LibraryView::paintCard(QPainter& painter, int row) {
  const ControlLook& look = lookOf(*this);
  const QRect card = cardRect(row);
  const bool active = row == hovered_ || row == currentIndex().row();
  drawRounded(painter, card, kCardCorner, look.palette.panel.bodyTop);
  if (active) {
    if (row == hovered_) drawRounded(painter, card, kCardCorner, faded(look.palette.tile, 0.6));
    drawInnerLine(painter, card, kCardCorner, kActiveLine, look.accentColor());
  } else {
    drawInnerLine(painter, card, kCardCorner, hairline(painter), look.palette.tileEdge);
  }
  paintTileOf(painter, card, itemAt(row));
  paintMark(painter, row);
  paintName(painter, card, row);
}

/// On a ground of its own, since it may lie over the tile.
void LibraryView::paintMark(QPainter& painter, int row) const {
  const QRect box = markRect(row);
  if (box.isEmpty()) return;
  const ControlLook& look = lookOf(*this);
  drawRounded(painter, box, box.height() / 2.0, look.palette.panel.bodyTop);
  drawInnerLine(painter, box, box.height() / 2.0, hairline(painter), look.palette.tileEdge);
  drawTextIn(painter, box, markOf(row), TextStyle::Caption, look.palette.secondary, Qt::AlignHCenter);
}

void LibraryView::paintTileOf(QPainter& painter, const QRect& card, const LibraryItem& item) {
  const ControlLook& look = lookOf(*this);
  if (item.entry.widget) {
    const double width = PreviewTiles::widthOf(*item.entry.widget);
    const double left = card.left() + std::round((card.width() - width) / 2);
    tiles_.paint(painter, {left, double(card.top() + CardLayout::kPadding)}, *item.entry.widget);
    return;
  }
  const QRectF box(card.left() + CardLayout::kPadding, card.top() + CardLayout::kPadding,
                   card.width() - CardLayout::kPadding * 2, theme::kTileHeight);
  drawDashed(painter, box, theme::kTileCorner, look.palette.gapOutline);
  drawControlSymbol(painter, u"plus"_s, QRectF(box.center() - QPointF(kPlus, kPlus) / 2, QSizeF(kPlus, kPlus)),
                    look.palette.secondary);
}

void LibraryView::paintName(QPainter& painter, const QRect& card, int row) const {
  const ControlLook& look = lookOf(*this);
  const bool mirrored = isRightToLeft();
  const QRect line(card.left() + CardLayout::kPadding, card.bottom() + 1 - CardLayout::kNameRow,
                   card.width() - CardLayout::kPadding * 2, CardLayout::kNameRow);
  // `at` counts from the side on which reading begins.
  const auto place = [&](double at, double width) {
    return mirrored ? QRectF(line.right() + 1 - at - width, line.top(), width, line.height())
                    : QRectF(line.left() + at, line.top(), width, line.height());
  };
  double space = line.width();
  if (row == activeRow()) {
    space -= buttonRect(row).width() + kNameGap;
  } else if (isPlaced(row)) {
    const QColor green = look.palette.accentWord(Accent::Green);
    const TextLine word(LibraryWords::tr("On dock"), TextStyle::Caption);
    // In a window that is narrower than the card there may be space for the mark alone.
    const bool spelled = space - words_.value(row) - kNameGap >= word.width() + kMark + kMarkGap;
    const double wide = (spelled ? word.width() + kMarkGap : 0) + kMark;
    QRectF mark(0, 0, kMark, kMark);
    mark.moveCenter(place(line.width() - wide, kMark).center());
    drawControlSymbol(painter, u"checkmark"_s, mark, green);
    if (spelled)
      drawTextIn(painter, place(line.width() - word.width(), word.width() + 1), LibraryWords::tr("On dock"),
                 TextStyle::Caption, green, mirrored ? Qt::AlignRight : Qt::AlignLeft);
    space -= wide + kNameGap;
  }
  drawTextIn(painter, place(0, std::max(0.0, space)), itemAt(row).title(), TextStyle::Body, look.palette.primary,
             mirrored ? Qt::AlignRight : Qt::AlignLeft, Elide::Middle);
}

void LibraryView::paintThumb(QPainter& painter) const {
  const QScrollBar& bar = *verticalScrollBar();
  if (!scrolled_.isActive() || bar.maximum() <= bar.minimum()) return;
  const int span = bar.maximum() + bar.pageStep();
  const double height = viewport()->height();
  const double length = std::max<double>(theme::kScrollThumbLeast, height * bar.pageStep() / span);
  const double y = (height - length) * bar.value() / bar.maximum();
  constexpr double inset = 3;
  const double x = isRightToLeft() ? inset : viewport()->width() - theme::kScrollThumb - inset;
  drawRounded(painter, QRectF(x, y, theme::kScrollThumb, length), theme::kScrollThumb / 2.0,
              lookOf(*this).palette.tertiary);
}

}  // namespace tarnwick
