#pragma once

#include <QList>
#include <QString>
#include <array>

#include "base/RawValues.h"
#include "clipboard/ClipboardEntry.h"

namespace tarnwick {

/// The groups in which a panel shows the history, in the order of its tabs.
enum class ClipboardGroup { Recent, Favourites, Images, Colors, Links, Text, Files };

template <>
struct RawValues<ClipboardGroup> {
  static constexpr std::array<RawValue<ClipboardGroup>, 7> table{{
      {ClipboardGroup::Recent, "recent"},
      {ClipboardGroup::Favourites, "favourites"},
      {ClipboardGroup::Images, "images"},
      {ClipboardGroup::Colors, "colors"},
      {ClipboardGroup::Links, "links"},
      {ClipboardGroup::Text, "text"},
      {ClipboardGroup::Files, "files"},
  }};
};

struct ClipboardGroups {
  /// How many entries are recent.
  static constexpr qsizetype kRecentCount = 20;

  static QString label(ClipboardGroup group);
  /// The name of its picture.
  static QString symbol(ClipboardGroup group);
  /// The entries of a group, in their order.
  static QList<ClipboardEntry> filter(ClipboardGroup group, const QList<ClipboardEntry>& entries,
                                      qsizetype recentCount = kRecentCount);
  /// Those that are not empty, in the order of the tabs.
  static QList<ClipboardGroup> available(const QList<ClipboardEntry>& entries);
};

}  // namespace tarnwick
