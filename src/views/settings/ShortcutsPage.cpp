#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/controls/Labels.h"
#include "views/controls/Switch.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/settings/ShortcutRow.h"

namespace tarnwick {

namespace {

constexpr const char* kAppsHelp =
    QT_TRANSLATE_NOOP("Settings",
                      "Super+1 to Super+9 open the first nine apps of the dock, unless another app uses these "
                      "keys. Only while the dock’s shortcut is on.");

}  // namespace

SettingsPage* makeShortcutsPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("Shortcuts"), store, services);
  Card& card = *page->addCard();
  // That of the command bar is in its own section.
  for (const Shortcut each : {Shortcut::Dock, Shortcut::Profiles}) addShortcutRow(*page, card, services, each);
  FormRow* apps = page->addSwitch(card,
                                  {QT_TRANSLATE_NOOP("Settings", "Apps by number"), kAppsHelp,
                                   QT_TRANSLATE_NOOP("Settings", "super windows key digits launch")},
                                  settingField(&DeskOptions::appKeys));
  auto* note = makeSentence({}, TextStyle::Caption, Tone::Secondary);
  page->addWidget(note);
  auto* numbered = apps->findChild<Switch*>();
  page->follow([apps, note, numbered, &services](const DockConfiguration& config) {
    const DesktopAbilities abilities = services.abilities();
    const QString numbers = abilities.appNumbers
                                ? SettingsWords::tr("Hold Super for a moment to see the apps’ numbers.")
                                : abilities.appNumbers.reason;
    apps->setHelp(settingsText(kAppsHelp) + u' ' + numbers);
    const bool canHaveKeys = !abilities.keysAnswered || abilities.keys;
    apps->setUnavailable(canHaveKeys ? abilities.unaskedKeys.reason
                                     : SettingsWords::tr("Only where apps can register shortcuts."));
    numbered->setChecked(numbered->isEnabled() && config.desk().appKeys);
    note->setText(canHaveKeys ? SettingsWords::tr("Click a shortcut, then press the new keys. Shortcuts work in every "
                                                  "app.")
                              : abilities.keys.reason);
    note->setVisible(abilities.keysAnswered);
  });
  return page;
}

}  // namespace tarnwick
