#include "usage/LocalReaders.h"

#include <QCoroTask>

#include "base/DomainError.h"
#include "usage/CodexUsage.h"
#include "usage/GeminiHistory.h"
#include "usage/LocalUsageDatabase.h"
#include "usage/UsageReaderWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

LocalReader LocalReaders::geminiHistory() const {
  return [databases = databases, &scheduler = scheduler](const DockWidget& widget, std::stop_token stop) {
    const QString path = widget.options.value(option::historyDirectory);
    const QString source = widget.options.value(option::historySource);
    if (path.isEmpty()) throw DomainError::invalid(UsageReaderWords::tr("Choose a local Gemini CLI chat directory."));
    return readElsewhere(
        [databases, path, source, now = scheduler.now()](const std::stop_token& stopped) {
          if (source != value::openCode && source != value::hermes) return GeminiHistory::read(path, now, stopped);
          const auto database = databases->open(path, stopped);
          return source == value::openCode ? LocalUsageDatabase::openCode(*database, now)
                                           : LocalUsageDatabase::hermes(*database, now);
        },
        std::move(stop));
  };
}

LocalReader LocalReaders::codex() const {
  return [start = startChild, &scheduler = scheduler](const DockWidget& widget, std::stop_token stop) {
    const QString chosen = widget.options.value(option::codexExecutable);
    const QString executable = chosen.isEmpty() ? CodexRPCRead::defaultExecutable() : chosen;
    return readElsewhere(
        [start, executable, now = scheduler.now()](const std::stop_token& stopped) {
          return CodexUsageData::value(CodexRPCRead::run(executable, start, CodexRPCRead::kSeconds, stopped), now);
        },
        std::move(stop));
  };
}

}  // namespace tarnwick
