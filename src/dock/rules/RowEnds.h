#pragma once

#include <QList>
#include <optional>

namespace tarnwick {

/// Which entries of a row that is wider than its glass stay where they are while what lies between them scrolls: the
/// unbroken run of apps that begins the row, and the one that ends it.
struct RowEnds {
  /// One place of the row, or several that are only ever together.
  struct Entry {
    bool isApp = false;
    double width = 0;
  };

  qsizetype leading = 0;   ///< How many entries stay at the beginning.
  qsizetype trailing = 0;  ///< And at the end.

  /// The lengths share one measure; `inset` is what the glass keeps free at each of its ends. Where the two runs would
  /// take more than two thirds of the glass, or there is nothing but apps, everything scrolls. An entry that is `held`
  /// breaks no run: it belongs to an end while it lies within it, and at its inner edge if it is an app.
  static RowEnds of(const QList<Entry>& entries, double spacing, double inset, double glass,
                    std::optional<qsizetype> held = {});

  bool operator==(const RowEnds&) const = default;
};

}  // namespace tarnwick
