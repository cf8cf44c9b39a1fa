#include "views/settings/SettingsSections.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

#include "views/settings/Pages.h"

namespace tarnwick {

namespace {

constexpr auto kSections = std::to_array<SettingsSection>({
    {"general", QT_TRANSLATE_NOOP("Settings", "General"), "slider.horizontal.3", makeGeneralPage},
    {"appearance", QT_TRANSLATE_NOOP("Settings", "Appearance"), "paintpalette", makeAppearancePage},
    {"layout", QT_TRANSLATE_NOOP("Settings", "Layout & Displays"), "dock.rectangle", makeLayoutPage},
    {"profiles", QT_TRANSLATE_NOOP("Settings", "Profiles"), "person.2", makeProfilesPage},
    {"widgets", QT_TRANSLATE_NOOP("Settings", "Widgets"), "macwindow.on.rectangle", makeWidgetsPage},
    {"runningApps", QT_TRANSLATE_NOOP("Settings", "Running Apps"), "square.grid.2x2", makeRunningAppsPage},
    {"commandBar", QT_TRANSLATE_NOOP("Settings", "Command Bar"), "magnifyingglass", makeCommandBarPage},
    {"shortcuts", QT_TRANSLATE_NOOP("Settings", "Shortcuts"), "keyboard", makeShortcutsPage},
    {"clipboard", QT_TRANSLATE_NOOP("Settings", "Clipboard"), "doc.on.clipboard", makeClipboardPage},
    {"connections", QT_TRANSLATE_NOOP("Settings", "Connections"), "link", makeConnectionsPage},
    {"privacy", QT_TRANSLATE_NOOP("Settings", "Privacy"), "lock", makePrivacyPage},
    {"about", QT_TRANSLATE_NOOP("Settings", "About"), "info.circle", makeAboutPage},
});

}  // namespace

std::span<const SettingsSection> settingsSections() { return kSections; }

const SettingsSection* settingsSection(const QString& id) {
  const auto at =
      std::ranges::find_if(kSections, [&](const SettingsSection& section) { return id == QLatin1String(section.id); });
  return at == kSections.end() ? nullptr : &*at;
}

}  // namespace tarnwick
