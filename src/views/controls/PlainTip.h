#pragma once

#include <QString>
#include <QWidget>

#include "base/ForeignText.h"

namespace tarnwick {

/// What a tip must be given to show a text that is not ours as it is written: one line of it, and no markup. Tips guess
/// whether a text is markup, and what guesses can be fooled.
inline QString plainTip(const QString& text) {
  const QString line = ForeignText::line(text);
  return line.isEmpty() ? line : QStringLiteral("<p>%1</p>").arg(line.toHtmlEscaped());
}
inline void setPlainTip(QWidget& widget, const QString& text) { widget.setToolTip(plainTip(text)); }

}  // namespace tarnwick
