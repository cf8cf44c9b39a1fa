#pragma once

#include <QString>

#include "base/OrderedWork.h"
#include "commandbar/CommandUsage.h"

namespace tarnwick {

/// Keeps what the command bar knows of use in a file of the data folder. Main thread only; files are written on another
/// one, whole and in turn, and not waited for. Nothing fails towards the user: what cannot be read is as empty, and
/// what cannot be written is lost.
class CommandUsageStore {
 public:
  static QString fileIn(const QString& folder);

  CommandUsageStore() = default;
  Q_DISABLE_COPY_MOVE(CommandUsageStore)
  /// Waits until all that was saved is written.
  ~CommandUsageStore() { finish(); }

  static CommandUsage load(const QString& folder);
  /// Makes the folder where it is missing.
  void save(const CommandUsage& usage, const QString& folder);
  void finish() { work_.finish(); }

 private:
  OrderedWork work_;
};

}  // namespace tarnwick
