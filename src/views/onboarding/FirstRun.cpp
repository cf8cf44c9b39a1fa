#include "views/onboarding/FirstRun.h"

#include "store/AppStore.h"

namespace tarnwick {

void chooseForNewUser(AppStore& store) {
  if (!store.isFirstRun()) return;
  store.edit([](DockConfiguration& config) {
    config.appAppearance = QStringLiteral("auto");
    config.liveApps = true;
    if (config.layout == DockLayout::Fixed) config.desktop.reserveSpace = true;
  });
}

}  // namespace tarnwick
