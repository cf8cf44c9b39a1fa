#pragma once

#include <functional>

#include "files/FolderReading.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

class Bookmarks;
class ClientWindows;
class ClipboardHistory;
class Connections;
class CurrencyRates;
class FolderStacks;
class InstalledApps;
class MachineDetails;
class MediaService;
class Pasteboard;
class ProcessMonitor;
class RecentFiles;
class ScreenshotFolder;
class SystemTemperature;
class Thumbnails;
class WindowService;
class ZoomMeetingService;

/// What tiles and panels read the user's files, the machine and applications from. All of it is borrowed and outlives
/// docks and panels. To replace one, give it where this is made: an assignment would write into what is referred to.
struct ReadingServices {
  RecentFiles& recent;
  Bookmarks& bookmarks;
  ScreenshotFolder& screenshots;
  FolderStacks& stacks;
  Thumbnails& thumbnails;
  ProcessMonitor& processes;
  const SystemTemperature& temperature;
  /// What only panels show.
  MachineDetails& machine;
  InstalledApps& apps;
  const ClientWindows& windows;  ///< Those of other programs.
  WindowService& windowService;
  ZoomMeetingService& meeting;
  MediaService& media;
  ClipboardHistory& clipboard;
  Pasteboard& pasteboard;
  Connections& connections;        ///< To services on the net.
  bool sendsNearby = false;        ///< As in ReadingFacts.
  CurrencyRates* rates = nullptr;  ///< Null where nobody can be asked for exchange rates.
  /// The pictures of applications, by what their tiles know them by; empty where there are none.
  TileIcons icons{};
  /// Answers in place of the disk, for pictures of panels; empty otherwise.
  std::function<FolderContents(const FolderRequest& request)> fixedFolder{};
};

}  // namespace tarnwick
