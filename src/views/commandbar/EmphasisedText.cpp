#include "views/commandbar/EmphasisedText.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <algorithm>

namespace tarnwick {

namespace {

void layOutLine(QTextLayout& layout, const EmphasisedText& line, const QString& text, const QColor& strongInk) {
  QFont font = Typography::widgetFont(line.style);
  layout.setText(text);
  layout.setFont(font);
  QList<QTextLayout::FormatRange> formats;
  font.setWeight(QFont::Bold);
  for (const CommandMatch::Span& range : line.strong) {
    const qsizetype end = std::min(range.begin + range.length, text.size());
    if (end <= range.begin) continue;
    QTextCharFormat format;
    format.setFont(font);
    format.setForeground(strongInk);
    formats.append({static_cast<int>(range.begin), static_cast<int>(end - range.begin), format});
  }
  if (line.quietFrom >= 0 && line.quietFrom < text.size()) {
    QTextCharFormat format;
    format.setForeground(line.quietInk);
    formats.append({static_cast<int>(line.quietFrom), static_cast<int>(text.size() - line.quietFrom), format});
  }
  layout.setFormats(formats);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
}

/// Where a text may end: behind each character that a reader sees as one.
QList<qsizetype> endsOf(const QString& text) {
  QList<qsizetype> ends{0};
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  while (finder.toNextBoundary() >= 0) ends.append(finder.position());
  return ends;
}

}  // namespace

double EmphasisedText::draw(QPainter& painter, const QRectF& box, const QColor& ink, const QColor& strongInk,
                            Qt::Alignment alignment) const {
  if (text.isEmpty() || box.width() <= 0) return 0;
  QTextLayout layout;
  layOutLine(layout, *this, text, strongInk);
  if (layout.lineAt(0).naturalTextWidth() > box.width()) {
    const QList<qsizetype> ends = endsOf(text);
    const auto shortened = [&](qsizetype end) { return text.first(end).trimmed() + QChar(u'…'); };
    // The most characters that fit.
    const auto fits = [&](qsizetype end) {
      layOutLine(layout, *this, shortened(end), strongInk);
      return layout.lineAt(0).naturalTextWidth() <= box.width();
    };
    const auto beyond = std::ranges::partition_point(ends, fits);
    layOutLine(layout, *this, shortened(beyond == ends.begin() ? 0 : *(beyond - 1)), strongInk);
  }
  const QTextLine line = layout.lineAt(0);
  const double width = line.naturalTextWidth();
  const QFontMetricsF metrics(layout.font());
  const double baseline = snappedY(painter, {box.left(), box.center().y() + metrics.capHeight() / 2});
  const double left = alignment.testFlag(Qt::AlignRight) ? box.right() - width : box.left();
  painter.setPen(ink);
  layout.draw(&painter, {left, baseline - line.ascent()});
  return width;
}

}  // namespace tarnwick
