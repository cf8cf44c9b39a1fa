#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/controls/Labels.h"
#include "views/settings/Pages.h"
#include "views/settings/ShortcutRow.h"

namespace tarnwick {

SettingsPage* makeShortcutsPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(settingsText(QT_TRANSLATE_NOOP("Settings", "Shortcuts")), store, services);
  Card& card = *page->addCard();
  // That of the command bar is in its own section.
  for (const Shortcut each : {Shortcut::Dock, Shortcut::Profiles}) addShortcutRow(*page, card, services, each);
  FormRow* apps =
      page->addSwitch(card,
                      {QT_TRANSLATE_NOOP("Settings", "Apps by number"),
                       QT_TRANSLATE_NOOP("Settings",
                                         "Super+1 to Super+9 open the first nine apps of the dock, unless another app "
                                         "uses these keys. Only while the dock’s shortcut is on."),
                       QT_TRANSLATE_NOOP("Settings", "super windows key digits launch")},
                      settingField(&DeskOptions::appKeys));
  if (const Capability can = services.abilities().unaskedKeys; !can) apps->setUnavailable(can.reason);
  auto* note = makeSentence(settingsText(QT_TRANSLATE_NOOP(
                                "Settings", "Click a shortcut, then press the new keys. Shortcuts work in every app.")),
                            TextStyle::Caption, Tone::Secondary);
  page->addWidget(note);
  return page;
}

}  // namespace tarnwick
