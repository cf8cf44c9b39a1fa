#pragma once

#include <QList>
#include <QVBoxLayout>
#include <QWidget>

namespace tarnwick {

/// Rows below each other that are made anew when what they show changes. The keyboard stays on the place that it was
/// on.
class RowList final : public QWidget {
 public:
  explicit RowList(QWidget* parent = nullptr);

  /// Takes `rows` in place of those that were there, which live on until the event is over: one of them may have been
  /// clicked to come here.
  void setRows(const QList<QWidget*>& rows);

 private:
  QVBoxLayout* column_;
  QList<QWidget*> rows_;
};

}  // namespace tarnwick
