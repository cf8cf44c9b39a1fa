#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "config/DockProfile.h"
#include "widgets/LibraryEntries.h"

namespace tarnwick {

/// One thing that the library offers.
struct LibraryItem {
  LibraryEntry entry;
  QString kind;   ///< Empty for a way to choose something.
  QString words;  ///< What a search looks into: name, group, kind and what else it is called, folded.

  const QString& title() const { return entry.title; }
};

/// A section of the library.
struct LibraryShelf {
  QString name;
  QString symbol;
  QList<LibraryItem> items;
};

/// What the library holds, and in which order.
struct LibraryShelves {
  /// Ready-made applications and folders, the groups of the catalog, the extra items.
  static QList<LibraryShelf> all(const QList<StandardApplication>& applications, const StandardFolders& folders);

  /// A few kinds that work on every computer, for users who do not know yet what to look for. It is listed before the
  /// others while everything is shown and nothing is searched.
  static LibraryShelf toTry();

  /// The shelf named `section`, or all of them where no shelf is, as far as their items hold every word of `search`,
  /// whatever its case and accents. Shelves without an item are left out.
  static QList<LibraryShelf> fitting(const QList<LibraryShelf>& shelves, const QString& section, const QString& search);

  /// Whether a profile holds what this item would add.
  static bool isPlaced(const LibraryItem& item, const DockProfile& profile);

  /// A widget of the item with an identity of its own; nothing for a way to choose something.
  static std::optional<DockWidget> freshWidget(const LibraryItem& item);
};

}  // namespace tarnwick
