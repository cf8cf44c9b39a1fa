#pragma once

#include "views/settings/SettingsPage.h"
#include "views/settings/SettingsServices.h"

namespace tarnwick {

// The sections of Settings. `services` outlives what is made.
SettingsPage* makeGeneralPage(AppStore& store, const SettingsServices& services);
/// Cards of layouts beside each other, which the window is wide enough for.
inline constexpr int kLayoutColumns = 4;
SettingsPage* makeLayoutPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeAppearancePage(AppStore& store, const SettingsServices& services);
SettingsPage* makeProfilesPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeRunningAppsPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeWidgetsPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeCommandBarPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeClipboardPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeShortcutsPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeConnectionsPage(AppStore& store, const SettingsServices& services);
SettingsPage* makePrivacyPage(AppStore& store, const SettingsServices& services);
SettingsPage* makeAboutPage(AppStore& store, const SettingsServices& services);

}  // namespace tarnwick
