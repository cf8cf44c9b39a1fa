#include "commandbar/CommandRanking.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <vector>

#include "base/Text.h"

namespace tarnwick {
namespace {

bool answersAlways(CommandItem::Kind kind) {
  return kind == CommandItem::Kind::Calculation || kind == CommandItem::Kind::Web;
}

/// Which identities may have been used: of all others it need not be looked up.
class MaybeUsed {
 public:
  explicit MaybeUsed(const CommandUsage& usage) {
    for (auto record = usage.records.keyBegin(); record != usage.records.keyEnd(); ++record)
      bits_.set(ReadyRows::hashOf(*record) % kBits);
  }
  bool has(quint32 hash) const { return bits_.test(hash % kBits); }

 private:
  static constexpr quint32 kBits = 1 << 13;
  std::bitset<kBits> bits_;
};

/// UTF-16 in the order of the code points that it stands for.
char32_t codePointOrder(QChar unit) {
  constexpr char32_t kBehindAll = 0x10000;
  return unit.isSurrogate() ? unit.unicode() + kBehindAll : unit.unicode();
}

bool isBefore(const QString& left, const QString& right) {
  const auto [inLeft, inRight] = std::ranges::mismatch(left, right);
  if (inLeft == left.end() || inRight == right.end()) return inLeft == left.end() && inRight != right.end();
  return codePointOrder(*inLeft) < codePointOrder(*inRight);
}

}  // namespace

double CommandRanking::weight(CommandItem::Kind kind) {
  constexpr std::array kWeights = {1.0, 0.5, 0.8, 0.7, 3.0, 0.6, 0.1};
  return kWeights.at(static_cast<size_t>(kind));
}

QList<CommandItem> CommandRanking::rank(const QList<CommandItem>& items, const QString& query,
                                        const CommandUsage& usage, const QDateTime& now, qsizetype limit) {
  return rank(QList<ReadyRows>{ReadyRows(items)}, query, usage, now, limit);
}

QList<CommandItem> CommandRanking::rank(const QList<ReadyRows>& sources, const QString& query,
                                        const CommandUsage& usage, const QDateTime& now, qsizetype limit) {
  struct Scored {
    double score;
    const CommandItem* item;
    qsizetype source;
  };
  const auto isBetter = [](const Scored& left, const Scored& right) {
    if (left.score != right.score) return left.score > right.score;
    if (left.item->id != right.item->id) return isBefore(left.item->id, right.item->id);
    return left.source != right.source ? left.source < right.source : left.item < right.item;
  };
  const auto most = static_cast<size_t>(std::max<qsizetype>(limit, 0));
  const FoldedText folded(Text::withoutOuterBlanks(query));
  const ReadyQuery wanted(folded);
  const MaybeUsed used(usage);
  const double seconds = CommandUsage::seconds(now);
  std::vector<Scored> best;  // A heap whose first is the one to go next.
  for (qsizetype source = 0; most > 0 && source < sources.size(); ++source) {
    const ReadyRows& rows = sources[source];
    for (qsizetype i = 0; i < rows.size(); ++i) {
      const CommandItem& item = rows.at(i);
      auto score = rows.answer(i, wanted).score;
      if (!score && answersAlways(item.kind)) score = CommandMatch::kEqual;
      if (!score) continue;
      const double boost = used.has(rows.hashOf(i)) ? usage.boostOf(item.id, seconds) : 0;
      const Scored found{*score * weight(item.kind) + boost + item.sourceRank, &item, source};
      if (best.size() == most) {
        if (!isBetter(found, best.front())) continue;
        std::ranges::pop_heap(best, isBetter);
        best.pop_back();
      }
      best.push_back(found);
      std::ranges::push_heap(best, isBetter);
    }
  }
  std::ranges::sort(best, isBetter);
  QList<CommandItem> rows;
  rows.reserve(static_cast<qsizetype>(best.size()));
  for (const Scored& each : best) rows.append(*each.item);
  return rows;
}

QList<CommandMatch::Span> CommandRanking::emphasis(const CommandItem& item, const QString& query) {
  if (!item.matchText.isEmpty() || answersAlways(item.kind)) return {};
  const QString trimmed = Text::withoutOuterBlanks(query).toString();
  const FoldedText folded(trimmed);
  const auto answer = ReadyRows({item}).answer(0, ReadyQuery(folded));
  if (!answer.score || answer.isByOtherText) return {};
  return CommandMatch::spans(trimmed, item.title);
}

}  // namespace tarnwick
