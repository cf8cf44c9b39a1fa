#include "views/window/Cards.h"

#include <QAbstractSlider>
#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>
#include <algorithm>

#include "base/Text.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/controls/ScrollArea.h"
#include "views/theme/Glass.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A text in which no line ends within an option of a command: "--" at its end would seem to be a dash.
QString withWholeOptions(const QString& text) {
  static const QRegularExpression option(u"--[a-z][a-z-]*"_s);
  static const QString joined = QString(u'-') + QChar(0x2060);
  QString whole;
  qsizetype end = 0;
  for (const QRegularExpressionMatch& each : option.globalMatch(text)) {
    whole += QStringView(text).sliced(end, each.capturedStart() - end);
    whole += each.captured().replace(u'-', joined);
    end = each.capturedEnd();
  }
  whole += QStringView(text).sliced(end);
  return whole;
}

void say(TextLabel& label, const QString& text) {
  label.setText(withWholeOptions(text));
  label.setAccessibleName(text);
}

constexpr int kLeastWords = 200;  ///< What the words of a row have beside its control, at least.

/// What a control is never narrower than beside the words of its row.
int leastWidth(const QWidget& control) {
  return std::clamp(control.sizeHint().width(), control.minimumWidth(), control.maximumWidth());
}

TextLabel* makeHelp(const QString& text, Tone tone) {
  auto* label = makeSentence({}, TextStyle::Caption, tone);
  say(*label, text);
  // To show it before it is placed somewhere would make a window of it.
  if (text.isEmpty()) label->hide();
  return label;
}

}  // namespace

TextLabel* makeSentence(const QString& text, TextStyle style, Tone tone) {
  auto* label = new TextLabel(text, style, tone);
  label->setWordWrap(true);
  return label;
}

bool matchesSearch(const QString& said, const QString& search) {
  const QString text = Text::folded(said);
  const QStringList wanted = Text::folded(search).split(u' ', Qt::SkipEmptyParts);
  return !wanted.isEmpty() && std::ranges::all_of(wanted, [&](const QString& word) { return text.contains(word); });
}

// --- Rows -----------------------------------------------------------------------------------------------------------

FormRow::FormRow(const QString& label, QWidget* control, const QString& help, QWidget* parent)
    : FormRow(label, control, help, false, parent) {}

FormRow* FormRow::wide(const QString& label, QWidget* control, const QString& help) {
  return new FormRow(label, control, help, true, nullptr);
}

FormRow::FormRow(const QString& label, QWidget* control, const QString& help, bool isWide, QWidget* parent)
    : QWidget(parent),
      label_(label),
      help_(help),
      control_(control),
      title_(new TextLabel(label, TextStyle::Body)),
      helpLabel_(makeHelp(help, Tone::Secondary)),
      fault_(makeHelp({}, Tone::Fault)) {
  auto* words = new QVBoxLayout;
  words->setSpacing(theme::kCardHelpGap);
  title_->setBuddy(control);
  if (label.isEmpty()) title_->hide();
  words->addWidget(title_);
  words->addWidget(helpLabel_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(theme::kCardPadding, theme::kCardRowPadding, theme::kCardPadding, theme::kCardRowPadding);
  column->setSpacing(theme::kCardRowPadding);
  if (isWide) {
    column->addLayout(words);
    if (control) column->addWidget(control);
  } else {
    auto* row = new QHBoxLayout;
    row->setSpacing(theme::kCardPadding);
    words->insertStretch(0, 1);
    words->addStretch(1);
    row->addLayout(words, 1);
    if (control) {
      row->addWidget(control, 0, Qt::AlignVCenter);
      line_ = row;
    }
    column->addLayout(row, 1);
  }
  column->addWidget(fault_);
  setMinimumHeight(theme::kCardRow);
  if (!control) return;
  // A button says its own word, which is what a person sees of it.
  const auto* button = qobject_cast<QPushButton*>(control);
  const bool hasWords = (button && !button->text().isEmpty()) || qobject_cast<QLabel*>(control);
  if (control->accessibleName().isEmpty() && !hasWords) control->setAccessibleName(label);
  // What several of them are about is not in their words, and a screen reader goes from one to the next.
  for (QAbstractButton* each : control->findChildren<QAbstractButton*>())
    if (each->accessibleDescription().isEmpty() && !each->accessibleName().contains(label))
      each->setAccessibleDescription(label);
  if (control->accessibleDescription().isEmpty()) control->setAccessibleDescription(help);
  if (qobject_cast<QAbstractSlider*>(control)) control->installEventFilter(this);
}

QSize FormRow::minimumSizeHint() const {
  const QSize least = QWidget::minimumSizeHint();
  if (!line_) return least;
  const QMargins around = layout()->contentsMargins();
  return {std::max(kLeastWords, leastWidth(*control_)) + around.left() + around.right(), least.height()};
}

bool FormRow::event(QEvent* event) {
  const bool isKnown = QWidget::event(event);
  if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) fit();
  return isKnown;
}

/// Words of which only a few are left in a line, beside a wide control, read worse than above it.
void FormRow::fit() {
  if (!line_) return;
  const QMargins around = layout()->contentsMargins();
  const int beside = width() - around.left() - around.right() - theme::kCardPadding - leastWidth(*control_);
  const bool isNarrow = beside < std::max(title_->sizeHint().width(), helpLabel_->isHidden() ? 0 : kLeastWords);
  const auto direction = isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
  if (line_->direction() == direction) return;
  line_->setDirection(direction);
  line_->setSpacing(isNarrow ? theme::kCardRowPadding : theme::kCardPadding);
  line_->setAlignment(control_, isNarrow ? Qt::AlignLeading : Qt::AlignVCenter);
  updateGeometry();
}

bool FormRow::eventFilter(QObject* watched, QEvent* event) {
  // A wheel that passes over a page scrolls it and changes nothing on its way.
  if (watched == control_ && event->type() == QEvent::Wheel && !control_->hasFocus()) {
    event->ignore();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void FormRow::setLabel(const QString& label) {
  if (label == label_) return;
  if (control_ && control_->accessibleName() == label_) control_->setAccessibleName(label);
  label_ = label;
  title_->setText(label);
}

void FormRow::setHelp(const QString& help) {
  if (help == help_) return;
  help_ = help;
  if (unavailable_.isEmpty()) showHelp(help);
}

void FormRow::setUnavailable(const QString& why) {
  if (why == unavailable_) return;
  unavailable_ = why;
  showHelp(why.isEmpty() ? help_ : why);
  if (control_) control_->setEnabled(why.isEmpty());
}

void FormRow::showHelp(const QString& text) {
  say(*helpLabel_, text);
  helpLabel_->setVisible(!text.isEmpty());
  if (control_) control_->setAccessibleDescription(text);
}

void FormRow::setFault(const QString& sentence) {
  if (sentence == fault()) return;
  fault_->setText(sentence);
  fault_->setVisible(!sentence.isEmpty());
  if (!sentence.isEmpty()) {
    QAccessibleEvent alert(fault_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }
  if (control_) control_->setAccessibleDescription(sentence.isEmpty() ? help_ : sentence);
}

QString FormRow::fault() const { return fault_->text(); }

bool FormRow::matches(const QString& search) const { return matchesSearch(said(), search); }

// --- Cards ----------------------------------------------------------------------------------------------------------

Card::Card(const QString& heading, QWidget* parent)
    : QWidget(parent), column_(new QVBoxLayout), heading_(new TextLabel(heading, TextStyle::Title)) {
  if (heading.isEmpty()) heading_->hide();
  heading_->setContentsMargins(0, 0, 0, 0);
  setAccessibleName(heading);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, heading.isEmpty() ? 0 : theme::kCardRowPadding, 0, 0);
  all->setSpacing(theme::kRowGap);
  all->addWidget(heading_);
  column_->setContentsMargins(0, theme::kCardEnds, 0, theme::kCardEnds);
  column_->setSpacing(0);
  all->addLayout(column_);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void Card::add(QWidget* row) {
  column_->addWidget(row);
  row->installEventFilter(this);
  if (auto* form = qobject_cast<FormRow*>(row)) rows_ << form;
  // Rows that came before may all have gone.
  if (parentWidget() && isHidden() && !row->isHidden()) show();
}

FormRow* Card::addRow(const QString& label, QWidget* control, const QString& help) {
  auto* row = new FormRow(label, control, help);
  add(row);
  return row;
}

bool Card::hasVisibleRow() const {
  for (int i = 0; i < column_->count(); ++i)
    if (const QWidget* row = column_->itemAt(i)->widget(); row && !row->isHidden()) return true;
  return false;
}

bool Card::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
    setVisible(hasVisibleRow());
    updateGeometry();  // A row that comes or goes before the window is shown notifies only its card.
    update();
  }
  return QWidget::eventFilter(watched, event);
}

void Card::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Palette& palette = lookOf(*this).palette;
  const QRectF ground = column_->geometry();
  drawRounded(painter, ground, theme::kCardCorner, palette.panel.bodyTop);
  drawInnerLine(painter, ground, theme::kCardCorner, hairline(painter), palette.tileEdge);
  bool first = true;
  for (int i = 0; i < column_->count(); ++i) {
    const QWidget* row = column_->itemAt(i)->widget();
    if (!row || row->isHidden()) continue;
    if (!std::exchange(first, false))
      painter.fillRect(QRectF(ground.left() + theme::kCardPadding, row->y(), ground.width() - theme::kCardPadding * 2,
                              hairline(painter)),
                       palette.hairline);
  }
}

// --- Pages ----------------------------------------------------------------------------------------------------------

CardPage::CardPage(const QString& heading, QWidget* parent)
    : QWidget(parent), heading_(heading), area_(new ScrollArea), column_(new QVBoxLayout) {
  setAccessibleName(heading);
  auto* content = new QWidget;
  auto* all = new QVBoxLayout(content);
  all->setContentsMargins(theme::kBodyPadding, theme::kBodyTop, theme::kBodyPadding, theme::kBodyPadding);
  all->setSpacing(0);
  column_->setSpacing(theme::kCardGap);
  if (!heading.isEmpty()) {
    auto* title = new TextLabel(heading, TextStyle::Timer);
    title->setFixedHeight(theme::kWindowHeading);
    column_->addWidget(title);
  }
  all->addLayout(column_);
  all->addStretch(1);
  area_->setWidget(content);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(area_);
}

Card* CardPage::addCard(const QString& heading) {
  auto* card = new Card(heading);
  cards_ << card;
  column_->addWidget(card);
  return card;
}

void CardPage::addWidget(QWidget* widget) { column_->addWidget(widget); }

void CardPage::takeKeys() {
  area_->setFocusPolicy(Qt::StrongFocus);
  area_->setAccessibleName(heading_);
  setFocusProxy(area_);
}

void CardPage::reveal(QWidget* widget) {
  layout()->activate();
  area_->widget()->layout()->activate();
  area_->ensureWidgetVisible(widget, 0, theme::kCardRow);
}

}  // namespace tarnwick
