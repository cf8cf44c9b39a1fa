#include "views/controls/Rows.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <algorithm>

#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kRowSymbol = 18;
constexpr double kRowBarWidth = 56;
constexpr double kRowBarValue = 44;
constexpr double kCheck = 16;

void paintParting(QPainter& painter, const QWidget& row, const ControlLook& look, double inset = 0) {
  painter.fillRect(QRectF(inset, 0, row.width() - inset * 2, hairline(painter)), look.palette.hairline);
}

}  // namespace

ListRow::ListRow(const QString& title, QWidget* parent)
    : PaintedButton(title, parent), controls_(new QHBoxLayout(this)) {
  controls_->setContentsMargins(0, 0, 0, 0);
  controls_->setSpacing(theme::kButtonSymbolGap);
  controls_->addStretch();
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(theme::kRowHeight);
  setClickable(false);
}

void ListRow::setTitle(const QString& title) {
  setLabel(title);
  describe();
}

void ListRow::setCaption(const QString& caption) {
  caption_ = caption;
  setFixedHeight(caption.isEmpty() ? theme::kRowHeight : theme::kTallRowHeight);
  describe();
}

void ListRow::setSymbol(const QString& symbol, Tone tone) {
  symbol_ = symbol;
  symbolTone_ = tone;
  update();
}

void ListRow::setSymbolAccent(Accent accent) {
  symbolAccent_ = accent;
  update();
}

void ListRow::setPicture(const QPixmap& picture) {
  picture_ = picture;
  update();
}

void ListRow::setValue(const QString& value, Tone tone) {
  if (value == value_ && tone == valueTone_) return;
  value_ = value;
  valueTone_ = tone;
  describe();
}

void ListRow::setBar(double share) {
  bar_ = share;
  update();
}

void ListRow::addControl(QWidget* control) { controls_->addWidget(control, 0, Qt::AlignVCenter); }

void ListRow::setClickable(bool clickable) {
  clickable_ = clickable;
  setFocusPolicy(clickable ? Qt::TabFocus : Qt::NoFocus);
}

void ListRow::setParted(bool parted) {
  parted_ = parted;
  update();
}

void ListRow::describe() {
  QString words = caption_;
  if (!value_.isEmpty()) words = words.isEmpty() ? value_ : value_ + u", "_s + words;
  setAccessibleDescription(words);
  update();
}

QSize ListRow::sizeHint() const { return {200, caption_.isEmpty() ? theme::kRowHeight : theme::kTallRowHeight}; }

int ListRow::controlsWidth() const {
  int sum = 0;
  for (int i = 0; i < controls_->count(); ++i)
    if (const QWidget* control = controls_->itemAt(i)->widget(); control && !control->isHidden())
      sum += control->sizeHint().width() + theme::kRowGap;
  return sum;
}

void ListRow::mousePressEvent(QMouseEvent* event) {
  if (clickable_)
    PaintedButton::mousePressEvent(event);
  else
    event->ignore();
}

void ListRow::resizeEvent(QResizeEvent* event) {
  PaintedButton::resizeEvent(event);
  update();
}

void ListRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  prepare(painter);
  const ControlLook& look = this->look();
  if (parted_) paintParting(painter, *this, look, clickable_ ? theme::kRowOverhang : 0);
  const QRectF box = rect();
  if (clickable_ && (underMouse() || isDown()))
    drawRounded(painter, box, theme::kRowCorner, isDown() ? look.palette.buttonPressed : look.palette.tileHover);
  if (clickable_ && showsFocus()) drawFocusLine(painter, box, theme::kRowCorner, look);

  const Mirroring mirror(*this);
  double left = clickable_ ? theme::kRowOverhang : 0;
  const double middle = box.center().y();
  if (!picture_.isNull()) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF place(left, middle - theme::kRowPicture / 2.0, theme::kRowPicture, theme::kRowPicture);
    painter.drawPixmap(mirror(place), picture_, picture_.rect());
    left += theme::kRowPicture + theme::kRowGap;
  } else if (!symbol_.isEmpty()) {
    const bool isColored = symbolAccent_ && !look.palette.monochrome;
    drawControlSymbol(painter, symbol_, mirror(QRectF(left, middle - kRowSymbol / 2, kRowSymbol, kRowSymbol)),
                      isColored ? look.palette.accent(*symbolAccent_) : toneColor(look, symbolTone_));
    left += kRowSymbol + theme::kRowGap;
  }

  double right = width() - controlsWidth() - (clickable_ ? theme::kRowOverhang : 0);
  if (!value_.isEmpty()) {
    const TextLine value = TextLine(value_, TextStyle::Body).elided((right - left) * 0.6, Elide::End);
    mirror.end(painter, value, {right, middle + value.capHeight() / 2}, toneColor(look, valueTone_));
    // Bars of rows below each other begin at one place.
    right -= (bar_ >= 0 ? std::max(value.width(), kRowBarValue) : value.width()) + theme::kRowGap;
  }
  if (bar_ >= 0) {
    const QRectF track(right - kRowBarWidth, middle - theme::kBarHeight / 2.0, kRowBarWidth, theme::kBarHeight);
    drawRounded(painter, mirror(track), theme::kBarHeight / 2.0, look.palette.track);
    QRectF part = track;
    part.setWidth(std::max<double>(theme::kBarHeight, track.width() * std::min(1.0, bar_)));
    if (bar_ > 0) drawRounded(painter, mirror(part), theme::kBarHeight / 2.0, look.accentColor());
    right -= kRowBarWidth + theme::kRowGap;
  }

  const QRectF bounds(left, 0, std::max(0.0, right - left), box.height());
  if (caption_.isEmpty()) {
    drawTextIn(painter, mirror(bounds), label(), TextStyle::Body, look.palette.primary, mirror.reading());
    return;
  }
  const auto around = [&](double share) { return mirror(QRectF(left, box.height() * share - 10, bounds.width(), 20)); };
  drawTextIn(painter, around(theme::kTitleShare), label(), TextStyle::Body, look.palette.primary, mirror.reading());
  drawTextIn(painter, around(theme::kCaptionShare), caption_, TextStyle::Caption, look.palette.secondary,
             mirror.reading());
}

CheckRow::CheckRow(const QString& text, QWidget* parent) : QCheckBox(parent), label_(text) {
  installControlAccessibility();
  setText(QString(text).replace(u"&"_s, u"&&"_s));
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setFixedHeight(theme::kRowHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CheckRow::setStrikes(bool strikes) {
  strikes_ = strikes;
  update();
}

void CheckRow::setValue(const QString& value) {
  value_ = value;
  setAccessibleDescription(value);
  update();
}

void CheckRow::setParted(bool parted) {
  parted_ = parted;
  update();
}

QSize CheckRow::sizeHint() const { return {160, theme::kRowHeight}; }
QSize CheckRow::minimumSizeHint() const { return {80, theme::kRowHeight}; }

void CheckRow::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QCheckBox::focusInEvent(event);
}

void CheckRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(disabledOpacity(lookOf(*this)));
  const ControlLook& look = lookOf(*this);
  if (parted_) paintParting(painter, *this, look);
  const Mirroring mirror(*this);
  const QRectF place(1, (height() - kCheck) / 2, kCheck, kCheck);
  const QRectF disc = mirror(place);
  if (isChecked()) {
    drawRounded(painter, disc, kCheck / 2, look.accentColor());
    drawControlSymbol(painter, u"checkmark"_s, disc.adjusted(3, 3, -3, -3), look.palette.inkOnAccent);
  } else {
    drawInnerLine(painter, disc, kCheck / 2, 1.5, underMouse() ? look.palette.primary : look.palette.secondary);
  }
  if (hasFocus() && byKeyboard_) drawFocusLine(painter, rect(), theme::kRowCorner, look);
  const double left = place.right() + theme::kRowGap;
  const TextLine value = TextLine(value_, TextStyle::Caption).elided(width() / 2.0, Elide::End);
  mirror.end(painter, value, {static_cast<double>(width()), (height() + value.capHeight()) / 2},
             look.palette.secondary);
  const double end = width() - (value_.isEmpty() ? 0 : value.width() + theme::kRowGap);
  const QRectF bounds(left, 0, std::max(0.0, end - left), height());
  const bool done = isChecked() && strikes_;
  const QColor ink = done ? look.palette.tertiary : look.palette.primary;
  const TextLine line = TextLine(label_, TextStyle::Body).elided(bounds.width(), Elide::End);
  mirror.begin(painter, line, {left, bounds.center().y() + line.capHeight() / 2}, ink);
  if (done) painter.fillRect(mirror(QRectF(left, bounds.center().y(), line.width(), 1)), ink);
}

}  // namespace tarnwick
