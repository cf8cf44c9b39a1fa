#pragma once

#include <QPointer>
#include <memory>
#include <optional>

#include "base/Scheduler.h"
#include "clipboard/ClipboardHistory.h"

namespace tarnwick {

/// A removal of one entry that can be taken back for a few seconds, after which nothing is left of the entry. It is
/// owned by the two actions of the bubble that offers it and may outlive the panel and the history.
class ClipboardRemoval : public std::enable_shared_from_this<ClipboardRemoval> {
 public:
  ClipboardRemoval(ClipboardHistory& history, Scheduler& scheduler) : history_(&history), scheduler_(scheduler) {}

  void hold(const RemovedClipboardEntry& removed);
  /// Fails with a sentence for the user once it is too late.
  void takeBack();
  void again();

 private:
  QPointer<ClipboardHistory> history_;
  Scheduler& scheduler_;
  std::optional<RemovedClipboardEntry> removed_;
  QUuid id_;
  JobHandle forgetting_;
};

}  // namespace tarnwick
