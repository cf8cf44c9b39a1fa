#pragma once

#include "views/settings/SettingsPage.h"
#include "views/settings/SettingsServices.h"

namespace tarnwick {

/// The keys that the program has on the whole desktop.
enum class Shortcut { Dock, CommandBar, Profiles };

/// A row with a shortcut and the switch that turns it on. A key that is recorded is stored only if it can be had: one
/// that another app has, or that the program itself uses for something else, is said at once below it.
FormRow* addShortcutRow(SettingsPage& page, Card& card, const SettingsServices& services, Shortcut shortcut);

/// What is shown below the command bar's key: which key opens it now. Empty where that is the one that is shown.
QString commandBarKeyNote(const DesktopOptions& options, const SettingsServices& services);

}  // namespace tarnwick
