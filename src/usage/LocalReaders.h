#pragma once

#include <QHash>

#include "base/Scheduler.h"
#include "usage/LocalReading.h"
#include "usage/ports/ChildExchange.h"
#include "usage/ports/UsageDatabase.h"

namespace tarnwick {

/// Who reads what stands on this machine.
struct LocalReaders {
  Scheduler& scheduler;  ///< Outlives what reads.
  std::shared_ptr<UsageDatabases> databases;
  StartChild startChild;

  /// The tokens of Gemini models, from what the widget names: recordings or a database.
  LocalReader geminiHistory() const;
  /// What is left of the plan of Codex, from its command-line program.
  LocalReader codex() const;
};

}  // namespace tarnwick
