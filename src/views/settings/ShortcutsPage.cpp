#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/controls/Labels.h"
#include "views/settings/Pages.h"
#include "views/settings/ShortcutRow.h"

namespace tarnwick {

SettingsPage* makeShortcutsPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(settingsText(QT_TRANSLATE_NOOP("Settings", "Shortcuts")), store, services);
  Card& card = *page->addCard();
  // That of the command bar stands in its own section.
  for (const Shortcut each : {Shortcut::Dock, Shortcut::Profiles}) addShortcutRow(*page, card, services, each);
  auto* note =
      makeSentence(settingsText(QT_TRANSLATE_NOOP("Settings",
                                                  "Press a shortcut here, then the keys that it should have. They work "
                                                  "whatever app is in front.")),
                   TextStyle::Caption, Tone::Secondary);
  page->addWidget(note);
  return page;
}

}  // namespace tarnwick
