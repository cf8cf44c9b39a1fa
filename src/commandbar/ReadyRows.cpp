#include "commandbar/ReadyRows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "commandbar/CommandMatch.h"

namespace tarnwick {

/// Where a text is among the units, and what is known of it before it is read.
struct ReadyRows::Text {
  quint64 characters = 0;
  quint32 begin = 0;
  quint32 size = 0;
  bool isPlain = true;  ///< Each unit is a character.
};

struct ReadyRows::Row {
  Text text;
  quint32 hash = 0;
  quint32 firstOther = 0;
  quint32 otherCount = 0;
};

namespace {

/// What another text of a row is worth beside its own: any word of a title is worth more than all of such a text.
constexpr double kOtherText = 0.9 * 0.75;

constexpr quint64 characterBit(char16_t unit) {
  constexpr int kLetters = 26;
  constexpr int kDigits = 10;
  constexpr int kRest = 64 - kLetters - kDigits;
  if (unit >= u'a' && unit <= u'z') return 1ULL << (unit - u'a');
  if (unit >= u'0' && unit <= u'9') return 1ULL << (kLetters + unit - u'0');
  return 1ULL << (kLetters + kDigits + unit % kRest);
}

constexpr auto kUsualBits = [] {
  std::array<quint64, 0x80> bits{};
  for (char16_t unit = 0; unit < bits.size(); ++unit) bits[unit] = characterBit(unit);
  return bits;
}();

quint64 charactersIn(std::u16string_view units) {
  quint64 characters = 0;
  for (const char16_t unit : units) characters |= unit < kUsualBits.size() ? kUsualBits[unit] : characterBit(unit);
  return characters;
}

}  // namespace

ReadyQuery::ReadyQuery(const FoldedText& query) : text_(query), characters_(charactersIn(query.units())) {}

ReadyRows::ReadyRows(const QList<CommandItem>& items) {
  if (items.isEmpty()) return;
  auto made = std::make_shared<Rows>();
  made->items = items;
  made->rows.reserve(static_cast<size_t>(items.size()));
  FoldedText folded;
  const auto add = [&](const QString& text) {
    folded.assign(text);
    const std::u16string_view units = folded.units();
    const Text added{.characters = charactersIn(units),
                     .begin = static_cast<quint32>(made->units.size()),
                     .size = static_cast<quint32>(units.size()),
                     .isPlain = folded.isPlain()};
    made->units += units;
    return added;
  };
  for (const CommandItem& item : items) {
    Row row{.text = add(item.text()),
            .hash = hashOf(item.id),
            .firstOther = static_cast<quint32>(made->others.size()),
            .otherCount = static_cast<quint32>(item.otherTexts.size())};
    for (const QString& text : item.otherTexts) made->others.push_back(add(text));
    made->rows.push_back(row);
  }
  rows_ = std::move(made);
}

quint32 ReadyRows::hashOf(qsizetype place) const { return rows_->rows[static_cast<size_t>(place)].hash; }

// The toolkit's is made to withstand chosen texts, which takes longer than all that is compared.
quint32 ReadyRows::hashOf(QStringView identity) {
  constexpr quint64 kOdd = 0x9E3779B97F4A7C15;
  quint64 hash = static_cast<quint64>(identity.size());
  const auto add = [&](quint64 units) {
    hash = (hash ^ units) * kOdd;
    hash ^= hash >> 32;
  };
  qsizetype at = 0;
  quint64 units = 0;
  constexpr qsizetype kAtOnce = sizeof units / sizeof(QChar);
  for (; at + kAtOnce <= identity.size(); at += kAtOnce) {
    std::memcpy(&units, identity.utf16() + at, sizeof units);
    add(units);
  }
  for (; at < identity.size(); ++at) add(identity[at].unicode());
  return static_cast<quint32>(hash);
}

std::optional<double> ReadyRows::score(const Text& text, const QString& whole, const ReadyQuery& query,
                                       bool byWords) const {
  if ((text.characters & query.characters()) != query.characters()) return std::nullopt;
  if (text.isPlain && query.text().isPlain()) {
    const std::u16string_view units = std::u16string_view(rows_->units).substr(text.begin, text.size);
    return byWords ? CommandMatch::plainByWords(query.text().units(), units)
                   : CommandMatch::plainScore(query.text().units(), units);
  }
  const FoldedText folded(whole);
  return byWords ? CommandMatch::byWords(query.text(), folded) : CommandMatch::score(query.text(), folded);
}

ReadyRows::Answer ReadyRows::answer(qsizetype place, const ReadyQuery& query) const {
  const Row& row = rows_->rows[static_cast<size_t>(place)];
  const CommandItem& item = rows_->items[place];
  Answer answer{score(row.text, item.text(), query, false)};
  // What a word of the title brings in is beyond what another text could.
  if (row.otherCount == 0 || answer.score.value_or(0) >= CommandMatch::kWordBegins) return answer;
  for (quint32 i = 0; i < row.otherCount; ++i) {
    const auto words = score(rows_->others[row.firstOther + i], item.otherTexts[i], query, true);
    if (words && kOtherText * *words > answer.score.value_or(0)) answer = {kOtherText * *words, true};
  }
  return answer;
}

}  // namespace tarnwick
