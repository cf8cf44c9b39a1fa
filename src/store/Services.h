#pragma once

namespace tarnwick {

class AppIcons;
class AppOpener;
class ClientWindows;
class ClockFormat;
class ContrastPreference;
class Files;
class FrameClocks;
class HeldModifiers;
class HotKeys;
class InstalledApps;
class LauncherHints;
class MotionPreference;
class NearbySharing;
class Notifications;
class Panels;
class Pasteboard;
class RunningApplications;
class Scheduler;
class ScreenColors;
class Screens;
class SessionEvents;
class Toggles;
class Tray;
class ZoneSensor;

/// What the program uses of the desktop: one reference each, made once by the adapters and valid for the whole run. A
/// facility that this desktop lacks is an object that says so; none is ever missing.
struct Services {
  Scheduler& scheduler;

  // Screens and what is on them.
  Screens& screens;
  Panels& panels;
  ZoneSensor& zones;
  FrameClocks& clocks;
  MotionPreference& motion;
  ContrastPreference& contrast;
  ClientWindows& windows;
  HotKeys& hotKeys;
  HeldModifiers& modifiers;
  ScreenColors& colors;
  Pasteboard& pasteboard;

  // The session.
  SessionEvents& session;
  Notifications& notifications;
  Toggles& toggles;
  Files& files;
  Tray& tray;
  ClockFormat& clockFormat;
  NearbySharing& nearby;

  // Applications.
  InstalledApps& installedApps;
  RunningApplications& runningApps;
  AppIcons& icons;
  AppOpener& opener;
  LauncherHints& hints;
};

}  // namespace tarnwick
