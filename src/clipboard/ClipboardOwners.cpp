#include "clipboard/ClipboardOwners.h"

#include "apps/AppMatching.h"

namespace tarnwick {

QString ClipboardOwners::applicationOf(const PasteboardOwner& owner, const AppIndex& apps,
                                       const ExecutableOf& executableOf) {
  ClientWindow window;
  window.applicationId = owner.applicationId;
  window.instance = owner.instance;
  window.sandboxId = owner.sandboxId;
  window.pid = owner.pid;
  const DesktopEntry* entry = AppMatching::entryFor(window, apps, [&] { return executableOf(owner.pid); });
  return entry ? entry->id : QString();
}

}  // namespace tarnwick
