#include "views/controls/ControlLook.h"

#include <QApplication>
#include <QHash>

#include "views/theme/Glass.h"
#include "views/theme/SymbolTable.h"
#include "views/theme/Symbols.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QHash<QString, QPainterPath>& marks() {
  static const QHash<QString, QPainterPath> table = {
      {u"chevron.left"_s, parseSymbol("M12.4 4.6L7 10L12.4 15.4"_L1)},
      {u"chevron.right"_s, parseSymbol("M7.6 4.6L13 10L7.6 15.4"_L1)},
      {u"chevron.down"_s, parseSymbol("M4.8 7.6L10 12.8L15.2 7.6"_L1)},
      {u"chevron.up"_s, parseSymbol("M4.8 12.4L10 7.2L15.2 12.4"_L1)},
      {u"checkmark"_s, parseSymbol("M4.4 10.6L8.2 14.4L15.6 6"_L1)},
      {u"minus"_s, parseSymbol("M4 10H16"_L1)},
      {u"ellipsis"_s, parseSymbol("O4.4 10 0.7O10 10 0.7O15.6 10 0.7"_L1)},
      {u"arrow.clockwise"_s, parseSymbol("A10 10 6.4 60 285M16.4 3.4V7.2H12.6"_L1)},
      {u"play"_s, parseSymbol("M6.4 4.2V15.8L15.6 10Z"_L1)},
      {u"pause"_s, parseSymbol("M7.2 4.6V15.4M12.8 4.6V15.4"_L1)},
      {u"lock"_s, parseSymbol("R4.4 8.6 11.2 8.4 2.4M6.8 8.6V6.4C6.8 4.4 8.1 3 10 3C11.9 3 13.2 4.4 13.2 6.4V8.6"_L1)},
      {u"link"_s, parseSymbol("M8.2 11.8L11.8 8.2M9 6.2L11 4.2C12.4 2.8 14.5 2.8 15.8 4.2C17.2 5.5 17.2 7.6 15.8 9"
                              "L13.8 11M11 13.8L9 15.8C7.6 17.2 5.5 17.2 4.2 15.8C2.8 14.5 2.8 12.4 4.2 11L6.2 9"_L1)},
      {u"paintpalette"_s,
       parseSymbol("M10 2.8C5.9 2.8 2.8 5.9 2.8 10C2.8 14.1 5.9 17.2 10 17.2C11.2 17.2 11.9 16.3 11.6"
                   " 15.2C11.2 13.7 12 12.6 13.5 12.6H15C16.4 12.6 17.2 11.6 17.2 10C17.2 5.9 14.1"
                   " 2.8 10 2.8ZP6.6 10.6P7.6 6.9P11 5.6P14 7.8"_L1)},
      {u"dock.rectangle"_s, parseSymbol("R2.8 3.4 14.4 13.2 3M6 13.4H14"_L1)},
      {u"info.circle"_s, parseSymbol("O10 10 7.2M10 9.4V13.8P10 6.4"_L1)},
      {u"return"_s, parseSymbol("M16 5.4V9.2C16 10.9 15 12 13.2 12H4.6M8.2 8.2L4.4 12L8.2 15.8"_L1)},
      {u"doc"_s, parseSymbol("M11.6 2.8H6.6C5.2 2.8 4.2 3.8 4.2 5.2V14.8C4.2 16.2 5.2 17.2 6.6 17.2H13.4"
                             "C14.8 17.2 15.8 16.2 15.8 14.8V7ZM11.6 2.8V7H15.8"_L1)},
      {u"text.alignleft"_s, parseSymbol("M3.4 5H16.6M3.4 10H16.6M3.4 15H11.4"_L1)},
      {u"star"_s, parseSymbol("M10 3L12.1 7.4L17 8.1L13.5 11.5L14.3 16.4L10 14.1L5.7 16.4L6.5 11.5L3 8.1L7.9 7.4Z"_L1)},
  };
  return table;
}

}  // namespace

double disabledOpacity(const ControlLook& look) {
  return look.palette.highContrast ? theme::kDisabledContrastOpacity : theme::kDisabledOpacity;
}

QColor ControlLook::knob() const {
  QColor color = palette.light ? palette.panel.bodyTop : palette.primary;
  color.setAlpha(255);
  return color;
}

const ControlLook& lookOf(const QWidget& widget) {
  for (const QWidget* at = &widget; at; at = at->parentWidget())
    if (const auto* source = dynamic_cast<const LookSource*>(at)) return source->look();
  static const ControlLook plain;
  return plain;
}

std::unique_ptr<FrameClock> makeClockFor(const QWidget& widget) {
  for (const QWidget* at = &widget; at; at = at->parentWidget()) {
    const auto* source = dynamic_cast<const LookSource*>(at);
    if (source && source->clocks()) return source->clocks()->make({});
  }
  return nullptr;
}

void announceLook(QWidget& root) {
  for (QWidget* child : root.findChildren<QWidget*>()) {
    QEvent change(QEvent::StyleChange);
    QCoreApplication::sendEvent(child, &change);
  }
  root.update();
}

QColor toneColor(const ControlLook& look, Tone tone) {
  switch (tone) {
    case Tone::Primary:
      return look.palette.primary;
    case Tone::Secondary:
      return look.palette.secondary;
    case Tone::Tertiary:
      return look.palette.tertiary;
    case Tone::AccentWord:
      return look.palette.accentWord(look.accent);
    case Tone::Fault:
    case Tone::Fall:
      return look.palette.accentWord(Accent::Red);
    case Tone::Rise:
      return look.palette.accentWord(Accent::Green);
  }
  return {};
}

QFont buttonFont() {
  QFont font = Typography::widgetFont(TextStyle::Body);
  font.setWeight(QFont::DemiBold);
  return font;
}

void drawTextIn(QPainter& painter, const QRectF& box, const QString& text, TextStyle style, const QColor& color,
                Qt::Alignment alignment, Elide elide) {
  const TextLine line = TextLine(text, style).elided(box.width(), elide);
  const double baseline = box.center().y() + line.capHeight() / 2;
  if (alignment & Qt::AlignRight)
    line.drawRight(painter, {box.right(), baseline}, color);
  else if (alignment & Qt::AlignHCenter)
    line.drawCentred(painter, {box.center().x(), baseline}, color);
  else
    line.draw(painter, {box.left(), baseline}, color);
}

void drawFocusLine(QPainter& painter, const QRectF& rect, double corner, const ControlLook& look) {
  drawInnerLine(painter, rect, corner, theme::kFocusWidth, look.palette.accent(Accent::Blue));
}

void drawControlSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& color) {
  const auto mark = marks().constFind(name);
  if (Symbols::has(name) || mark == marks().constEnd()) {
    Symbols::draw(painter, name, box, color);
    return;
  }
  constexpr double grid = 20;
  const double scale = box.width() / grid;
  painter.save();
  painter.translate(box.topLeft());
  painter.scale(scale, scale);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, Symbols::strokeWidth(box.width()) / scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(*mark);
  painter.restore();
}

bool isKeyboardReason(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason ||
         reason == Qt::OtherFocusReason;
}

}  // namespace tarnwick
