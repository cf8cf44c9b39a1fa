#include "app/DockDisplays.h"

#include "desktop/Screens.h"
#include "dock/DockController.h"
#include "store/AppStore.h"

namespace tarnwick {

DockDisplays::DockDisplays(AppStore& store, const Screens& screens, const DockController& dock)
    : store_(store), dock_(dock) {
  connect(&screens, &Screens::changed, this, &DockDisplays::look);
  connect(&store, &AppStore::layoutChanged, this, &DockDisplays::look);
  connect(&dock, &DockController::placed, this, &DockDisplays::look);
}

void DockDisplays::stop() {
  stopped_ = true;
  docksStand_.reset();
}

void DockDisplays::look() {
  if (stopped_) return;
  docksStand_ =
      store_.scheduler().after(DockController::kOnceTheyStand, [this] { store_.setDockDisplays(dock_.displays()); });
}

}  // namespace tarnwick
