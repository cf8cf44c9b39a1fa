#include "views/panels/ChipGrid.h"

#include <QGridLayout>

#include "views/controls/Buttons.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

ChipGrid::ChipGrid(const QString& label, int columns, QWidget* parent)
    : QWidget(parent), label_(label), columns_(columns), grid_(new QGridLayout(this)) {
  setAccessibleRole(*this, QAccessible::Grouping);
  setAccessibleName(label);
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setSpacing(theme::kButtonSymbolGap);
  for (int column = 0; column < columns; ++column) grid_->setColumnStretch(column, 1);
  connect(&group_, &QButtonGroup::idClicked, this, [this](int index) {
    setChosen(index);
    Q_EMIT chosen(index);
  });
  group_.setExclusive(false);  // One that is clicked again stays chosen, and none may be.
}

void ChipGrid::setWords(const QStringList& words) {
  if (words == words_) return;
  words_ = words;
  for (QAbstractButton* button : group_.buttons()) {
    group_.removeButton(button);
    // It may be the very button whose click led here.
    button->hide();
    button->deleteLater();
  }
  for (int i = 0; i < words.size(); ++i) {
    auto* chip = new Button(words[i]);
    chip->setCheckable(true);
    // Screen readers then know that it is one of several. The group alone says which are chosen.
    chip->setAutoExclusive(true);
    // Columns are alike unless a word is too long for that.
    constexpr int less = (theme::kButtonPadding - theme::kRowOverhang) * 2;
    chip->setMinimumWidth(chip->sizeHint().width() - less + 2);
    chip->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    chip->setAccessibleDescription(label_);
    group_.addButton(chip, i);
    grid_->addWidget(chip, i / columns_, i % columns_);
    chip->show();
  }
}

void ChipGrid::setChosen(int index) {
  for (QAbstractButton* button : group_.buttons()) button->setChecked(group_.id(button) == index);
}

}  // namespace tarnwick
