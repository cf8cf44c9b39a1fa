#pragma once

#include <QWidget>

class QGridLayout;

namespace tarnwick {

/// Cards of one size in rows, as many beside each other as there is space for.
class CardGrid final : public QWidget {
 public:
  /// `margin` is around all of them, `spacing` between two.
  CardGrid(int mostColumns, int margin, int spacing);

  /// `alignment` is within the card's column; without one the columns are close together.
  void add(QWidget* card, Qt::Alignment alignment = {});

  QSize minimumSizeHint() const override { return {0, QWidget::minimumSizeHint().height()}; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QGridLayout* grid_;
  int mostColumns_;
  int columns_;
};

}  // namespace tarnwick
