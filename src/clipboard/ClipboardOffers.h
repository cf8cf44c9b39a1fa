#pragma once

#include <functional>
#include <optional>

#include "clipboard/ClipboardHistory.h"
#include "clipboard/ports/Pasteboard.h"

namespace tarnwick {

/// Entries of the history as they are put on the clipboard again.
struct ClipboardOffers {
  using Made = std::function<void(const std::optional<PasteboardOffer>& offer)>;

  /// Answers at once, but for a picture, whose file is read elsewhere: absent where it cannot be read. Not answered
  /// once `context` is gone.
  static void make(const ClipboardEntry& entry, ClipboardHistory& history, QObject* context, const Made& made);
};

}  // namespace tarnwick
