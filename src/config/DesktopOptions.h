#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

#include "base/RecordCodec.h"
#include "config/DeskOptions.h"
#include "config/ProfileRule.h"

namespace tarnwick {

/// Settings that came after the first format. A key that a file lacks takes the default that is given here, so that
/// older files keep working without another schema.
struct DesktopOptions {
  bool hideDuringFullscreen = true;
  bool windowPreviews = false;
  bool reserveSpace = false;
  double revealShowDelay = 0.12;  ///< Seconds.
  double revealHideDelay = 0.65;  ///< Seconds.
  double triggerSize = 3.0;       ///< Points.
  QStringList attachedDisplays;   ///< Display identities, first connected first.
  QMap<QString, QString> displayNames;
  QString runningAppsPlacement = QStringLiteral("right");  ///< none, left, beforeApps, afterApps or right.
  bool showPinnedWindows = true;
  bool profileSwitcherOnHover = true;
  bool profileSwipe = true;
  bool showMenuBarIcon = true;
  bool reduceTransparency = false;
  bool hideFromScreenCapture = false;
  bool classicMenu = false;
  QString appIconStyle = QStringLiteral("default");  ///< default, auto, dark or monochrome.
  QMap<QString, QString> customAppIcons;             ///< Application identity to asset name.
  QList<ProfileRule> profileRules;
  QMap<QString, QString> displayProfiles;  ///< Display identity to a profile's identity; others follow the active one.
  QString backgroundImage;                 ///< Asset name; empty for none.
  double backgroundBlur = 12.0;            ///< Points.
  double backgroundDim = 0.2;              ///< Fraction.
  bool commandBarEnabled = true;
  quint32 commandBarKey = 49;          ///< Virtual key code; see desktop/VirtualKeys.h, as for those below.
  quint32 commandBarModifiers = 2048;  ///< Modifier mask.
  bool dockShortcutEnabled = true;
  bool profileShortcutEnabled = true;
  quint32 shortcutKey = 2;
  quint32 shortcutModifiers = 6400;
  quint32 profileModifiers = 6400;
  std::optional<DeskOptions> desk;  ///< Absent while all of it has its defaults.

  DeskOptions deskOptions() const { return desk.value_or(DeskOptions()); }
  void setDesk(const DeskOptions& options) { desk = options == DeskOptions() ? std::nullopt : std::optional(options); }

  static constexpr auto fields() {
    using O = DesktopOptions;
    return std::tuple(
        field::defaulted("hideDuringFullscreen", &O::hideDuringFullscreen),
        field::defaulted("windowPreviews", &O::windowPreviews), field::defaulted("reserveSpace", &O::reserveSpace),
        field::defaulted("revealShowDelay", &O::revealShowDelay),
        field::defaulted("revealHideDelay", &O::revealHideDelay), field::defaulted("triggerSize", &O::triggerSize),
        field::defaulted("attachedDisplays", &O::attachedDisplays), field::defaulted("displayNames", &O::displayNames),
        field::defaulted("runningAppsPlacement", &O::runningAppsPlacement),
        field::defaulted("showPinnedWindows", &O::showPinnedWindows),
        field::defaulted("profileSwitcherOnHover", &O::profileSwitcherOnHover),
        field::defaulted("profileSwipe", &O::profileSwipe), field::defaulted("showMenuBarIcon", &O::showMenuBarIcon),
        field::defaulted("reduceTransparency", &O::reduceTransparency),
        field::defaulted("hideFromScreenCapture", &O::hideFromScreenCapture),
        field::defaulted("classicMenu", &O::classicMenu), field::defaulted("appIconStyle", &O::appIconStyle),
        field::defaulted("customAppIcons", &O::customAppIcons), field::defaulted("profileRules", &O::profileRules),
        field::defaulted("displayProfiles", &O::displayProfiles),
        field::defaulted("backgroundImage", &O::backgroundImage),
        field::defaulted("backgroundBlur", &O::backgroundBlur), field::defaulted("backgroundDim", &O::backgroundDim),
        field::defaulted("commandBarEnabled", &O::commandBarEnabled),
        field::defaulted("commandBarKey", &O::commandBarKey),
        field::defaulted("commandBarModifiers", &O::commandBarModifiers),
        field::defaulted("dockShortcutEnabled", &O::dockShortcutEnabled),
        field::defaulted("profileShortcutEnabled", &O::profileShortcutEnabled),
        field::defaulted("shortcutKey", &O::shortcutKey), field::defaulted("shortcutModifiers", &O::shortcutModifiers),
        field::defaulted("profileModifiers", &O::profileModifiers), field::optional("desk", &O::desk));
  }
  bool operator==(const DesktopOptions&) const = default;
};

}  // namespace tarnwick
