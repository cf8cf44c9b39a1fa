#pragma once

#include <QList>
#include <QString>
#include <functional>

#include "apps/DesktopEntry.h"

namespace tarnwick {

/// Measures what a key costs in the command bar, from the query to the rows: with the given applications, all widgets
/// and symbols, and copies and uses made for it. The user's own history and uses are not read, and it needs no display.
struct CommandBarLatency {
  static constexpr int kIterations = 200;  ///< How often each query is run unless said otherwise.
  static constexpr double kBudget = 16;    ///< Milliseconds; what the slowest hundredth may take.

  struct Means {
    std::function<qint64()> clock;  ///< Nanoseconds that never go back.
    std::function<void(const QString& text)> print;
  };

  /// Returns the status of the process: 0 where the budget is kept, else 1.
  static int run(const QList<DesktopEntry>& applications, int iterations, const Means& means);
};

}  // namespace tarnwick
