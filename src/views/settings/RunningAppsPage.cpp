#include <QCoreApplication>
#include <array>

#include "store/AppStore.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"

namespace tarnwick {

namespace {

constexpr auto kPlaces = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Don't show"), "none"},
    {QT_TRANSLATE_NOOP("Settings", "Left"), "left"},
    {QT_TRANSLATE_NOOP("Settings", "Before apps"), "beforeApps"},
    {QT_TRANSLATE_NOOP("Settings", "After apps"), "afterApps"},
    {QT_TRANSLATE_NOOP("Settings", "Right"), "right"},
});

}  // namespace

SettingsPage* makeRunningAppsPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("Running Apps"), store, services);
  Card& card = *page->addCard();
  page->addSwitch(card,
                  {QT_TRANSLATE_NOOP("Settings", "Show running apps"),
                   QT_TRANSLATE_NOOP("Settings", "Shows running apps beside the widgets."),
                   QT_TRANSLATE_NOOP("Settings", "programs windows taskbar")},
                  settingField(&DockConfiguration::liveApps));
  FormRow* place = page->addDropDown(card,
                                     {QT_TRANSLATE_NOOP("Settings", "Place in the dock"),
                                      QT_TRANSLATE_NOOP("Settings", "Where running apps appear among the widgets.")},
                                     settingField(&DesktopOptions::runningAppsPlacement), kPlaces);
  page->showWhile(
      place, [](const DockConfiguration& config) { return config.liveApps; },
      SettingsWords::tr("Only while running apps are shown."));
  FormRow* workspace = page->addSwitch(card,
                                       {QT_TRANSLATE_NOOP("Settings", "Only windows of this workspace"),
                                        QT_TRANSLATE_NOOP("Settings", "Leaves out windows on other virtual desktops."),
                                        QT_TRANSLATE_NOOP("Settings", "virtual desktop")},
                                       settingField(&DeskOptions::workspaceWindows));
  if (const Capability can = services.abilities().workspaces; !can) workspace->setUnavailable(can.reason);
  FormRow* display = page->addSwitch(card,
                                     {QT_TRANSLATE_NOOP("Settings", "Only windows of this display"),
                                      QT_TRANSLATE_NOOP("Settings", "Each dock shows the windows on its own display."),
                                      QT_TRANSLATE_NOOP("Settings", "monitor screen")},
                                     settingField(&DeskOptions::displayWindows));
  if (const Capability can = services.abilities().windows; !can) display->setUnavailable(can.reason);
  page->addSwitch(card,
                  {QT_TRANSLATE_NOOP("Settings", "Show pinned windows"),
                   QT_TRANSLATE_NOOP("Settings", "Shows the windows that you pinned to the dock.")},
                  settingField(&DesktopOptions::showPinnedWindows));
  FormRow* previews =
      page->addSwitch(card,
                      {QT_TRANSLATE_NOOP("Settings", "Window previews"),
                       QT_TRANSLATE_NOOP("Settings", "Shows pictures of an app’s windows over its tile."),
                       QT_TRANSLATE_NOOP("Settings", "thumbnails")},
                      settingField(&DesktopOptions::windowPreviews));
  if (const Capability can = services.abilities().windowPictures; !can) previews->setUnavailable(can.reason);
  card.add(
      FormRow::wide(SettingsWords::tr("Zoom Meeting widget"), nullptr,
                    SettingsWords::tr("Sees Zoom’s buttons only while accessibility is on in the desktop’s settings. "
                                      "Start Zoom again after you turned it on.")));
  return page;
}

}  // namespace tarnwick
