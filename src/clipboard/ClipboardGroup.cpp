#include "clipboard/ClipboardGroup.h"

#include <QCoreApplication>
#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct ClipboardGroupWords {
  Q_DECLARE_TR_FUNCTIONS(Clipboard)
};

struct GroupRow {
  const char* label;
  QLatin1StringView symbol;
};

// In the order of the groups.
constexpr std::array<GroupRow, 7> kGroupRows{{
    {QT_TRANSLATE_NOOP("Clipboard", "Recent"), "clock"_L1},
    {QT_TRANSLATE_NOOP("Clipboard", "Favourites"), "star"_L1},
    {QT_TRANSLATE_NOOP("Clipboard", "Images"), "photo"_L1},
    {QT_TRANSLATE_NOOP("Clipboard", "Colours"), "paintpalette"_L1},
    {QT_TRANSLATE_NOOP("Clipboard", "Links"), "link"_L1},
    {QT_TRANSLATE_NOOP("Clipboard", "Text"), "text.alignleft"_L1},
    {QT_TRANSLATE_NOOP("Clipboard", "Files"), "doc"_L1},
}};

const GroupRow& rowOf(ClipboardGroup group) { return kGroupRows[static_cast<std::size_t>(group)]; }

bool holds(ClipboardGroup group, const ClipboardEntry& entry) {
  switch (group) {
    case ClipboardGroup::Recent:
      return true;
    case ClipboardGroup::Favourites:
      return entry.favourite;
    case ClipboardGroup::Images:
      return entry.kind == ClipboardEntry::Kind::Image;
    case ClipboardGroup::Colors:
      return entry.kind == ClipboardEntry::Kind::Color;
    case ClipboardGroup::Links:
      return entry.kind == ClipboardEntry::Kind::Link;
    case ClipboardGroup::Text:
      return entry.kind == ClipboardEntry::Kind::Text;
    case ClipboardGroup::Files:
      return entry.kind == ClipboardEntry::Kind::File;
  }
  return false;
}

}  // namespace

QString ClipboardGroups::label(ClipboardGroup group) { return ClipboardGroupWords::tr(rowOf(group).label); }

QString ClipboardGroups::symbol(ClipboardGroup group) { return rowOf(group).symbol; }

QList<ClipboardEntry> ClipboardGroups::filter(ClipboardGroup group, const QList<ClipboardEntry>& entries,
                                              qsizetype recentCount) {
  if (group == ClipboardGroup::Recent) return entries.first(std::min(recentCount, entries.size()));
  QList<ClipboardEntry> found;
  std::ranges::copy_if(entries, std::back_inserter(found), [=](const auto& entry) { return holds(group, entry); });
  return found;
}

QList<ClipboardGroup> ClipboardGroups::available(const QList<ClipboardEntry>& entries) {
  QList<ClipboardGroup> groups;
  for (const auto& row : RawValues<ClipboardGroup>::table) {
    const bool isFilled = std::ranges::any_of(entries, [&](const auto& entry) { return holds(row.value, entry); });
    if (isFilled) groups.append(row.value);
  }
  return groups;
}

}  // namespace tarnwick
