#include "views/commandbar/EmphasisedText.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <algorithm>

namespace tarnwick {

namespace {

void layOutLine(QTextLayout& layout, const EmphasisedText& line, const QColor& strongInk) {
  const QString& text = line.text;
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

/// What is left of it with so many characters.
EmphasisedText shortened(const EmphasisedText& line, const QList<qsizetype>& ends, qsizetype characters) {
  const qsizetype behind = line.elide == Elide::Middle ? characters / 2 : 0;
  const qsizetype headEnd = ends[characters - behind];
  const qsizetype tailBegin = ends[ends.size() - 1 - behind];
  QString head = line.text.first(headEnd);
  if (behind == 0) head = head.trimmed();
  EmphasisedText made = line;
  made.text = head + QChar(u'…') + line.text.sliced(tailBegin);
  made.strong.clear();
  const qsizetype shift = tailBegin - head.size() - 1;
  for (const CommandMatch::Span& span : line.strong) {
    const qsizetype end = span.begin + span.length;
    if (span.begin < head.size()) made.strong.append({span.begin, std::min(end, head.size()) - span.begin});
    if (const qsizetype begin = std::max(span.begin, tailBegin); begin < end)
      made.strong.append({begin - shift, end - begin});
  }
  return made;
}

}  // namespace

double EmphasisedText::width() const {
  QTextLayout layout;
  layOutLine(layout, *this, {});
  return layout.lineAt(0).naturalTextWidth();
}

double EmphasisedText::draw(QPainter& painter, const QRectF& box, const QColor& ink, const QColor& strongInk,
                            Qt::Alignment alignment) const {
  if (text.isEmpty() || box.width() <= 0) return 0;
  QTextLayout layout;
  layOutLine(layout, *this, strongInk);
  if (layout.lineAt(0).naturalTextWidth() > box.width()) {
    const QList<qsizetype> ends = endsOf(text);
    // The most characters that fit.
    const auto fits = [&](qsizetype characters) {
      layOutLine(layout, shortened(*this, ends, characters), strongInk);
      return layout.lineAt(0).naturalTextWidth() <= box.width();
    };
    qsizetype fitting = 0;
    for (qsizetype beyond = ends.size(); beyond - fitting > 1;) {
      const qsizetype middle = (fitting + beyond) / 2;
      (fits(middle) ? fitting : beyond) = middle;
    }
    layOutLine(layout, shortened(*this, ends, fitting), strongInk);
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
