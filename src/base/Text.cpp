#include "base/Text.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarnwick {
namespace {

constexpr qsizetype kUsualLength = 32;

qsizetype skipDigits(QStringView text, qsizetype from) {
  while (from < text.size() && text[from] >= u'0' && text[from] <= u'9') ++from;
  return from;
}

qsizetype skipSign(QStringView text, qsizetype from) {
  return from < text.size() && (text[from] == u'+' || text[from] == u'-') ? from + 1 : from;
}

bool isDecimal(QStringView text) {
  const qsizetype whole = skipSign(text, 0);
  qsizetype at = skipDigits(text, whole);
  qsizetype digits = at - whole;
  if (at < text.size() && text[at] == u'.') {
    const qsizetype fraction = at + 1;
    at = skipDigits(text, fraction);
    digits += at - fraction;
  }
  if (digits == 0) return false;
  if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
    const qsizetype exponent = skipSign(text, at + 1);
    at = skipDigits(text, exponent);
    if (at == exponent) return false;
  }
  return at == text.size();
}

/// Units of one of the two letters that make a flag.
constexpr qsizetype kFlagHalf = 2;

bool isFlagHalf(QStringView text, qsizetype at) {
  if (at + kFlagHalf > text.size() || text[at] != QChar(u'\xD83C')) return false;
  return text[at + 1] >= QChar(u'\xDDE6') && text[at + 1] <= QChar(u'\xDDFF');
}

bool isBlank(QChar character) { return character == u'\t' || character.category() == QChar::Separator_Space; }

}  // namespace

QStringView Text::withoutOuterBlanks(QStringView text) {
  while (!text.isEmpty() && isBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && isBlank(text.back())) text.chop(1);
  return text;
}

QStringList Text::characters(const QString& text, qsizetype most) {
  QStringList characters;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  for (qsizetype begin = 0; characters.size() < most;) {
    const qsizetype end = characterEnd(finder, text, begin);
    if (end < 0) break;
    characters.append(text.sliced(begin, end - begin));
    begin = end;
  }
  return characters;
}

QStringView Text::beginning(QStringView text, qsizetype characters) {
  // One more, which could belong to the last.
  if (std::ranges::all_of(text.first(std::min(characters + 1, text.size())), standsAlone))
    return text.first(std::min(characters, text.size()));
  for (const qsizetype unitsEach : {4, 64}) {
    const QStringView part = text.first(std::min(characters * unitsEach, text.size()));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, part);
    qsizetype end = 0;
    for (qsizetype found = 0; found < characters && end < part.size(); ++found) end = characterEnd(finder, part, end);
    if (end < part.size() || part.size() == text.size() || unitsEach == 64) return text.first(end);
  }
  return text;
}

qsizetype Text::characterEnd(QTextBoundaryFinder& finder, QStringView text, qsizetype begin) {
  const qsizetype end = finder.toNextBoundary();
  // The toolkit tears flags behind an emoji apart.
  if (end != begin + kFlagHalf || !isFlagHalf(text, begin) || !isFlagHalf(text, end)) return end;
  finder.setPosition(end + kFlagHalf);
  return finder.position();
}

bool Text::standsAlone(QChar character) {
  // Latin, Greek, Cyrillic, usual punctuation, Kana, Han, and Hangul in syllables; all others may join.
  const char16_t unit = character.unicode();
  if (unit < 0x300) return unit != u'\r';
  if (unit < 0x530) return unit >= 0x370 && (unit < 0x483 || unit > 0x489);
  if (unit < 0x3041) return unit >= 0x2010 && unit <= 0x2027;
  return unit <= 0x3096 || (unit >= 0x30A1 && unit <= 0x30FA) || (unit >= 0x4E00 && unit <= 0x9FFF) ||
         (unit >= 0xAC00 && unit <= 0xD7A3);
}

std::optional<double> Text::number(QStringView text) {
  if (!isDecimal(text)) return std::nullopt;
  // The form is known to be good from here on, and all of it is ASCII.
  std::array<char, kUsualLength> digits;
  if (text.size() <= kUsualLength) {
    const QStringView unsignedText = text.startsWith(u'+') ? text.sliced(1) : text;
    const auto end = std::transform(unsignedText.begin(), unsignedText.end(), digits.begin(),
                                    [](QChar character) { return character.toLatin1(); });
    double value = 0;
    if (std::from_chars(digits.begin(), end, value).ec == std::errc()) return value;
  }
  // What is too small for a double becomes 0 here, what is too large becomes infinite.
  const double value = text.toDouble();
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

QString Text::folded(const QString& text) {
  if (std::ranges::all_of(text, [](QChar letter) { return letter.unicode() < 0x80; })) return text.toLower();
  QString plain;
  plain.reserve(text.size());
  // In pieces: each letter that is taken apart moves all that stands behind it.
  for (qsizetype at = 0; at < text.size();) {
    constexpr qsizetype most = 64;
    qsizetype size = std::min(most, text.size() - at);
    if (size > 1 && text[at + size - 1].isHighSurrogate()) --size;
    for (const QChar letter : text.sliced(at, size).normalized(QString::NormalizationForm_KD))
      if (!letter.isMark()) plain.append(letter == u'’' ? QChar(u'\'') : letter);
    at += size;
  }
  return plain.toCaseFolded();
}

}  // namespace tarnwick
