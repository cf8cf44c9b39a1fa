#pragma once

#include <QString>
#include <span>

namespace tarnwick {

class AppStore;
class SettingsPage;
struct SettingsServices;

/// A section of Settings.
struct SettingsSection {
  const char* id;
  const char* title;  ///< For settingsText().
  const char* symbol;
  SettingsPage* (*make)(AppStore&, const SettingsServices&);
};

/// All of them, in their order.
std::span<const SettingsSection> settingsSections();
/// Null where there is none of that name.
const SettingsSection* settingsSection(const QString& id);

}  // namespace tarnwick
