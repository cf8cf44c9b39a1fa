#pragma once

#include <functional>
#include <utility>

#include "base/Scheduler.h"
#include "clipboard/ports/Pasteboard.h"

namespace tarnwick {

/// Tells that the owner of the clipboard stalls, or goes on for ever. Silent once it is gone.
class TransferWatch {
 public:
  /// `late` is called when either time is over. The scheduler must outlive this object.
  TransferWatch(Scheduler& scheduler, std::function<void()> late)
      : scheduler_(scheduler), late_(std::move(late)), whole_(scheduler.after(PasteboardLimits::kWhole, late_)) {
    gotBytes();
  }

  void gotBytes() { silence_ = scheduler_.after(PasteboardLimits::kSilence, late_); }

 private:
  Scheduler& scheduler_;
  std::function<void()> late_;
  JobHandle whole_;
  JobHandle silence_;
};

}  // namespace tarnwick
