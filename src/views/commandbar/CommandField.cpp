#include "views/commandbar/CommandField.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleHints>
#include <cmath>

#include "views/commandbar/CommandBarMeasures.h"
#include "views/commandbar/CommandBarWords.h"
#include "views/controls/ControlLook.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Without a caret of the toolkit's.
class CaretlessStyle final : public QProxyStyle {
 public:
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    return metric == PM_TextCursorWidth ? 0 : QProxyStyle::pixelMetric(metric, option, widget);
  }
};

/// Qt keeps two pixels of its own beside the text.
constexpr int kOwnSpace = 2;
/// The caret stands where text begins, and what is said in its place begins so far behind it.
constexpr int kBehindCaret = 6;
constexpr int kDegree = 16;  // Of QPainter.

}  // namespace

/// Turns for as long as it runs.
class CommandField::Ring final : public Animation {
 public:
  explicit Ring(CommandField& field) : field_(field) {}

  double turned() const { return turned_; }

  bool advance(double seconds) override {
    turned_ = std::fmod(turned_ + seconds / theme::kBarRingTurn, 1.0);
    field_.update(field_.ringPlace());
    return true;
  }
  void finish() override {}

 private:
  CommandField& field_;
  double turned_ = 0;
};

CommandField::CommandField(QWidget* parent)
    : QLineEdit(parent), style_(std::make_unique<CaretlessStyle>()), ring_(std::make_unique<Ring>(*this)) {
  setFindsNothing(false);
  setFrame(false);
  setAttribute(Qt::WA_MacShowFocusRect, false);
  setStyle(style_.get());
  setFont(Typography::widgetFont(TextStyle::CommandField));
  setFixedHeight(theme::kBarFieldHeight);
  setContextMenuPolicy(Qt::NoContextMenu);
  setSpaceAround();
  connect(&blinking_, &QTimer::timeout, this, &CommandField::blink);
  connect(this, &QLineEdit::cursorPositionChanged, this, &CommandField::showCaret);
  connect(this, &QLineEdit::textChanged, this, &CommandField::showCaret);
  connect(this, &QLineEdit::textChanged, this, &CommandField::setSpaceAround);
  connect(this, &QLineEdit::selectionChanged, this, qOverload<>(&QWidget::update));
}

CommandField::~CommandField() {
  animator_.stop(*ring_);
  setStyle(nullptr);
}

void CommandField::setClock(std::unique_ptr<FrameClock> clock) { animator_.setClock(std::move(clock)); }

void CommandField::setFindsNothing(bool findsNothing) {
  const QString words = findsNothing ? CommandBarWords::tr("Write a calculation")
                                     : CommandBarWords::tr("Search apps, files, widgets, clipboard…");
  setAccessibleName(words);
  setPlaceholderText(words);
}

void CommandField::setSearching(bool searching) {
  if (std::exchange(searching_, searching) == searching) return;
  if (searching && !reduceMotion_)
    animator_.run(*ring_);
  else
    animator_.stop(*ring_);
  update(ringPlace());
}

bool CommandField::event(QEvent* event) {
  // Tab would move the focus before keyPressEvent.
  if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (event->type() == QEvent::KeyPress) {
      key->ignore();
      Q_EMIT listKeyPressed(key);
      if (key->isAccepted()) return true;
      key->accept();
    }
  }
  return QLineEdit::event(event);
}

void CommandField::takeLook() {
  const ControlLook& look = lookOf(*this);
  QPalette wanted;
  const QColor clear(Qt::transparent);
  QColor selection = look.palette.accent(Accent::Blue);
  selection.setAlphaF(0.4F);
  wanted.setColor(QPalette::Base, clear);
  wanted.setColor(QPalette::Window, clear);
  wanted.setColor(QPalette::Text, look.palette.primary);
  wanted.setColor(QPalette::PlaceholderText, look.palette.tertiary);
  wanted.setColor(QPalette::Highlight, selection);
  wanted.setColor(QPalette::HighlightedText, look.palette.primary);
  if (palette() != wanted) setPalette(wanted);
}

void CommandField::setSpaceAround() {
  const int before = theme::kBarTextLeft - kOwnSpace + (text().isEmpty() ? kBehindCaret : 0);
  const int after = static_cast<int>(theme::kBarSymbolLeft * 2 + theme::kBarRing) - kOwnSpace;
  isRightToLeft() ? setTextMargins(after, 0, before, 0) : setTextMargins(before, 0, after, 0);
  // Whichever way what is written runs, it begins beside the symbol.
  setAlignment(Qt::AlignVCenter | (isRightToLeft() ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeading));
}

void CommandField::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::StyleChange) takeLook();
  if (event->type() == QEvent::LayoutDirectionChange) setSpaceAround();
}

void CommandField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  showCaret();
}

void CommandField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  blinking_.stop();
  update();
}

void CommandField::showEvent(QShowEvent* event) {
  takeLook();
  QLineEdit::showEvent(event);
}

void CommandField::hideEvent(QHideEvent* event) {
  QLineEdit::hideEvent(event);
  blinking_.stop();
}

void CommandField::showCaret() {
  caretShows_ = true;
  const int period = QGuiApplication::styleHints()->cursorFlashTime();
  if (hasFocus() && period > 1)
    blinking_.start(period / 2);
  else
    blinking_.stop();
  update();
}

void CommandField::blink() {
  caretShows_ = !caretShows_;
  update(cursorRect().adjusted(-4 - kBehindCaret, -4, 4 + kBehindCaret, 4));
}

QRect CommandField::ringPlace() const {
  const Mirroring mirror(*this);
  const double side = theme::kBarRing + theme::kBarRingStroke;
  const QRectF place(width() - theme::kBarSymbolLeft - theme::kBarRing - theme::kBarRingStroke / 2,
                     (height() - side) / 2, side, side);
  return mirror(place).toAlignedRect();
}

void CommandField::paintEvent(QPaintEvent* event) {
  const ControlLook& look = lookOf(*this);
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Mirroring mirror(*this);
  const QRectF glass(theme::kBarSymbolLeft, (height() - theme::kBarSymbol) / 2, theme::kBarSymbol, theme::kBarSymbol);
  drawControlSymbol(painter, u"magnifyingglass"_s, mirror(glass), look.palette.secondary);
  if (hasFocus() && caretShows_ && !isReadOnly()) {
    const QRect at = cursorRect();
    // Beside the letter before it, not on its edge.
    const double outward = theme::kBarCaretWidth / 2 - (text().isEmpty() ? kBehindCaret : 0);
    const double beside = isRightToLeft() ? -outward : outward;
    const QRectF caret(at.center().x() - theme::kBarCaretWidth / 2 + 0.5 + beside,
                       (height() - theme::kBarCaretHeight) / 2, theme::kBarCaretWidth, theme::kBarCaretHeight);
    drawRounded(painter, caret, theme::kBarCaretWidth / 2, look.palette.accent(Accent::Blue));
  }
  if (!searching_) return;
  QRectF ring(0, 0, theme::kBarRing - theme::kBarRingStroke, theme::kBarRing - theme::kBarRingStroke);
  ring.moveCenter(QRectF(ringPlace()).center());
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(look.palette.track, theme::kBarRingStroke));
  painter.drawEllipse(ring);
  painter.setPen(QPen(look.palette.accent(Accent::Blue), theme::kBarRingStroke, Qt::SolidLine, Qt::RoundCap));
  const int begin = static_cast<int>(std::lround((0.25 - ring_->turned()) * 360 * kDegree));
  painter.drawArc(ring, begin, -100 * kDegree);
}

}  // namespace tarnwick
