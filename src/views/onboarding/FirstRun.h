#pragma once

namespace tarnwick {

class AppStore;

/// Sets what a new user expects and the document's defaults do not hold: windows that follow the desktop's light and
/// dark, a dock that shows running apps, and maximised windows that leave room for it. All are then choices like those
/// that the user makes, and stand however the first run is left. Does nothing where there are settings already.
void chooseForNewUser(AppStore& store);

}  // namespace tarnwick
