#include "views/library/FieldRows.h"

#include <QVBoxLayout>

#include "views/controls/Rows.h"

namespace tarnwick {

QVBoxLayout* FieldRows::column() {
  auto* column = new QVBoxLayout;
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  return column;
}

void FieldRows::clear(QVBoxLayout& column) {
  while (const std::unique_ptr<QLayoutItem> item{column.takeAt(0)}) {
    if (!item->widget()) continue;
    item->widget()->hide();
    item->widget()->deleteLater();
  }
}

void FieldRows::addRemoval(ListRow& row, const QString& label, std::function<void()> remove) {
  auto* button = new IconButton(QStringLiteral("xmark"), label);
  button->setGround(false);
  button->setTone(Tone::Secondary);
  QObject::connect(button, &QPushButton::clicked, &row, [remove = std::move(remove)] { remove(); });
  row.addControl(button);
}

}  // namespace tarnwick
