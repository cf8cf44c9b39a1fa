// The ports have hardly any code of their own; this file gives their meta-objects a home.
#include "desktop/ClientWindows.h"
#include "desktop/ClockFormat.h"
#include "desktop/ContrastPreference.h"
#include "desktop/Files.h"
#include "desktop/FrameClock.h"
#include "desktop/HeldModifiers.h"
#include "desktop/HotKeys.h"
#include "desktop/MotionPreference.h"
#include "desktop/Panels.h"
#include "desktop/ScreenColors.h"
#include "desktop/Screens.h"
#include "desktop/SessionEvents.h"
#include "desktop/Toggles.h"
#include "desktop/Zones.h"

namespace tarnwick {

Capability ClientWindows::moves() const {
  return Capability::no(tr("On this desktop loose windows stay where they are."));
}

Capability ClientWindows::pictures() const {
  return Capability::no(tr("This desktop does not show apps what the windows of others look like."));
}

void ClientWindows::replace(QList<ClientWindow>& known, const QList<ClientWindow>& found) {
  if (known == found) return;
  const auto withoutFrames = [](QList<ClientWindow> windows) {
    for (ClientWindow& window : windows) window.frame = {};
    return windows;
  };
  const bool moved = withoutFrames(known) == withoutFrames(found);
  known = found;
  if (moved)
    Q_EMIT framesChanged();
  else
    Q_EMIT changed();
}

}  // namespace tarnwick
