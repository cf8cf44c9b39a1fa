#include "views/controls/WholeText.h"

#include <cmath>

namespace tarnwick {

WholeText::WholeText(TextStyle style, Tone tone) : style_(style), tone_(tone) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void WholeText::setText(const QString& text) {
  setVisible(!text.isEmpty());
  if (text == text_) return;
  text_ = text;
  setAccessibleName(text);
  updateGeometry();
  update();
}

void WholeText::setPart(const QString& part, Tone tone) {
  if (part == part_ && tone == partTone_) return;
  part_ = part;
  partTone_ = tone;
  update();
}

QString WholeText::laidText() const {
  // A layout of one paragraph breaks at this mark alone.
  return QString(text_).replace(u'\n', QChar::LineSeparator);
}

int WholeText::heightForWidth(int width) const {
  QTextLayout layout(laidText(), Typography::widgetFont(style_));
  return static_cast<int>(std::ceil(lay(layout, width)));
}

void WholeText::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(toneColor(lookOf(*this), tone_));
  QTextLayout layout(laidText(), Typography::widgetFont(style_));
  if (const qsizetype at = text_.indexOf(part_); at >= 0 && !part_.isEmpty()) {
    QTextLayout::FormatRange range{static_cast<int>(at), static_cast<int>(part_.size()), {}};
    range.format.setForeground(toneColor(lookOf(*this), partTone_));
    layout.setFormats({range});
  }
  lay(layout, width());
  layout.draw(&painter, {});
}

double WholeText::lay(QTextLayout& layout, int width) const {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  // A text runs as it is written, but stands at the side at which people begin to read.
  option.setTextDirection(text_.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  option.setAlignment((isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute);
  layout.setTextOption(option);
  double height = 0;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    line.setPosition({0, height});
    height += line.height();
  }
  layout.endLayout();
  return height;
}

}  // namespace tarnwick
