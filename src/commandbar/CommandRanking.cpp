#include "commandbar/CommandRanking.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/Text.h"

namespace tarnwick {
namespace {

/// What another text of a row is worth beside its own: any word of a title is worth more than all of such a text.
constexpr double kOtherText = 0.9 * 0.75;

bool answersAlways(CommandItem::Kind kind) {
  return kind == CommandItem::Kind::Calculation || kind == CommandItem::Kind::Web;
}

/// Compares what rows say with one query.
class Matcher {
 public:
  explicit Matcher(const FoldedText& query) : query_(query) {}

  struct Answer {
    std::optional<double> score;
    bool isByOtherText = false;
  };

  Answer of(const CommandItem& item) {
    folded_.assign(item.text());
    Answer answer{CommandMatch::score(query_, folded_)};
    // What a word of the title brings in is beyond what another text could.
    if (item.otherTexts.isEmpty() || answer.score.value_or(0) >= CommandMatch::kWordBegins) return answer;
    for (const QString& text : item.otherTexts) {
      folded_.assign(text);
      const auto words = CommandMatch::byWords(query_, folded_);
      if (words && kOtherText * *words > answer.score.value_or(0)) answer = {kOtherText * *words, true};
    }
    return answer;
  }

 private:
  const FoldedText& query_;
  FoldedText folded_;
};

/// UTF-16 in the order of the code points that it stands for.
char32_t codePointOrder(QChar unit) {
  constexpr char32_t kBehindAll = 0x10000;
  return unit.isSurrogate() ? unit.unicode() + kBehindAll : unit.unicode();
}

bool isBefore(const QString& left, const QString& right) {
  return std::ranges::lexicographical_compare(left, right, {}, codePointOrder, codePointOrder);
}

}  // namespace

double CommandRanking::weight(CommandItem::Kind kind) {
  constexpr std::array kWeights = {1.0, 0.5, 0.8, 0.7, 3.0, 0.6, 0.1};
  return kWeights.at(static_cast<size_t>(kind));
}

QList<CommandItem> CommandRanking::rank(const QList<CommandItem>& items, const QString& query,
                                        const CommandUsage& usage, const QDateTime& now, qsizetype limit) {
  struct Scored {
    double score;
    qsizetype place;
  };
  const FoldedText folded(Text::withoutOuterBlanks(query));
  const double seconds = CommandUsage::seconds(now);
  Matcher matcher(folded);
  std::vector<Scored> scored;
  for (qsizetype i = 0; i < items.size(); ++i) {
    const CommandItem& item = items[i];
    auto score = matcher.of(item).score;
    if (!score && answersAlways(item.kind)) score = CommandMatch::kEqual;
    if (!score) continue;
    scored.push_back({*score * weight(item.kind) + usage.boostOf(item.id, seconds) + item.sourceRank, i});
  }

  const auto isBetter = [&](const Scored& left, const Scored& right) {
    if (left.score != right.score) return left.score > right.score;
    const QString& leftId = items[left.place].id;
    const QString& rightId = items[right.place].id;
    if (leftId != rightId) return isBefore(leftId, rightId);
    return left.place < right.place;
  };
  const size_t count = std::min(scored.size(), static_cast<size_t>(std::max<qsizetype>(limit, 0)));
  const auto end = scored.begin() + static_cast<std::ptrdiff_t>(count);
  std::partial_sort(scored.begin(), end, scored.end(), isBetter);

  QList<CommandItem> rows;
  rows.reserve(static_cast<qsizetype>(count));
  for (auto each = scored.begin(); each != end; ++each) rows.append(items[each->place]);
  return rows;
}

QList<CommandMatch::Span> CommandRanking::emphasis(const CommandItem& item, const QString& query) {
  if (!item.matchText.isEmpty() || answersAlways(item.kind)) return {};
  const QString trimmed = Text::withoutOuterBlanks(query).toString();
  const FoldedText folded(trimmed);
  const auto answer = Matcher(folded).of(item);
  if (!answer.score || answer.isByOtherText) return {};
  return CommandMatch::spans(trimmed, item.title);
}

}  // namespace tarnwick
