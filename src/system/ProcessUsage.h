#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "system/ports/ProcessSource.h"

namespace tarnwick {

/// A process as the lists show it.
struct ProcessUsage {
  ProcessReading reading;
  std::optional<double> cpu;  ///< Percent of one core, so it may pass 100; none for the first sample of a process.

  bool operator==(const ProcessUsage&) const = default;
};

enum class ProcessOrder { CPU, RAM };

/// Which processes a list shows.
struct ProcessRanking {
  static constexpr int tileRows = 3;
  static constexpr int panelRows = 12;

  /// The first `count` of the rows, the busiest or the largest first; processes without a figure come last. Rows that
  /// are alike keep an order that does not change from sample to sample.
  static QList<ProcessUsage> top(const QList<ProcessUsage>& rows, ProcessOrder order, int count);
  /// "12.3%"; a dash without a figure.
  static QString cpuText(std::optional<double> cpu);
};

}  // namespace tarnwick
