#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QListView>
#include <QString>
#include <algorithm>

#include "views/controls/ListAccessible.h"

namespace tarnwick {

/// The values of a list as a model. What a row says of each is for data() of those who derive from it.
template <class Item>
class ItemModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  QList<Item> items;

  void set(const QList<Item>& wanted) {
    beginResetModel();
    items = wanted;
    endResetModel();
  }

  /// The row of the value with that `id`; -1 when there is none.
  int rowOf(const QString& id) const {
    const auto at = std::ranges::find(items, id, &Item::id);
    return at == items.end() ? -1 : static_cast<int>(at - items.begin());
  }

  /// The value of a row; null where there is none.
  const Item* at(const QModelIndex& index) const {
    return index.isValid() && index.row() < items.size() ? &items[index.row()] : nullptr;
  }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(items.size());
  }
};

/// Makes a list of the toolkit's one whose rows are painted on what lies behind it, without frame or scroll bars of its
/// own, with one chosen row. `name` is for screen readers.
inline void becomePaintedList(QListView& view, const QString& name) {
  installListAccessibility();
  view.setAccessibleName(name);
  view.setFrameShape(QFrame::NoFrame);
  view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  view.setSelectionMode(QAbstractItemView::SingleSelection);
  view.setEditTriggers(QAbstractItemView::NoEditTriggers);
  view.setMouseTracking(true);
  view.setAutoFillBackground(false);
  view.viewport()->setAutoFillBackground(false);
}

}  // namespace tarnwick
