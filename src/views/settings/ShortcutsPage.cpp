#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/controls/Labels.h"
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
  auto* note =
      makeSentence(SettingsWords::tr("Click a shortcut, then press the new keys. Shortcuts work in every app."),
                   TextStyle::Caption, Tone::Secondary);
  page->addWidget(note);
  page->follow([apps, note, &services](const DockConfiguration&) {
    const DesktopAbilities abilities = services.abilities();
    const QString numbers = abilities.appNumbers
                                ? SettingsWords::tr("Hold Super for a moment to see the apps’ numbers.")
                                : abilities.appNumbers.reason;
    apps->setHelp(settingsText(kAppsHelp) + u' ' + numbers);
    apps->setUnavailable(abilities.unaskedKeys.reason);
    note->setVisible(abilities.keysAnswered && abilities.keys);
  });
  return page;
}

}  // namespace tarnwick
