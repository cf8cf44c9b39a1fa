#include "views/controls/ItemPainter.h"

#include <QLineEdit>
#include <QPainter>
#include <algorithm>

#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/controls/PaintedList.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kIconTop = 9;
constexpr double kIconTitle = 64;
constexpr double kPictureInset = 5;
constexpr double kPictureBelow = 29;  ///< What a picture leaves of its cell for the title.
constexpr double kPictureTitle = 13;  ///< The title's middle, above the end of the cell.
constexpr double kActionSymbol = 14;

}  // namespace

void ItemView::Painter::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(view_);
  const ViewItem& item = view_.items()[index.row()];
  const QRectF box = option.rect;
  const bool chosen =
      index == view_.currentIndex() && (view_.hasFocus() || (view_.field_ && !view_.field_->isHidden()));
  const bool under = option.state.testFlag(QStyle::State_MouseOver);
  if (chosen)
    drawRounded(*painter, box, theme::kRowCorner, look.palette.selection);
  else if (under)
    drawRounded(*painter, box, theme::kRowCorner, look.palette.tileHover);
  if (chosen && view_.hasFocus() && view_.byKeyboard_) drawFocusLine(*painter, box, theme::kRowCorner, look);
  view_.shape_ == Shape::Rows ? paintRow(*painter, box, item, look, index) : paintCell(*painter, box, item, look);
  if (view_.showsAction(index)) {
    const QColor ink = item.mark == view_.actionSymbol_ ? look.palette.accent(Accent::Yellow) : look.palette.primary;
    paintAction(*painter, QRectF(view_.actionRect(index)), view_.actionSymbol_, ink, look);
    if (view_.hasMenuButton())
      paintAction(*painter, QRectF(view_.menuRect(index)), u"ellipsis"_s, look.palette.primary, look);
  }
  painter->restore();
}

void ItemView::Painter::paintRow(QPainter& painter, const QRectF& box, const ViewItem& item, const ControlLook& look,
                                 const QModelIndex& index) const {
  const double middle = box.center().y();
  const Mirroring mirror(*view_.viewport());
  double left = box.left() + theme::kRowOverhang;
  if (view_.picture_) {
    const QRectF place(left, middle - theme::kRowPicture / 2.0, theme::kRowPicture, theme::kRowPicture);
    view_.picture_(painter, mirror(place), item);
    left += theme::kRowPicture + theme::kRowGap;
  }
  double right = box.right() - theme::kRowOverhang;
  if (view_.showsAction(index)) {
    const int buttons = view_.hasMenuButton() ? 2 : 1;
    right -= buttons * kActionSize + (buttons - 1) * kActionGap + theme::kButtonSymbolGap;
  } else if (!item.mark.isEmpty()) {
    const QRectF place(right - kActionSymbol, middle - kActionSymbol / 2, kActionSymbol, kActionSymbol);
    drawControlSymbol(painter, item.mark, mirror(place), look.palette.accent(Accent::Yellow));
    right -= kActionSymbol + theme::kRowGap;
  } else if (!item.value.isEmpty()) {
    const TextLine value = TextLine(item.value, TextStyle::Caption);
    mirror.end(painter, value, {right, middle + value.capHeight() / 2}, look.palette.secondary);
    right -= value.width() + theme::kRowGap;
  }
  const auto draw = [&](double share, const QString& text, TextStyle style, const QColor& ink) {
    const QRectF line(left, box.top() + box.height() * share - 10, std::max(0.0, right - left), 20);
    drawTextIn(painter, mirror(line), text, style, ink, mirror.reading(), view_.elide_);
  };
  draw(item.caption.isEmpty() ? 0.5 : theme::kTitleShare, item.title, TextStyle::Body, look.palette.primary);
  draw(theme::kCaptionShare, item.caption, TextStyle::Caption, look.palette.secondary);
}

void ItemView::Painter::paintCell(QPainter& painter, const QRectF& box, const ViewItem& item,
                                  const ControlLook& look) const {
  const bool icons = view_.shape_ == Shape::Icons;
  QRectF place(box.center().x() - kIconSize / 2, box.top() + kIconTop, kIconSize, kIconSize);
  if (!icons)
    place = QRectF(box.left() + kPictureInset, box.top() + kPictureInset, box.width() - kPictureInset * 2,
                   box.height() - kPictureInset - kPictureBelow);
  if (view_.picture_) view_.picture_(painter, place, item);
  const double y = icons ? box.top() + kIconTitle : box.bottom() - kPictureTitle;
  drawTextIn(painter, QRectF(box.left() + 4, y - 10, box.width() - 8, 20), item.title, TextStyle::Caption,
             look.palette.primary, Qt::AlignHCenter, view_.elide_);
}

void ItemView::Painter::paintAction(QPainter& painter, const QRectF& box, const QString& symbol, const QColor& ink,
                                    const ControlLook& look) const {
  drawRounded(painter, box, theme::kSegmentCorner, look.palette.panel.bodyTop);
  drawRounded(painter, box, theme::kSegmentCorner, look.palette.button);
  QRectF mark(0, 0, kActionSymbol, kActionSymbol);
  mark.moveCenter(box.center());
  drawControlSymbol(painter, symbol, mark, ink);
}

}  // namespace tarnwick
