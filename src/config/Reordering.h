#pragma once

#include <QList>

namespace tarnwick {

/// Moving one element of a list.
struct Reordering {
  /// `values` with the element at `from` taken out and put back at index `to` of the shortened list. An index outside
  /// the list changes nothing.
  template <class T>
  static QList<T> reordered(QList<T> values, qsizetype from, qsizetype to) {
    const auto inside = [&](qsizetype index) { return index >= 0 && index < values.size(); };
    if (inside(from) && inside(to) && from != to) values.move(from, to);
    return values;
  }
};

}  // namespace tarnwick
