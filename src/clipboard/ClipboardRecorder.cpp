#include "clipboard/ClipboardRecorder.h"

#include <utility>

#include "clipboard/ClipboardOffers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

ClipboardRecorder::ClipboardRecorder(Pasteboard& pasteboard, ClipboardHistory& history, QObject* parent)
    : QObject(parent), pasteboard_(pasteboard), history_(history), reader_(pasteboard) {
  connect(&pasteboard, &Pasteboard::changed, this, &ClipboardRecorder::notice);
}

void ClipboardRecorder::set(bool& state, bool value) {
  const bool wasRecording = isRecording();
  state = value;
  if (wasRecording == isRecording()) return;
  // What came in between, or is under way, belongs to the time in which nothing is recorded.
  pasteboardCount_ = pasteboard_.changeCount();
  reader_.cancel();
  waits_ = false;
  keptChange_ = 0;
}

void ClipboardRecorder::setReady(bool ready) {
  isReady_ = ready;
  if (isReady_ && std::exchange(waits_, false)) read();
}

void ClipboardRecorder::setEnabled(bool enabled) { set(isEnabled_, enabled); }

void ClipboardRecorder::follow(const ActiveSets& active) { set(isShown_, active.kinds.contains(kind::clipboard)); }

void ClipboardRecorder::setLocked(bool locked) { set(isLocked_, locked); }

void ClipboardRecorder::start(const DockConfiguration& config, const ActiveSets& active) {
  setEnabled(config.clipboardEnabled);
  follow(active);
  set(isStarted_, true);
}

void ClipboardRecorder::end() {
  if (isRecording()) {
    const bool isKept = pasteboard_.isOwn() && keptChange_ == pasteboard_.changeCount();
    // While it is not known yet what became of it, it becomes the newest before this is noted.
    history_.noteHeld(isKept && (keptEntry_.isNull() || isNewest(keptEntry_)));
  }
  set(isStarted_, false);
  pasteboard_.handOver();
}

void ClipboardRecorder::notice(PasteboardChange change) {
  const quint64 count = pasteboard_.changeCount();
  const quint64 before = std::exchange(pasteboardCount_, count);
  if (before == count) return;
  reader_.cancel();
  waits_ = false;
  const bool endedKept = change == PasteboardChange::OwnerGone && keptChange_ != 0 && keptChange_ == before;
  if (!endedKept) keptChange_ = 0;
  const QUuid held = std::exchange(heldBefore_, {});
  if (!isRecording()) return;
  if (change == PasteboardChange::Taken)
    read();
  else
    takeOver(held);
  if (!endedKept) return;
  endOfOwner_ = count;
  revive();
}

void ClipboardRecorder::read() {
  if (!isReady_) {
    waits_ = true;
    return;
  }
  reader_.read(pasteboardCount_, isListed_, [this](const std::optional<ClipboardCapture>& capture) {
    if (capture) keep(*capture);
  });
}

void ClipboardRecorder::keep(const ClipboardCapture& capture) {
  keptChange_ = pasteboardCount_;
  keptEntry_ = {};
  endOfOwner_ = 0;
  history_.record(capture, this, [this, change = keptChange_](const std::optional<ClipboardEntry>& entry) {
    if (keptChange_ != change) return;
    if (!entry) {
      keptChange_ = 0;
      return;
    }
    keptEntry_ = entry->id;
    revive();
  });
}

void ClipboardRecorder::revive() {
  const bool isNeeded = keptChange_ != 0 && endOfOwner_ != 0 && endOfOwner_ == pasteboard_.changeCount();
  if (isNeeded && isNewest(keptEntry_)) offerNewest();
}

void ClipboardRecorder::takeOver() {
  history_.takeHeld(this, [this](const QUuid& held) {
    if (held.isNull()) return;
    heldBefore_ = held;
    // Only then it is known who has it at the start.
    pasteboard_.confirm(pasteboardCount_, this, [this](bool) {
      const bool isEmpty = pasteboard_.isEmpty();
      // The other run has ended, and the desktop has not noticed yet: the next change tells.
      if (!isEmpty && pasteboard_.isOwn()) return;
      const QUuid before = std::exchange(heldBefore_, {});
      if (isEmpty && isRecording()) takeOver(before);
    });
  });
}

void ClipboardRecorder::takeOver(const QUuid& held) {
  if (isNewest(held)) offerNewest();
}

bool ClipboardRecorder::isNewest(const QUuid& entry) const {
  return !entry.isNull() && !history_.items().isEmpty() && history_.items().first().id == entry;
}

void ClipboardRecorder::offerNewest() {
  if (history_.items().isEmpty()) return;
  const ClipboardEntry entry = history_.items().first();
  const auto put = [this, id = entry.id, change = pasteboard_.changeCount()](const auto& offer) {
    if (!offer || pasteboard_.changeCount() != change) return;
    // It is in the history already, with the moment at which it was copied.
    pasteboardCount_ = keptChange_ = pasteboard_.set(*offer);
    keptEntry_ = id;
    endOfOwner_ = 0;
  };
  ClipboardOffers::make(entry, history_, this, put);
}

}  // namespace tarnwick
