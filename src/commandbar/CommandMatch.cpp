#include "commandbar/CommandMatch.h"

#include <QStringList>
#include <algorithm>

#include "base/Text.h"

namespace tarnwick {
namespace {

bool isSeparator(char16_t unit) { return unit == u' ' || unit == u'-' || unit == u'_' || unit == u'.'; }

bool isSeparator(QStringView character) { return character.size() == 1 && isSeparator(character.front().unicode()); }

/// The place of a word that begins with the query; -1 where none does.
qsizetype wordThatBegins(const FoldedText& query, const FoldedText& text) {
  for (qsizetype i = 0; i < query.size(); ++i)
    if (isSeparator(query.at(i))) return -1;
  const qsizetype last = text.size() - query.size();
  // From one place of its first character to the next: of most texts that is few.
  for (qsizetype i = text.find(query.at(0), 0); i >= 0 && i <= last; i = text.find(query.at(0), i + 1))
    if ((i == 0 || isSeparator(text.at(i - 1))) && text.has(query, i)) return i;
  return -1;
}

/// Calls `found` with the place of each of the query's characters, each the first one behind the one before.
template <class Found>
bool walk(const FoldedText& query, const FoldedText& text, Found found) {
  qsizetype place = -1;
  for (qsizetype i = 0; i < query.size(); ++i) {
    place = text.find(query.at(i), place + 1);
    if (place < 0) return false;
    found(place);
  }
  return true;
}

/// Of characters that stand in a text in this order, the first of them here and the last there.
double scattered(qsizetype characters, qsizetype size, qsizetype first, qsizetype last) {
  const qsizetype span = last - first + 1;
  const double density = static_cast<double>(characters) / static_cast<double>(std::max<qsizetype>(span, 1));
  const double earliness = 1 - static_cast<double>(first) / static_cast<double>(std::max<qsizetype>(size, 1));
  return density * 0.45 * 0.7 + 0.1 + earliness * 0.45 * 0.3;
}

std::optional<double> subsequence(const FoldedText& query, const FoldedText& text) {
  qsizetype first = -1;
  qsizetype last = -1;
  const auto note = [&](qsizetype place) {
    if (first < 0) first = place;
    last = place;
  };
  if (!walk(query, text, note)) return std::nullopt;
  return scattered(query.size(), text.size(), first, last);
}

/// The characters of the text that answer the query, by their places.
QList<qsizetype> placesOf(const FoldedText& query, const FoldedText& text) {
  QList<qsizetype> places;
  const qsizetype begin = text.has(query, 0) ? 0 : wordThatBegins(query, text);
  if (begin >= 0) {
    for (qsizetype i = 0; i < query.size(); ++i) places.append(begin + i);
    return places;
  }
  const bool isThere = walk(query, text, [&](qsizetype place) { places.append(place); });
  return isThere ? places : QList<qsizetype>();
}

}  // namespace

std::optional<double> CommandMatch::byWords(const FoldedText& query, const FoldedText& text) {
  if (query.isPlain() && text.isPlain()) return plainByWords(query.units(), text.units());
  if (query.isEmpty() || text.size() < query.size()) return std::nullopt;
  if (text.has(query, 0)) return text.size() == query.size() ? kEqual : kBegins;
  return wordThatBegins(query, text) >= 0 ? std::optional(kWordBegins) : std::nullopt;
}

std::optional<double> CommandMatch::score(const FoldedText& query, const FoldedText& text) {
  if (query.isEmpty()) return kNoQuery;
  if (query.isPlain() && text.isPlain()) return plainScore(query.units(), text.units());
  const auto words = byWords(query, text);
  return words ? words : subsequence(query, text);
}

std::optional<double> CommandMatch::plainByWords(std::u16string_view query, std::u16string_view text) {
  if (query.empty() || text.size() < query.size()) return std::nullopt;
  if (text.starts_with(query)) return text.size() == query.size() ? kEqual : kBegins;
  const size_t last = text.size() - query.size();
  for (size_t i = text.find(query.front(), 1); i <= last; i = text.find(query.front(), i + 1)) {
    if (!isSeparator(text[i - 1]) || text.compare(i, query.size(), query) != 0) continue;
    return std::ranges::none_of(query, [](char16_t unit) { return isSeparator(unit); }) ? std::optional(kWordBegins)
                                                                                        : std::nullopt;
  }
  return std::nullopt;
}

std::optional<double> CommandMatch::plainScore(std::u16string_view query, std::u16string_view text) {
  if (query.empty()) return kNoQuery;
  if (const auto words = plainByWords(query, text)) return words;
  size_t first = 0;
  size_t next = 0;
  for (size_t i = 0; i < query.size(); ++i) {
    const size_t place = text.find(query[i], next);
    if (place == std::u16string_view::npos) return std::nullopt;
    if (i == 0) first = place;
    next = place + 1;
  }
  return scattered(static_cast<qsizetype>(query.size()), static_cast<qsizetype>(text.size()),
                   static_cast<qsizetype>(first), static_cast<qsizetype>(next) - 1);
}

std::optional<double> CommandMatch::score(const QString& query, const QString& text) {
  return score(FoldedText(query), FoldedText(text));
}

QList<CommandMatch::Span> CommandMatch::spans(const QString& query, const QString& text) {
  const FoldedText folded(text);
  const QStringList characters = Text::characters(text);
  // Where folding changes the number of characters none can be pointed at.
  if (folded.size() != characters.size()) return {};
  QList<Span> spans;
  qsizetype place = 0;
  qsizetype begin = 0;
  for (const qsizetype wanted : placesOf(FoldedText(query), folded)) {
    for (; place < wanted; ++place) begin += characters[place].size();
    if (!spans.isEmpty() && spans.last().begin + spans.last().length == begin)
      spans.last().length += characters[wanted].size();
    else
      spans.append({begin, characters[wanted].size()});
  }
  return spans;
}

}  // namespace tarnwick
