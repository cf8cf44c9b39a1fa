#include "views/window/CardGrid.h"

#include <QGridLayout>
#include <algorithm>
#include <utility>

namespace tarnwick {

CardGrid::CardGrid(int mostColumns, int margin, int spacing)
    : grid_(new QGridLayout(this)), mostColumns_(mostColumns), columns_(mostColumns) {
  grid_->setContentsMargins(margin, margin, margin, margin);
  grid_->setSpacing(spacing);
}

void CardGrid::add(QWidget* card, Qt::Alignment alignment) {
  const int index = grid_->count();
  if (!alignment) grid_->setColumnStretch(mostColumns_, 1);
  grid_->addWidget(card, index / columns_, index % columns_, alignment);
}

void CardGrid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  int widest = 1;
  QList<std::pair<QWidget*, Qt::Alignment>> cards;
  for (int index = 0; index < grid_->count(); ++index) {
    QLayoutItem* item = grid_->itemAt(index);
    cards.append({item->widget(), item->alignment()});
    widest = std::max(widest, item->sizeHint().width());
  }
  const int space = width() - 2 * grid_->contentsMargins().left() + grid_->spacing();
  const int columns = std::clamp(space / (widest + grid_->spacing()), 1, mostColumns_);
  if (std::exchange(columns_, columns) == columns) return;
  for (const auto& [card, alignment] : cards) grid_->removeWidget(card);
  for (const auto& [card, alignment] : cards) add(card, alignment);
}

}  // namespace tarnwick
