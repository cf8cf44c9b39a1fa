#pragma once

#include <QStyledItemDelegate>

#include "views/controls/ItemView.h"

namespace tarnwick {

/// How the items of a view look: a row, an icon with its name or a picture with its title, and the buttons at its side.
class ItemView::Painter final : public QStyledItemDelegate {
 public:
  static constexpr double kIconSize = 40;    ///< Of an item that is dragged, too.
  static constexpr double kActionSize = 24;  ///< Of a button at the side of an item.
  static constexpr int kActionGap = 4;       ///< Between an action and the menu beside it.

  explicit Painter(ItemView& view) : QStyledItemDelegate(&view), view_(view) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return view_.cell(); }
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void paintRow(QPainter& painter, const QRectF& box, const ViewItem& item, const ControlLook& look,
                const QModelIndex& index) const;
  void paintCell(QPainter& painter, const QRectF& box, const ViewItem& item, const ControlLook& look) const;
  void paintAction(QPainter& painter, const QRectF& box, const QString& symbol, const QColor& ink,
                   const ControlLook& look) const;

  ItemView& view_;
};

}  // namespace tarnwick
