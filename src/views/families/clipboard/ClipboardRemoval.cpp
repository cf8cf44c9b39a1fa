#include "views/families/clipboard/ClipboardRemoval.h"

#include "base/DomainError.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

namespace {

/// Seconds in which the bubble offers to take a removal back.
constexpr double kBringsBack = 8;

}  // namespace

void ClipboardRemoval::hold(const RemovedClipboardEntry& removed) {
  removed_ = removed;
  forgetting_ = scheduler_.after(kBringsBack, [self = weak_from_this()] {
    if (const auto removal = self.lock()) removal->removed_.reset();
  });
}

void ClipboardRemoval::takeBack() {
  if (!removed_ || !history_) throw DomainError::invalid(PanelWords::tr("What was removed is gone for good."));
  history_->putBack(*removed_);
  id_ = removed_->entry.id;
  removed_.reset();
}

void ClipboardRemoval::again() {
  if (!history_) return;
  history_->remove(id_, history_, [self = weak_from_this()](const RemovedClipboardEntry& removed) {
    if (const auto removal = self.lock()) removal->hold(removed);
  });
}

}  // namespace tarnwick
