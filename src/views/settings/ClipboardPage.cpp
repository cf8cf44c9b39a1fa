#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/settings/Pages.h"

namespace tarnwick {

SettingsPage* makeClipboardPage(AppStore& store, const SettingsServices&) {
  auto* page = new SettingsPage(settingsText(QT_TRANSLATE_NOOP("Settings", "Clipboard")), store);
  Card& card = *page->addCard();
  page->addSwitch(
      card,
      {QT_TRANSLATE_NOOP("Settings", "Clipboard history"),
       QT_TRANSLATE_NOOP("Settings",
                         "Keeps text, images, files, links and colors you copy, on this computer only. Nothing is ever "
                         "exported."),
       QT_TRANSLATE_NOOP("Settings", "copy paste")},
      settingField(&DockConfiguration::clipboardEnabled));
  auto* concealed = new FormRow(
      settingsText(QT_TRANSLATE_NOOP("Settings", "Passwords")), nullptr,
      settingsText(QT_TRANSLATE_NOOP(
          "Settings", "Copies that apps mark as concealed — what password managers use — are never recorded.")));
  page->addOther(card, concealed, concealed->label());
  return page;
}

}  // namespace tarnwick
