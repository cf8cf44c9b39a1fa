#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"

namespace tarnwick {

namespace {

/// A switch whose row says where the desktop cannot do it.
void addCapture(SettingsPage& page, Card& card, const SettingsServices& services) {
  FormRow* row = page.addSwitch(card,
                                {QT_TRANSLATE_NOOP("Settings", "Hide from screen capture"),
                                 QT_TRANSLATE_NOOP("Settings", "Leaves the dock out of screenshots and recordings."),
                                 QT_TRANSLATE_NOOP("Settings", "screenshot recording share")},
                                settingField(&DesktopOptions::hideFromScreenCapture));
  const Capability can = services.abilities().captureProtection;
  if (can) return;
  row->setUnavailable(can.reason);
}

}  // namespace

SettingsPage* makePrivacyPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("Privacy"), store, services);
  addCapture(*page, *page->addCard(), services);
  Card& card = *page->addCard();
  const QString folder = store.dataDirectory();
  auto* open = new Button(SettingsWords::tr("Open Folder"));
  QObject::connect(open, &QPushButton::clicked, page, [&to = services.commands, folder] { to.openPath(folder); });
  FormRow* data = page->addControl(
      card, {QT_TRANSLATE_NOOP("Settings", "Your data"), "", QT_TRANSLATE_NOOP("Settings", "folder files")}, open);
  data->setHelp(pathText(folder));
  auto* said =
      new FormRow(SettingsWords::tr("What is sent"), nullptr,
                  SettingsWords::tr(
                      "No account, no usage statistics. Your widgets ask for what they show: the weather of the places "
                      "that you choose, exchange rates when you convert currencies, and the addresses that you "
                      "enter. A credential goes to the host that you entered it for and is kept in the keyring."));
  page->addOther(card, said, said->label());
  return page;
}

}  // namespace tarnwick
