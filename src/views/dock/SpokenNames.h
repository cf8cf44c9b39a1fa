#pragma once

#include <QStringList>

class QWidget;

namespace tarnwick {

/// Keeps screen readers right about what the items of a widget are called: a reader knows items by their place, and
/// asks for a name once.
class SpokenNames final {
 public:
  /// Tells what differs from before.
  void tell(QWidget& widget, const QStringList& names);
  /// The keyboard came to an item.
  static void tellFocus(QWidget& widget, qsizetype item);

 private:
  QStringList spoken_;
};

}  // namespace tarnwick
