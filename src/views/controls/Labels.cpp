#include "views/controls/Labels.h"

#include <QEvent>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kUnitGap = 2;
constexpr int kWarning = 16;
constexpr qsizetype kHeights = 8;  // Kept of a sentence.

int lineHeight(TextStyle style) {
  const TextLine line(u"Ag"_s, style);
  return static_cast<int>(std::ceil(line.ascent() + line.descent()));
}

/// The narrowest middle of a box in which a text takes no more lines, so that its last line is no lonely word.
QRect balanced(const QFontMetrics& metrics, const QRect& box, int flags, const QString& text) {
  const auto sizeIn = [&](int width) { return metrics.boundingRect(QRect(0, 0, width, 0), flags, text).size(); };
  const int height = sizeIn(box.width()).height();
  if (height < metrics.height() * 2) return box;
  int enough = box.width();
  for (int narrow = enough / 2; enough - narrow > 1;) {
    const int between = (enough + narrow) / 2;
    const QSize size = sizeIn(between);
    (size.height() > height || size.width() > between ? narrow : enough) = between;
  }
  return {box.left() + (box.width() - enough) / 2, box.top(), enough, box.height()};
}

}  // namespace

TextLabel::TextLabel(const QString& text, TextStyle style, Tone tone, QWidget* parent)
    : QLabel(text, parent), style_(style), tone_(tone) {
  setTextFormat(Qt::PlainText);
  setFont(Typography::widgetFont(style));
  takeLook();
}

void TextLabel::setStyle(TextStyle style) {
  style_ = style;
  setFont(Typography::widgetFont(style));
}

void TextLabel::setTone(Tone tone) {
  tone_ = tone;
  takeLook();
  update();
}

void TextLabel::setElide(Elide elide) {
  elide_ = elide;
  update();
}

QSize TextLabel::sizeHint() const {
  if (wordWrap()) return QLabel::sizeHint();
  return {static_cast<int>(std::ceil(TextLine(text(), style_).width())), lineHeight(style_)};
}

QSize TextLabel::minimumSizeHint() const {
  return wordWrap() ? QLabel::minimumSizeHint() : QSize(0, lineHeight(style_));
}

/// Layouts ask for the same few widths over and over, and each answer has the whole sentence shaped anew.
int TextLabel::heightForWidth(int width) const {
  if (heights_.text != text()) heights_ = {text(), {}};
  for (const auto& [known, height] : heights_.known)
    if (known == width) return height;
  const int height = QLabel::heightForWidth(width);
  if (heights_.known.size() == kHeights) heights_.known.clear();
  heights_.known.append({width, height});
  return height;
}

bool TextLabel::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::ContentsRectChange:
    case QEvent::ScreenChangeInternal:
      heights_.known.clear();
      break;
    default:
      break;
  }
  return QLabel::event(event);
}

void TextLabel::takeLook() {
  QPalette wanted = palette();
  wanted.setColor(QPalette::WindowText, toneColor(lookOf(*this), tone_));
  if (palette() != wanted) setPalette(wanted);
}

void TextLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::StyleChange) takeLook();
}

void TextLabel::showEvent(QShowEvent* event) {
  takeLook();
  QLabel::showEvent(event);
}

void TextLabel::paintEvent(QPaintEvent* event) {
  const bool isCentred = alignment().testFlag(Qt::AlignHCenter);
  const bool isPlain = !isCentred || textInteractionFlags() != Qt::LinksAccessibleByMouse;
  if (wordWrap() && isPlain && !isRightToLeft() && !text().isRightToLeft()) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  if (wordWrap()) {
    // Left to itself a text that is written the other way would stand apart from what it belongs to.
    painter.setPen(toneColor(lookOf(*this), tone_));
    runAsWritten(painter, text());
    const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), alignment());
    const int flags = static_cast<int>(side | Qt::AlignAbsolute) | Qt::TextWordWrap;
    painter.drawText(isCentred ? balanced(painter.fontMetrics(), contentsRect(), flags, text()) : contentsRect(), flags,
                     text());
    return;
  }
  drawTextIn(painter, rect(), text(), style_, toneColor(lookOf(*this), tone_),
             QStyle::visualAlignment(layoutDirection(), alignment()), elide_);
}

SectionLabel::SectionLabel(const QString& text, const QString& trailing, QWidget* parent)
    : QWidget(parent), text_(text), trailing_(trailing) {
  setAccessibleName(text);
  setFixedHeight(sizeHint().height());
}

void SectionLabel::setText(const QString& text) {
  text_ = text;
  setAccessibleName(text);
  update();
}

void SectionLabel::setTrailing(const QString& text, Tone tone) {
  if (text == trailing_ && tone == trailingTone_) return;
  trailing_ = text;
  trailingTone_ = tone;
  update();
}

QSize SectionLabel::sizeHint() const {
  return {80, theme::kSectionAbove + lineHeight(TextStyle::TabLabel) + theme::kSectionBelow};
}

void SectionLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const ControlLook& look = lookOf(*this);
  const QRectF box = QRectF(rect()).adjusted(0, theme::kSectionAbove, 0, -theme::kSectionBelow);
  const double end = trailing_.isEmpty() ? 0 : TextLine(trailing_, TextStyle::TabLabel).width() + theme::kRowGap;
  const Mirroring mirror(*this);
  drawTextIn(painter, mirror(box.adjusted(0, 0, -end, 0)), text_, TextStyle::TabLabel, look.palette.secondary,
             mirror.reading());
  drawTextIn(painter, mirror(box), trailing_, TextStyle::TabLabel, toneColor(look, trailingTone_), mirror.ending());
}

WarningMark::WarningMark(QWidget* parent) : QWidget(parent) { setFixedSize(kWarning, kWarning); }

void WarningMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  drawControlSymbol(painter, u"exclamationmark.circle"_s, rect(), lookOf(*this).palette.accent(Accent::Orange));
}

FigureView::FigureView(QWidget* parent) : QWidget(parent) { setFixedHeight(theme::kPanelFigureHeight); }

void FigureView::setFigure(const QString& figure, const QString& unit) {
  if (figure == figure_ && unit == unit_) return;
  figure_ = figure;
  unit_ = unit;
  describe();
}

void FigureView::setLines(const QString& first, const QString& second) {
  if (first == first_ && second == second_) return;
  first_ = first;
  second_ = second;
  describe();
}

void FigureView::describe() {
  QString words = figure_ + unit_;
  for (const QString& line : {first_, second_})
    if (!line.isEmpty()) words += u", "_s + line;
  setAccessibleName(words);
  update();
}

QSize FigureView::sizeHint() const { return {200, theme::kPanelFigureHeight}; }

void FigureView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const ControlLook& look = lookOf(*this);
  const auto draw = [&](const TextLine& line, double x, double baseline, double factor, const QColor& color) {
    painter.save();
    painter.translate(x, snappedY(painter, {x, baseline}));
    painter.scale(factor, factor);
    line.draw(painter, {}, color);
    painter.restore();
  };
  const TextLine figure(figure_, TextStyle::Display);
  const double share = theme::kPanelFigure / figure.pixelSize();
  const double baseline = height() / 2.0 + figure.capHeight() * share / 2;
  const double bearing = figure.leftBearing() * share;  // So that the ink, not the cell, begins at the edge.
  const TextLine unit = TextLine::unit(unit_, TextStyle::Display);
  const double unitShare = theme::kPanelFigureUnit / unit.pixelSize();
  const double unitWidth = unit_.isEmpty() ? 0 : kUnitGap + unit.width() * unitShare;
  const double end = figure.width() * share - bearing + unitWidth;
  const Mirroring mirror(*this);
  const double start = mirror.isMirrored() ? width() - end : 0;
  // A unit follows its figure in its own reading direction.
  const bool before = mirror.isMirrored() && unit_.isRightToLeft();
  draw(figure, start - bearing + (before ? unitWidth : 0), baseline, share, look.palette.primary);
  if (!unit_.isEmpty())
    draw(unit, before ? start : start + end - unitWidth + kUnitGap, baseline, unitShare, look.palette.secondary);
  const double left = end + theme::kRowGap;
  const QRectF side(left, 0, std::max(0.0, width() - left), height());
  constexpr double step = 15;
  const double middle = height() / 2.0 + (second_.isEmpty() ? 0 : -step / 2);
  const auto line = [&](const QString& text, double y) {
    drawTextIn(painter, mirror(QRectF(side.left(), y - step / 2, side.width(), step)), text, TextStyle::Caption,
               look.palette.secondary, mirror.ending());
  };
  line(first_, middle);
  if (!second_.isEmpty()) line(second_, middle + step);
}

}  // namespace tarnwick
