#pragma once

#include <QByteArray>

namespace tarnwick {

/// The format of users' files, every key of it; a file is sorted the same way and indented.
inline const QByteArray kDocument = R"({
"activeProfileID":"00000000-0000-4000-8000-0000000000AA","alignment":"left","appAppearance":"auto",
"clipboard":["old"],"clipboardEnabled":true,
"desktop":{"appIconStyle":"dark","attachedDisplays":["D1"],"backgroundBlur":1.5,"backgroundDim":0.25,
"backgroundImage":"image.png","classicMenu":true,"commandBarEnabled":false,"commandBarKey":1,
"commandBarModifiers":2,"customAppIcons":{"app":"icon"},"displayNames":{"D1":"Écran"},
"displayProfiles":{"D1":"00000000-0000-4000-8000-0000000000AA"},"dockShortcutEnabled":false,
"hideDuringFullscreen":false,"hideFromScreenCapture":true,"profileModifiers":3,
"profileRules":[{"days":[1,7],"enabled":true,"endMinutes":60,"focusIdentifier":"work",
"id":"00000000-0000-4000-8000-0000000000EE","profileID":"00000000-0000-4000-8000-0000000000AA","startMinutes":0,"trigger":"focus"}],
"profileShortcutEnabled":false,"profileSwipe":false,"profileSwitcherOnHover":false,"reduceTransparency":true,
"reserveSpace":true,"revealHideDelay":0.75,"revealShowDelay":0.5,"runningAppsPlacement":"none",
"shortcutKey":4294967295,"shortcutModifiers":5,"showMenuBarIcon":false,"showPinnedWindows":false,"triggerSize":4.5,
"windowPreviews":true},
"display":"all","edgeGap":12.5,"fahrenheit":true,"floatingPositions":{"D1":[-10.5,20]},"foldersInFinder":true,
"launchAtLogin":true,"layout":"replaceAutoHide","liveApps":true,"monochrome":true,"nativeConnections":["calendar"],
"notificationsEnabled":true,"onboardingComplete":true,"overflow":"fit","position":"top",
"profiles":[{"id":"00000000-0000-4000-8000-0000000000AA","name":"Work",
"widgets":[{"id":"00000000-0000-4000-8000-0000000000BB","kind":"cpu","options":{"minutes":"25"},"title":"Title"}]}],
"rememberedMediaSource":"player","scale":1.25,"schema":1,"screenshotFolder":"/shots","shelf":["/file"],"spacing":3,
"style":"white","temperatureUnit":"auto","tileBorders":false,"tiles":false,
"todos":[{"completed":true,"id":"00000000-0000-4000-8000-0000000000DD","text":"Buy milk"}]})";

}  // namespace tarnwick
