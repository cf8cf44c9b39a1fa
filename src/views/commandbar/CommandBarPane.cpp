#include "views/commandbar/CommandBarPane.h"

#include <QAccessible>
#include <algorithm>
#include <cmath>
#include <utility>

#include "commandbar/CommandBarKeys.h"
#include "desktop/FrameClock.h"
#include "views/commandbar/CommandBarMeasures.h"
#include "views/commandbar/CommandBarWords.h"
#include "views/commandbar/CommandField.h"
#include "views/commandbar/CommandList.h"
#include "views/theme/Emoji.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

CommandBarPane::CommandBarPane(CommandBarRows& rows, Picture picture, FrameClocks& clocks, const QString& display)
    : GlassPane({.shadowScale = theme::kBarShadowScale, .padding = 0}),
      rows_(rows),
      picture_(std::move(picture)),
      field_(new CommandField(this)),
      list_(new CommandList(this)),
      growth_(this, clocks.make(display), [this](double height) {
        listHeight_ = height;
        layOut();
      }) {
  setAccessibleName(CommandBarWords::tr("Command bar"));
  setFocusProxy(field_);
  field_->setClock(clocks.make(display));
  list_->setPicture(
      [this](QPainter& painter, const QRectF& box, const CommandItem& item) { drawPicture(painter, box, item); });
  list_->hide();
  connect(field_, &QLineEdit::textChanged, this, &CommandBarPane::takeText);
  connect(field_, &QLineEdit::returnPressed, this, [this] { activate(rows_.selection(), false); });
  connect(field_, &CommandField::listKeyPressed, this, &CommandBarPane::keyPressed);
  connect(list_, &CommandList::opened, this, [this](int row) { activate(row, true); });
  connect(list_, &CommandList::revealRequested, this, &CommandBarPane::reveal);
  connect(&rows_, &CommandBarRows::changed, this, &CommandBarPane::takeRows);
  field_->setText(rows_.model().query());
  takeRows();
}

CommandBarPane::~CommandBarPane() = default;

void CommandBarPane::setReduceMotion(bool reduce) {
  reduceMotion_ = reduce;
  field_->setReduceMotion(reduce);
}

void CommandBarPane::setComposited(bool composited) { isComposited_ = composited; }

void CommandBarPane::setFindsNothing(bool findsNothing) {
  findsNothing_ = findsNothing;
  field_->setFindsNothing(findsNothing);
  takeRows();
}

void CommandBarPane::setSpaceForRows(int height) {
  list_->setSpace(height);
  takeRows();
}

void CommandBarPane::setGrowing(bool growing) {
  isGrowing_ = growing;
  takeRows();
}

QSize CommandBarPane::sizeHint() const {
  // The window has its new height before the glass grows into it, and keeps its old one until the glass has left it.
  const int list = static_cast<int>(std::ceil(std::max(listHeight_, growth_.spring().target)));
  return QSize(theme::kBarWidth, theme::kBarFieldHeight + list).grownBy(margins());
}

QRectF CommandBarPane::pane() const {
  const QRect whole = rect().marginsRemoved(margins());
  const double height = std::min<double>(whole.height(), theme::kBarFieldHeight + std::round(listHeight_));
  return {QPointF(whole.topLeft()), QSizeF(whole.width(), height)};
}

/// Several lines that were pasted are one, in the field and in what is found for it.
void CommandBarPane::takeText(const QString& text) {
  QString line = text;
  line.replace("\r\n"_L1, " "_L1);
  for (QChar& each : line)
    if (each.category() == QChar::Other_Control || each == QChar::LineSeparator || each == QChar::ParagraphSeparator)
      each = u' ';
  if (line == text) {
    list_->say({});
    rows_.model().setQuery(text);
    if (findsNothing_) takeRows();  // Without rows nothing else tells that something is written.
    return;
  }
  const qsizetype behind = text.size() - field_->cursorPosition();
  field_->setText(line);  // Comes back here.
  field_->setCursorPosition(static_cast<int>(std::max<qsizetype>(0, line.size() - behind)));
}

bool CommandBarPane::saysNothingIsOn() const {
  return findsNothing_ && rows_.rows().isEmpty() && !rows_.model().query().trimmed().isEmpty();
}

void CommandBarPane::takeRows() {
  list_->setRows(rows_.rows());
  list_->choose(rows_.rows().isEmpty() ? -1 : rows_.selection());
  list_->scrollTo(list_->currentIndex());  // Also where the same place has another row now.
  field_->setSearching(rows_.model().searchingFiles() || isGrowing_);
  const double height = saysNothingIsOn() ? theme::kBarListPadding * 2 + theme::kBarRowHeight : list_->wholeHeight();
  if (height != growth_.spring().target)
    growth_.animate(height, MotionStyle::Quick, isComposited_ && !reduceMotion_, reduceMotion_);
  layOut();
}

void CommandBarPane::layOut() {
  const QRect whole = pane().toRect();
  field_->setGeometry(whole.left(), whole.top(), whole.width(), theme::kBarFieldHeight);
  const int below = whole.height() - theme::kBarFieldHeight;
  list_->setVisible(below > 0 && !rows_.rows().isEmpty());
  list_->setGeometry(whole.left(), whole.top() + theme::kBarFieldHeight, whole.width(), std::max(0, below));
  update();
  if (const QSize wanted = sizeHint(); std::exchange(shownSize_, wanted) != wanted) Q_EMIT sizeChanged();
}

void CommandBarPane::resizeEvent(QResizeEvent* event) {
  GlassPane::resizeEvent(event);
  layOut();
}

void CommandBarPane::paintEvent(QPaintEvent* event) {
  GlassPane::paintEvent(event);
  if (!std::exchange(hasAppeared_, true)) Q_EMIT appeared();
  const QRectF whole = pane();
  if (whole.height() <= theme::kBarFieldHeight) return;
  QPainter painter(this);
  const double y = snappedY(painter, {whole.left(), whole.top() + theme::kBarFieldHeight});
  painter.fillRect(QRectF(whole.left(), y, whole.width(), hairline(painter)), look().palette.hairline);
  if (!saysNothingIsOn()) return;
  const QRectF line = whole.adjusted(theme::kBarTextLeft, theme::kBarFieldHeight, -theme::kBarSymbolLeft, 0);
  drawTextIn(painter, line, CommandBarWords::tr("Everything that the bar finds is switched off in Settings."),
             TextStyle::Body, look().palette.secondary, Qt::AlignHCenter);
}

void CommandBarPane::keyPressed(QKeyEvent* event) {
  // What is selected in the field is copied as in any other.
  const CommandBarKeys::Action action = CommandBarKeys::action(event->key(), event->modifiers());
  using enum CommandBarKeys::Action;
  if (action == None || action == Hide || (action == CopyPath && field_->hasSelectedText())) return;
  event->accept();
  const CommandItem* chosen = rows_.selected();
  switch (action) {
    case CopyPath:
      if (chosen && !chosen->path.isEmpty()) copyPath(*chosen);
      break;
    case Reveal:
      reveal(rows_.selection());
      break;
    case Next:
      rows_.moveSelection(1);
      break;
    case Previous:
      rows_.moveSelection(-1);
      break;
    case Hide:
    case None:
      break;
  }
}

/// The bar stays, so it says what it did.
void CommandBarPane::copyPath(const CommandItem& item) {
  rows_.model().copyPath(item);
  const QString note = CommandBarWords::tr("Path copied");
  list_->say(note);
  list_->setAccessibleDescription(note);
  QAccessibleEvent alert(list_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void CommandBarPane::activate(int row, bool isPressed) {
  if (rows_.activate(row, isPressed)) Q_EMIT done();
}

void CommandBarPane::reveal(int row) {
  if (rows_.reveal(row)) Q_EMIT done();
}

void CommandBarPane::drawPicture(QPainter& painter, const QRectF& box, const CommandItem& item) const {
  using Kind = CommandItem::Kind;
  if (item.kind == Kind::Symbol && !hasOwnColours(item.title)) {
    drawSign(painter, box, item.title);
    return;
  }
  if (item.kind == Kind::Symbol) {
    drawEmoji(painter, item.title, box.adjusted(2, 2, -2, -2));
    return;
  }
  if ((item.kind == Kind::App || item.kind == Kind::File) && !item.path.isEmpty()) {
    picture_(painter, box, item);
    return;
  }
  drawSymbolPicture(painter, box, item.symbol, item.kind == Kind::Calculation);
}

void CommandBarPane::drawSymbolPicture(QPainter& painter, const QRectF& box, const QString& symbol, bool strong) const {
  const Palette& palette = look().palette;
  drawRounded(painter, box, theme::kBarIconCorner, strong ? palette.accent(Accent::Blue) : palette.button);
  QRectF mark(0, 0, theme::kBarIconSymbol, theme::kBarIconSymbol);
  mark.moveCenter(box.center());
  drawControlSymbol(painter, symbol, mark, strong ? palette.inkOnAccent : palette.primary);
}

/// On a plate, in the middle by its ink: a dash and a quotation mark are seen where a letter would be.
void CommandBarPane::drawSign(QPainter& painter, const QRectF& box, const QString& sign) const {
  drawRounded(painter, box, theme::kBarIconCorner, look().palette.button);
  const QFont font = Typography::widgetFont(TextStyle::Gauge);
  const QRectF ink = QFontMetricsF(font).tightBoundingRect(sign);
  painter.setFont(font);
  painter.setPen(look().palette.primary);
  painter.drawText(box.center() - ink.center(), sign);
}

}  // namespace tarnwick
