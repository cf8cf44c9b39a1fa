#pragma once

#include <functional>

#include "files/FolderReading.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

class Bookmarks;
class ClientWindows;
class InstalledApps;
class MachineDetails;
class ProcessMonitor;
class RecentFiles;
class ScreenshotFolder;
class SystemTemperature;
class Thumbnails;

/// What tiles and panels read the user's files, the machine and applications from. Null for what this desktop lacks;
/// all of it is borrowed and outlives docks and panels.
struct ReadingServices {
  RecentFiles* recent = nullptr;
  Bookmarks* bookmarks = nullptr;
  ScreenshotFolder* screenshots = nullptr;
  Thumbnails* thumbnails = nullptr;
  ProcessMonitor* processes = nullptr;
  const SystemTemperature* temperature = nullptr;
  /// What only panels show.
  MachineDetails* machine = nullptr;
  InstalledApps* apps = nullptr;
  const ClientWindows* windows = nullptr;  ///< Those of other programs.
  bool sendsNearby = false;                ///< As in ReadingFacts.
  /// The pictures of applications, by what their tiles know them by; empty where there are none.
  TileIcons icons{};
  /// Answers in place of the disk, for pictures of panels; empty otherwise.
  std::function<FolderContents(const FolderRequest& request)> fixedFolder{};
};

}  // namespace tarnwick
