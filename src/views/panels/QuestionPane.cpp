#include "views/panels/QuestionPane.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"

namespace tarnwick {
namespace {

constexpr int kMostFacts = 230;  // Pixels; beyond that they scroll.

TextLabel* sentenceOf(const QString& text, TextStyle style, Tone tone) {
  auto* label = new TextLabel(text, style, tone);
  label->setWordWrap(true);
  return label;
}

/// That of all lines, broken where they are in the pane.
int heightOf(const TextArea& facts) {
  const QMargins padding(theme::kFieldPadding, theme::kFieldPadding, theme::kFieldPadding, theme::kFieldPadding);
  const QRect box = QRect(0, 0, theme::kPanelWidthWide - theme::kPanelPadding * 2, QWIDGETSIZE_MAX) - padding;
  const int flags = Qt::TextWrapAnywhere | Qt::AlignLeft;
  const int lines = facts.fontMetrics().boundingRect(box, flags, facts.toPlainText()).height();
  // Words that stay whole may need another line.
  return lines + facts.fontMetrics().lineSpacing() + theme::kFieldPadding * 2;
}

}  // namespace

QuestionPane::QuestionPane(const Question& question) : refuse_(new Button(question.refuse, Button::Role::Plain, this)) {
  setAccessibleName(question.title);
  setAccessibleDescription(question.sentence);
  frame().addWidget(sentenceOf(question.title, TextStyle::Title, Tone::Primary));
  frame().addSpacing(theme::kRowGap);
  frame().addWidget(sentenceOf(question.sentence, TextStyle::Body, Tone::Secondary));
  frame().addSpacing(theme::kRowGap);
  QWidget* facts = question.facts.isEmpty() ? nullptr : makeFacts(question);

  auto* accept = new Button(question.accept, Button::Role::Plain);
  auto* row = new QHBoxLayout;
  row->setSpacing(theme::kRowOverhang);
  row->addStretch();
  row->addWidget(accept);
  row->addWidget(refuse_);
  frame().addLayout(row);
  connect(accept, &QPushButton::clicked, this, [this] { Q_EMIT answered(true); });
  connect(refuse_, &QPushButton::clicked, this, [this] { Q_EMIT answered(false); });
  setTabOrder(refuse_, accept);
  if (facts) setTabOrder(accept, facts);
}

QWidget* QuestionPane::makeFacts(const Question& question) {
  // A command is one long word to a label, which would cut it; here it breaks anywhere.
  auto* facts = new TextArea(question.label);
  facts->setReadOnly(true);
  facts->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  facts->setPlainText(question.facts);
  facts->setFixedHeight(std::min(kMostFacts, heightOf(*facts)));
  frame().addWidget(facts);
  frame().addSpacing(theme::kRowGap);
  return facts;
}

QSize QuestionPane::sizeHint() const {
  const int width = theme::kPanelWidthWide + margins().left() + margins().right();
  return {width, layout()->totalHeightForWidth(width)};
}

void QuestionPane::showEvent(QShowEvent* event) {
  GlassPane::showEvent(event);
  refuse_->setFocus(Qt::OtherFocusReason);
}

void QuestionPane::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    Q_EMIT answered(false);
  else
    GlassPane::keyPressEvent(event);
}

}  // namespace tarnwick
