#include "views/controls/WrappedText.h"

#include <algorithm>

namespace tarnwick {

WrappedText::WrappedText(const QString& text, TextStyle style, double width)
    : layout(text, Typography::widgetFont(style)) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    line.setPosition(QPointF(0, size.height()));
    size = QSizeF(std::max(size.width(), line.naturalTextWidth()), size.height() + line.height());
  }
  layout.endLayout();
}

void WrappedText::draw(QPainter& painter, const QPointF& place, bool fromTheRight) {
  for (int i = 0; i < layout.lineCount(); ++i) {
    QTextLine line = layout.lineAt(i);
    line.setPosition({fromTheRight ? size.width() - line.naturalTextWidth() : 0, line.y()});
  }
  layout.draw(&painter, place);
}

}  // namespace tarnwick
