#pragma once

#include <memory>

#include "apps/AppIcons.h"
#include "apps/AppLaunch.h"
#include "apps/AppOpener.h"
#include "apps/InstalledApps.h"
#include "apps/RunningApplications.h"
#include "apps/ports/LauncherHints.h"
#include "desktop/ClockFormat.h"
#include "desktop/ContrastPreference.h"
#include "desktop/FrameClock.h"
#include "desktop/HeldModifiers.h"
#include "desktop/HotKeys.h"
#include "desktop/MotionPreference.h"
#include "desktop/NearbySharing.h"
#include "desktop/Notifications.h"
#include "desktop/Panels.h"
#include "desktop/ScreenColors.h"
#include "desktop/Screens.h"
#include "desktop/SessionEvents.h"
#include "desktop/Toggles.h"
#include "desktop/Tray.h"
#include "desktop/Zones.h"
#include "store/Services.h"
#include "support/FakeFiles.h"
#include "support/FakePasteboard.h"
#include "support/FakeWindows.h"
#include "support/TestFrameClock.h"

namespace tarnwick::test {

struct NoScreens final : Screens {
  QList<Screen> all() const override { return {}; }
  QString mainId() const override { return {}; }
};
struct NoPanels final : Panels {
  std::unique_ptr<Panel> make(std::unique_ptr<QWidget>) override { return {}; }
  bool isComposited() const override { return true; }
  bool canBlur() const override { return false; }
  Capability captureProtection() const override { return Capability::yes(); }
};
struct NoZones final : ZoneSensor {
  void watch(const QList<ZoneRequest>&) override {}
  PointerZones zones(const QString&) const override { return {}; }
  bool isDragging() const override { return false; }
};
struct TestClocks final : FrameClocks {
  std::unique_ptr<FrameClock> make(const QString&) override { return std::make_unique<TestFrameClock>(); }
};
struct FullMotion final : MotionPreference {
  bool reducesMotion() const override { return reduces; }
  bool reduces = false;
};
struct UsualContrast final : ContrastPreference {
  bool wants = false;
  bool wantsHighContrast() const override { return wants; }
};
struct FreeKeys final : HotKeys {
  HotKeyBinding bind(quint32, const HotKeyRequest&) override { return {true, {}, {}}; }
  void unbindAll() override {}
};
struct TestModifiers final : HeldModifiers {
  bool isWatched = false;
  Capability capability() const override { return Capability::yes(); }
  void watch(bool watched) override { isWatched = watched; }
};
struct NoColors final : ScreenColors {
  void pick(QObject*, std::function<void(const QString&)>, std::function<void(const QString&)>) override {}
};
struct QuietNotifications final : Notifications {
  Capability capability() const override { return Capability::yes(); }
  void post(const QString&, const QString&, std::function<void()>) override {}
};
struct StillToggles final : Toggles {
  ToggleState state(Toggle) const override { return {}; }
  void set(Toggle, bool) override {}
  void start() override {}
};
/// There is none until a test emits `found`.
struct TestTray final : Tray {
  int looks = 0;
  void look() override { ++looks; }
};
struct TestClockFormat final : ClockFormat {
  std::optional<bool> is24Hour;
  bool isStarted = false;
  std::optional<bool> uses24Hour() const override { return isStarted ? is24Hour : std::nullopt; }
  void start() override { isStarted = true; }
};
struct TestNearby final : NearbySharing {
  bool isThere = false;
  QList<QUrl> sent;
  bool isAvailable() const override { return isThere; }
  bool send(const QList<QUrl>& files) override {
    if (isThere) sent += files;
    return isThere;
  }
};
struct NoHints final : LauncherHints {
  void start() override {}
  LauncherHint of(const QString&) const override { return {}; }
};

/// A desktop on which nothing happens by itself. A test changes what it looks at; the applications are those of the
/// environment.
class TestServices {
 public:
  TestServices(Scheduler& scheduler, const AppEnvironment& environment, LaunchEnvironment variables = {})
      : scheduler_(scheduler),
        installedApps(environment, scheduler),
        runningApps(windows, installedApps, RunningApplications::Self{}),
        icons(environment),
        launch_(environment, std::move(variables), activation_),
        opener(installedApps, launch_, scheduler) {}

  /// The parts that stand in for others are given by whoever needs them.
  Services with(Panels& somePanels, FrameClocks& someClocks) { return with(screens, somePanels, zones, someClocks); }
  Services with(Screens& someScreens, Panels& somePanels, ZoneSensor& someZones, FrameClocks& someClocks) {
    return {scheduler_, someScreens, somePanels, someZones,     someClocks,  motion,        contrast, windows,
            hotKeys,    modifiers,   colors,     pasteboard,    session,     notifications, toggles,  files,
            tray,       clockFormat, nearby,     installedApps, runningApps, icons,         opener,   hints};
  }
  Services all() { return with(panels, clocks); }

 private:
  Scheduler& scheduler_;

 public:
  NoScreens screens;
  NoPanels panels;
  NoZones zones;
  TestClocks clocks;
  FullMotion motion;
  UsualContrast contrast;
  FakeWindows windows;
  FreeKeys hotKeys;
  TestModifiers modifiers;
  NoColors colors;
  FakePasteboard pasteboard;
  SessionEvents session;
  QuietNotifications notifications;
  StillToggles toggles;
  FakeFiles files;
  TestTray tray;
  TestClockFormat clockFormat;
  TestNearby nearby;
  InstalledApps installedApps;
  RunningApplications runningApps;
  AppIcons icons;

 private:
  NoActivation activation_;
  AppLaunch launch_;

 public:
  AppOpener opener;
  NoHints hints;
};

}  // namespace tarnwick::test
