#include "clipboard/ClipboardOffers.h"

namespace tarnwick {

void ClipboardOffers::make(const ClipboardEntry& entry, ClipboardHistory& history, QObject* context, const Made& made) {
  switch (entry.kind) {
    case ClipboardEntry::Kind::File:
      return made(PasteboardOffer::file(entry.value));
    case ClipboardEntry::Kind::Image:
      return history.readPicture(entry, context, [made](const std::optional<QByteArray>& png) {
        made(png ? std::optional(PasteboardOffer::picture(*png)) : std::nullopt);
      });
    case ClipboardEntry::Kind::Text:
    case ClipboardEntry::Kind::Link:
    case ClipboardEntry::Kind::Color:
      return made(PasteboardOffer::text(entry.value));
  }
}

}  // namespace tarnwick
