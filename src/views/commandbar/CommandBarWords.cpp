#include "views/commandbar/CommandBarWords.h"

namespace tarnwick {

QString CommandBarWords::hint(CommandItem::Kind kind, bool canReveal) {
  switch (kind) {
    case CommandItem::Kind::App:
    case CommandItem::Kind::File:
      return canReveal ? tr("↩ open · ⌘R reveal") : tr("↩ open");
    case CommandItem::Kind::Widget:
      return tr("↩ add");
    case CommandItem::Kind::Clipboard:
    case CommandItem::Kind::Calculation:
    case CommandItem::Kind::Symbol:
      return tr("↩ copy");
    case CommandItem::Kind::Web:
      return tr("↩ open");
  }
  return {};
}

}  // namespace tarnwick
