#include "base/LocalFigures.h"

namespace tarnwick {

namespace {

int digitOf(const QString& text, qsizetype at) {
  if (at < 0 || at >= text.size() || text[at] < u'0' || text[at] > u'9') return -1;
  return text[at].unicode() - u'0';
}

/// Some scripts have their digits beyond the characters that one QChar holds.
QString digitIn(const QString& zero, int digit) {
  const QList<uint> first = zero.toUcs4();
  if (first.isEmpty()) return QString::number(digit);
  const char32_t character = first.first() + static_cast<uint>(digit);
  return QString::fromUcs4(&character, 1);
}

}  // namespace

QString LocalFigures::of(const QString& ascii, const QLocale& locale) {
  const QString zero = locale.zeroDigit();
  QString text;
  for (qsizetype i = 0; i < ascii.size(); ++i) {
    const QChar character = ascii[i];
    const bool afterDigit = digitOf(ascii, i - 1) >= 0;
    const bool within = afterDigit && digitOf(ascii, i + 1) >= 0;
    if (const int digit = digitOf(ascii, i); digit >= 0)
      text += digitIn(zero, digit);
    else if (character == u'.' && within)
      text += locale.decimalPoint();
    else if (character == u',' && within)
      text += locale.groupSeparator();
    else if (character == u'%' && afterDigit)
      text += locale.percent();
    else
      text += character;
  }
  return text;
}

QString LocalFigures::number(qint64 value, const QLocale& locale) { return of(QString::number(value), locale); }

QString LocalFigures::percent(qint64 value, const QLocale& locale) { return of(QString::number(value) + u'%', locale); }

}  // namespace tarnwick
