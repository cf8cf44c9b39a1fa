#include "widgets/FigureWords.h"

#include <QRegularExpression>

#include "base/LocalFigures.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// More than a unit is a sentence.
constexpr qsizetype kLongestUnit = 10;
/// A number is at the beginning; a text is not searched for it.
constexpr qsizetype kLongestFigure = 80;

const QRegularExpression& pattern() {
  static const QRegularExpression expression(
      // A sign, a currency before or behind it, digits in groups, a power of ten; then what follows.
      u"^([~≈<>±]?[-+−–]?(?:\\p{L}{0,3}\\p{Sc}[ \\x{A0}]?|[A-Z]{3}[ \\x{A0}])?[-+−–]?"
      "\\p{Nd}+(?:[.,:'’٬٫ \\x{A0}\\x{202F}]\\p{Nd}+)*(?:[eE][-+]?\\p{Nd}+)?)([ \\x{A0}\\x{202F}]?)(.*)$"_s,
      QRegularExpression::UseUnicodePropertiesOption);
  return expression;
}

bool isMinus(QChar character) { return character == u'-' || character == u'−' || character == u'–'; }

/// Whether what follows a number is a unit and no part of a longer thing.
bool isUnit(const QString& rest, bool isApart) {
  if (rest.size() > kLongestUnit) return false;
  const QChar first = rest.front();
  if (isApart) return !first.isPunct() || first == u'%' || first == u'/' || first == u'٪';
  if (first.isLetter()) return !rest.contains(u' ');
  return first == u'%' || first == u'٪' || first == u'/' || first.isSymbol() || first == u'\'' || first == u'"';
}

}  // namespace

FigureWords FigureWords::of(const QString& text) {
  const QString line = text.trimmed();
  const FigureWords whole{line, {}, false};
  if (line.size() > kLongestFigure) return whole;
  const QRegularExpressionMatch match = pattern().match(line);
  if (!match.hasMatch()) return whole;
  FigureWords words{match.captured(1), match.captured(3), true};
  if (!words.unit.isEmpty() && !isUnit(words.unit, !match.captured(2).isEmpty())) return whole;
  words.figure = withMinus(words.figure);
  return words;
}

QString FigureWords::withMinus(QString text) {
  if (text.size() > 1 && text[0] == u'-' && !text[1].isLetter()) text[0] = u'−';
  return text;
}

QString FigureWords::localised(const QString& text, const QLocale& locale) {
  if (!of(text).isNumber) return text;
  // Groups and decimals in somebody else's way, a version, an address of a computer.
  static const QRegularExpression ambiguous(u"[0-9][.'’][0-9]+[.,'’][0-9]|[0-9],(?![0-9]{3}(?![0-9]))[0-9]"_s);
  return withMinus(ambiguous.match(text).hasMatch() ? text : LocalFigures::of(text, locale));
}

int FigureWords::signOf(const QString& text) {
  const QString line = text.trimmed();
  if (line.size() < 2 || !line[1].isDigit()) return 0;
  return line[0] == u'+' ? 1 : isMinus(line[0]) ? -1 : 0;
}

}  // namespace tarnwick
