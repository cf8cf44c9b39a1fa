#pragma once

#include <QString>
#include <functional>

class QVBoxLayout;

namespace tarnwick {

class ListRow;

/// Rows in a control that come and go.
struct FieldRows {
  /// A column for them, without space around or between.
  static QVBoxLayout* column();
  /// Takes all rows away, one of which may be the one that was clicked to come here.
  static void clear(QVBoxLayout& column);
  /// Gives a row a button at its end that takes it away.
  static void addRemoval(ListRow& row, const QString& label, std::function<void()> remove);
};

}  // namespace tarnwick
