#pragma once

#include "apps/InstalledApps.h"
#include "clipboard/ClipboardHistory.h"
#include "clipboard/ports/Pasteboard.h"
#include "files/Bookmarks.h"
#include "files/FolderStacks.h"
#include "files/RecentFiles.h"
#include "files/ScreenshotFolder.h"
#include "files/Thumbnails.h"
#include "media/MediaService.h"
#include "services/Connections.h"
#include "store/NoDesktop.h"
#include "system/ProcessMonitor.h"
#include "system/SystemTemperature.h"
#include "system/ports/MachineDetails.h"
#include "views/tiles/ReadingServices.h"
#include "windows/WindowService.h"
#include "windows/ZoomMeetingService.h"

namespace tarnwick {

/// A machine that reports what it was given; nothing without that.
class GivenMachine final : public MachineDetails {
 public:
  MachineReading read() override { return reading ? reading() : MachineReading(); }
  std::function<MachineReading()> reading;
};

/// No player runs.
class NoPlayers final : public Players {
 public:
  void follow(bool) override {}
  bool isAvailable() const override { return true; }
  bool isKnown() const override { return true; }
  QList<MediaPlayer> all() const override { return {}; }
  void read(const QString&, QObject*, std::function<void(bool)>) override {}
  void act(const QString&, const MediaAction&, QObject*, std::function<void(bool)>) override {}
};

/// What tiles and panels read where there is no desktop, for pictures and tests: nothing, until something is set fixed
/// here. Nothing of it is read from anywhere. Must outlive docks and panels.
class FixedReadings {
 public:
  /// `scheduler` must outlive it.
  explicit FixedReadings(Scheduler& scheduler);

  ReadingServices services();

  RecentFiles recent;
  Bookmarks bookmarks;
  ScreenshotFolder screenshots;
  FolderStacks stacks;
  Thumbnails thumbnails;
  ProcessMonitor processes;
  SystemTemperature temperature;
  GivenMachine machine;
  InstalledApps apps;
  SessionEvents session;
  GivenWindows windows;
  QList<RunningApp> running;  ///< Whose windows they are.
  WindowService windowService;
  ZoomMeetingService meeting;
  NoPlayers players;
  MediaService media;
  ClipboardHistory clipboard;
  StillPasteboard pasteboard;
  Connections connections;
  TileIcons icons;
  std::function<FolderContents(const FolderRequest& request)> folder;
};

}  // namespace tarnwick
