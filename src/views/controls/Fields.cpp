#include "views/controls/Fields.h"

#include <QKeyEvent>
#include <QMimeData>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/ControlWords.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QPalette fieldPalette(const ControlLook& look) {
  QPalette palette;
  const QColor clear(Qt::transparent);
  QColor selection = look.accentColor();
  selection.setAlphaF(0.4F);
  palette.setColor(QPalette::Base, clear);
  palette.setColor(QPalette::Window, clear);
  palette.setColor(QPalette::Text, look.palette.primary);
  palette.setColor(QPalette::PlaceholderText, look.palette.tertiary);
  palette.setColor(QPalette::Highlight, selection);
  palette.setColor(QPalette::HighlightedText, look.palette.primary);
  return palette;
}

void paintGround(QPainter& painter, const QRectF& box, const ControlLook& look, bool focused, bool faulty) {
  painter.setRenderHint(QPainter::Antialiasing);
  drawRounded(painter, box, theme::kButtonCorner, look.palette.buttonPressed);
  if (faulty)
    drawInnerLine(painter, box, theme::kButtonCorner, theme::kFieldFocus, look.palette.accent(Accent::Red));
  else if (focused)
    drawInnerLine(painter, box, theme::kButtonCorner, theme::kFieldFocus, look.accentColor());
  else
    drawInnerLine(painter, box, theme::kButtonCorner, hairline(painter), look.palette.hairline);
}

}  // namespace

TextField::TextField(const QString& label, QWidget* parent) : QLineEdit(parent) {
  setAccessibleName(label);
  setFrame(false);
  setAttribute(Qt::WA_MacShowFocusRect, false);
  setFont(Typography::widgetFont(TextStyle::Body));
  setFixedHeight(theme::kFieldHeight);
  setSpaceAround();
  takeLook();
}

void TextField::setSymbol(const QString& symbol) {
  symbol_ = symbol;
  setSpaceAround();
}

void TextField::setFaulty(bool faulty) {
  faulty_ = faulty;
  update();
}

void TextField::setSpaceAtEnd(int space) {
  spaceAtEnd_ = space;
  setSpaceAround();
}

void TextField::setSpaceAround() {
  const int symbol = symbol_.isEmpty() ? 0 : theme::kIconButtonSymbol + theme::kButtonSymbolGap;
  // Qt keeps two pixels of its own beside the text.
  const int before = theme::kFieldPadding - 2 + symbol;
  const int after = theme::kFieldPadding - 2 + spaceAtEnd_;
  isRightToLeft() ? setTextMargins(after, 0, before, 0) : setTextMargins(before, 0, after, 0);
  // Whichever way what is written runs, it begins on the side of the symbol.
  if (!alignment().testFlag(Qt::AlignHCenter))
    setAlignment(Qt::AlignVCenter | (isRightToLeft() ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeading));
  update();
}

QSize TextField::sizeHint() const { return {160, theme::kFieldHeight}; }

void TextField::takeLook() {
  if (const QPalette wanted = fieldPalette(lookOf(*this)); palette() != wanted) setPalette(wanted);
}

void TextField::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::StyleChange) takeLook();
  if (event->type() == QEvent::LayoutDirectionChange) setSpaceAround();
}

void TextField::showEvent(QShowEvent* event) {
  takeLook();
  QLineEdit::showEvent(event);
}

void TextField::paintEvent(QPaintEvent* event) {
  const ControlLook& look = lookOf(*this);
  {
    QPainter painter(this);
    paintGround(painter, rect(), look, hasFocus(), faulty_);
    if (!symbol_.isEmpty()) {
      constexpr int size = theme::kIconButtonSymbol;
      const int x = isRightToLeft() ? width() - theme::kFieldPadding - size : theme::kFieldPadding;
      drawControlSymbol(painter, symbol_, QRectF(x, (height() - size) / 2.0, size, size), look.palette.secondary);
    }
  }
  QLineEdit::paintEvent(event);
}

SearchField::SearchField(const QString& label, QWidget* parent)
    : TextField(label, parent), clear_(new IconButton(u"xmark"_s, ControlWords::tr("Clear"), this)) {
  setSymbol(u"magnifyingglass"_s);
  setPlaceholderText(label);
  setSpaceAtEnd(theme::kControlHeight - theme::kFieldPadding);
  clear_->setGround(false);
  clear_->setTone(Tone::Secondary);
  clear_->setCursor(Qt::ArrowCursor);
  clear_->hide();
  connect(clear_, &QPushButton::clicked, this, &QLineEdit::clear);
  connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { clear_->setVisible(!text.isEmpty()); });
}

void SearchField::resizeEvent(QResizeEvent* event) {
  TextField::resizeEvent(event);
  const int inset = (height() - clear_->height()) / 2;
  clear_->move(isRightToLeft() ? inset : width() - clear_->width() - inset, inset);
}

void SearchField::forgetTyping() {
  if (!isUndoAvailable()) return;
  const int at = cursorPosition();
  setText(QString(text()));
  setCursorPosition(at);
}

void SearchField::keyPressEvent(QKeyEvent* event) {
  // The first Escape empties the field, the next one is for its parent.
  if (event->key() == Qt::Key_Escape && !text().isEmpty())
    clear();
  else if (event->matches(QKeySequence::Undo) && !isUndoAvailable())
    event->ignore();  // There may be something else to take back.
  else if (event->matches(QKeySequence::Redo) && !isRedoAvailable())
    event->ignore();
  else
    TextField::keyPressEvent(event);
}

TextArea::TextArea(const QString& label, QWidget* parent) : QPlainTextEdit(parent) {
  setAccessibleName(label);
  setFrameShape(QFrame::NoFrame);
  setFont(Typography::widgetFont(TextStyle::Body));
  setTabChangesFocus(true);
  document()->setDocumentMargin(theme::kFieldPadding);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  setMinimumHeight(theme::kFieldHeight * 3);
  takeLook();
}

void TextArea::takeLook() {
  if (const QPalette wanted = fieldPalette(lookOf(*this)); palette() != wanted) setPalette(wanted);
}

void TextArea::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::StyleChange) takeLook();
}

void TextArea::showEvent(QShowEvent* event) {
  takeLook();
  QPlainTextEdit::showEvent(event);
}

// The toolkit falls over an empty clipboard here.
void TextArea::insertFromMimeData(const QMimeData* source) {
  if (source && !source->formats().isEmpty()) QPlainTextEdit::insertFromMimeData(source);
}

void TextArea::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(viewport());
    paintGround(painter, viewport()->rect(), lookOf(*this), hasFocus(), false);
  }
  QPlainTextEdit::paintEvent(event);
}

}  // namespace tarnwick
