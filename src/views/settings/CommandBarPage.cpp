#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/settings/ShortcutRow.h"

namespace tarnwick {

SettingsPage* makeCommandBarPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("Command Bar"), store, services);
  Card& card = *page->addCard();
  addShortcutRow(*page, card, services, Shortcut::CommandBar);
  auto* about =
      new FormRow(SettingsWords::tr("What it does"), nullptr,
                  SettingsWords::tr("Opens apps, does sums and converts units. What you type stays on this computer."));
  page->addOther(card, about, about->label());
  page->showWhile(about, [&commands = services.commands](const DockConfiguration&) {
    return commands.can(Commands::Optional::CommandBar);
  });
  return page;
}

}  // namespace tarnwick
