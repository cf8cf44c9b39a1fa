#include "commandbar/CommandUsage.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tarnwick {
namespace {

constexpr double kDay = 86'400;
constexpr double kHalfLifeDays = 7;
constexpr double kStrongest = 2;
constexpr double kReferenceSeconds = 978'307'200;  ///< From the epoch of Unix to 2001.

}  // namespace

double CommandUsage::seconds(const QDateTime& moment) {
  return static_cast<double>(moment.toMSecsSinceEpoch()) / 1000 - kReferenceSeconds;
}

void CommandUsage::record(const QString& id, const QDateTime& at) {
  Record& record = records[id];
  if (record.count < std::numeric_limits<int>::max()) ++record.count;
  record.last = seconds(at);
  if (records.size() > kMost) prune(seconds(at));
}

double CommandUsage::boost(const Record& record, double now) {
  if (record.count < 1) return 0;
  const double age = std::max(now - record.last, 0.0);
  const double decay = std::exp2(age / kDay / -kHalfLifeDays);
  const double strength = std::min(std::log2(static_cast<double>(record.count) + 1), kStrongest);
  return strength * decay;
}

double CommandUsage::boostOf(const QString& id, double now) const {
  const auto record = records.constFind(id);
  return record == records.constEnd() ? 0 : boost(*record, now);
}

void CommandUsage::prune(double now) {
  struct Ranked {
    double boost;
    QString id;
  };
  std::vector<Ranked> ranked;
  for (auto record = records.cbegin(); record != records.cend(); ++record)
    ranked.push_back({boost(*record, now), record.key()});
  std::ranges::sort(ranked, std::greater(), &Ranked::boost);
  const size_t kept = std::min(ranked.size(), static_cast<size_t>(kKept));
  for (auto each = ranked.begin() + static_cast<std::ptrdiff_t>(kept); each != ranked.end(); ++each)
    records.remove(each->id);
}

}  // namespace tarnwick
