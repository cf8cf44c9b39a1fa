#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"

namespace tarnwick {

SettingsPage* makeClipboardPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("Clipboard"), store, services);
  Card& card = *page->addCard();
  FormRow* history = page->addSwitch(
      card,
      {QT_TRANSLATE_NOOP("Settings", "Clipboard history"),
       QT_TRANSLATE_NOOP("Settings",
                         "Keeps text, images, files, links and colors you copy, on this computer only. Nothing is ever "
                         "exported."),
       QT_TRANSLATE_NOOP("Settings", "copy paste")},
      settingField(&DockConfiguration::clipboardEnabled));
  history->setUnavailable(SettingsWords::tr("Clipboard history is not part of this version yet."));
  return page;
}

}  // namespace tarnwick
