#include "dock/rules/RowEnds.h"

#include <algorithm>

namespace tarnwick {

namespace {

/// Whether a held entry with so many others on the outer side of it is part of an end of `count` of them.
bool isWithin(qsizetype outside, qsizetype count, bool isApp) {
  return count > 0 && (outside < count || (outside == count && isApp));
}

}  // namespace

RowEnds RowEnds::of(const QList<Entry>& entries, double spacing, double inset, double glass,
                    std::optional<qsizetype> held) {
  QList<Entry> others = entries;
  if (held) others.removeAt(*held);
  const auto notApp = [](const Entry& entry) { return !entry.isApp; };
  const auto first = std::ranges::find_if(others, notApp);
  if (first == others.end()) return {};
  RowEnds ends;
  ends.leading = first - others.begin();
  ends.trailing = std::find_if(others.rbegin(), others.rend(), notApp) - others.rbegin();
  double taken = 0;
  for (qsizetype i = 0; i < others.size(); ++i)
    if (i < ends.leading || i >= others.size() - ends.trailing) taken += others[i].width + spacing;
  if (ends.leading > 0) taken += inset;
  if (ends.trailing > 0) taken += inset;
  if (taken * 3 > glass * 2) return {};
  if (!held) return ends;
  const bool isApp = entries[*held].isApp;
  if (isWithin(*held, ends.leading, isApp))
    ++ends.leading;
  else if (isWithin(others.size() - *held, ends.trailing, isApp))
    ++ends.trailing;
  return ends;
}

}  // namespace tarnwick
