#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"

namespace tarnwick {

SettingsPage* makeClipboardPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("Clipboard"), store, services);
  Card& card = *page->addCard();
  page->addSwitch(
      card,
      {QT_TRANSLATE_NOOP("Settings", "Clipboard history"),
       QT_TRANSLATE_NOOP("Settings",
                         "Keeps text, images, files, links and colors you copy, on this computer only. Nothing is ever "
                         "exported."),
       QT_TRANSLATE_NOOP("Settings", "copy paste")},
      settingField(&DockConfiguration::clipboardEnabled));
  return page;
}

}  // namespace tarnwick
