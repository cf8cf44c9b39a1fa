#include "base/ForeignText.h"

#include <algorithm>

#include "base/Text.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// More than this is never looked at: a character that a user perceives has seldom more than a few units.
constexpr qsizetype kMostUnits = 16 * ForeignText::kMostCharacters;

/// Embeddings, overrides and isolates; the plain marks (U+200E, U+200F, U+061C) turn nothing but what is neutral.
bool turnsDirection(char16_t unit) { return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069); }

bool breaksLine(char16_t unit) {
  return unit == u'\n' || unit == u'\r' || unit == u'\t' || unit == 0x0B || unit == 0x0C || unit == 0x85 ||
         unit == 0x2028 || unit == 0x2029;
}

bool isControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

/// Each a character by itself, which does nothing to others: of most texts all are.
bool isPlain(QChar unit) {
  const char16_t code = unit.unicode();
  return (code >= 0x20 && code < 0x7F) || (code >= 0xA0 && code < 0x300);
}

}  // namespace

QString ForeignText::line(const QString& text) {
  // Lists of thousands come at once.
  if (text.size() <= kMostCharacters && !text.endsWith(u' ') && std::ranges::all_of(text, isPlain)) return text;
  QString clean;
  const QStringView seen = QStringView(text).left(kMostUnits);
  clean.reserve(seen.size());
  for (const QChar unit : seen) {
    const char16_t code = unit.unicode();
    if (breaksLine(code)) {
      if (!clean.endsWith(u' ')) clean += u' ';
    } else if (!isControl(code) && !turnsDirection(code)) {
      clean += unit;
    }
  }
  // The cut may have gone through a pair.
  if (clean.endsWith(u' ')) clean.chop(1);
  if (!clean.isEmpty() && clean.back().isHighSurrogate()) clean.chop(1);
  const QStringView beginning = Text::beginning(clean, kMostCharacters);
  if (beginning.size() == clean.size() && text.size() <= kMostUnits) return clean;
  return Text::beginning(clean, kMostCharacters - 1).toString() + u'…';
}

bool ForeignText::mayOpen(const QUrl& address) {
  const QString scheme = address.scheme();
  return address.isValid() && (scheme == "https"_L1 || scheme == "http"_L1) && !address.host().isEmpty() &&
         !address.authority().contains(u'@') && address.toEncoded().size() <= kLongestAddress;
}

}  // namespace tarnwick
