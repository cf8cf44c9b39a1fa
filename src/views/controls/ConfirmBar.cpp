#include "views/controls/ConfirmBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <utility>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/ControlWords.h"
#include "views/controls/Labels.h"

namespace tarnwick {

ConfirmBar::ConfirmBar(QWidget* parent)
    : QWidget(parent),
      sentence_(new TextLabel({}, TextStyle::Body, Tone::Primary, this)),
      cancel_(new Button(ControlWords::tr("Cancel"), Button::Role::Plain, this)),
      act_(new Button({}, Button::Role::Danger, this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, theme::kPanelHeaderBelow, 0, 0);
  column->setSpacing(theme::kRowGap);
  sentence_->setWordWrap(true);
  column->addWidget(sentence_);
  auto* row = new QHBoxLayout;
  row->setSpacing(theme::kRowOverhang);
  row->addStretch();
  row->addWidget(cancel_);
  row->addWidget(act_);
  column->addLayout(row);
  connect(cancel_, &QPushButton::clicked, this, &ConfirmBar::leave);
  connect(act_, &QPushButton::clicked, this, [this] {
    const auto work = std::exchange(work_, {});
    leave();
    if (work) work();
  });
  hide();
}

void ConfirmBar::ask(const QString& sentence, const QString& button, std::function<void()> act) {
  sentence_->setText(sentence);
  act_->setLabel(button);
  work_ = std::move(act);
  if (!isAsking()) before_ = window()->focusWidget();
  show();
  cancel_->setFocus(Qt::OtherFocusReason);
}

/// Escape cancels the question, before it closes what contains it.
void ConfirmBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    leave();
  else
    QWidget::keyPressEvent(event);
}

void ConfirmBar::leave() {
  work_ = {};
  // Hidden with the keyboard, it would pass it on to whatever comes next.
  const bool hasKeyboard = isAncestorOf(window()->focusWidget());
  hide();
  if (hasKeyboard && before_ && before_->isVisible()) before_->setFocus(Qt::OtherFocusReason);
  Q_EMIT over();
}

}  // namespace tarnwick
