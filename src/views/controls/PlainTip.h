#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <algorithm>

#include "base/ForeignText.h"

namespace tarnwick {

/// What a tip must be given to show a text that is not ours as it is written: one line of it, and no markup. Tips guess
/// whether a text is markup, and what guesses can be fooled.
inline QString plainTip(const QString& text) {
  const QString line = ForeignText::line(text);
  return line.isEmpty() ? line : QStringLiteral("<p>%1</p>").arg(line.toHtmlEscaped());
}
/// The same of a text whose lines mean something, as of one that was copied: they stay lines, the first few of them.
inline QString plainTipOfLines(const QString& text) {
  constexpr qsizetype most = 12;
  QStringList lines = text.split(u'\n');
  const bool hasMore = lines.size() > most;
  lines.resize(std::min(lines.size(), most));
  for (QString& line : lines) line = ForeignText::line(line).toHtmlEscaped();
  if (hasMore) lines.append(QStringLiteral("…"));
  return QStringLiteral("<p>%1</p>").arg(lines.join(QStringLiteral("<br>")));
}
/// What such a tip says, or one that was never markup.
inline QString wordsOfTip(const QString& tip) {
  if (!tip.startsWith(QLatin1String("<p>")) || !tip.endsWith(QLatin1String("</p>"))) return tip;
  QString words = tip.mid(3, tip.size() - 7);
  // The ampersand last, so that what was written as one of the others stays that.
  return words.replace(QLatin1String("<br>"), QLatin1String("\n"))
      .replace(QLatin1String("&lt;"), QLatin1String("<"))
      .replace(QLatin1String("&gt;"), QLatin1String(">"))
      .replace(QLatin1String("&quot;"), QLatin1String("\""))
      .replace(QLatin1String("&amp;"), QLatin1String("&"));
}
inline void setPlainTip(QWidget& widget, const QString& text) { widget.setToolTip(plainTip(text)); }

}  // namespace tarnwick
