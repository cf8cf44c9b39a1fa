#pragma once

#include <functional>

#include "files/FolderReading.h"

namespace tarnwick {

class Bookmarks;
class MachineDetails;
class ProcessMonitor;
class RecentFiles;
class ScreenshotFolder;
class SystemTemperature;
class Thumbnails;

/// What tiles and panels read the user's files and the machine from. Null for what this desktop lacks; all of it is
/// borrowed and outlives docks and panels.
struct ReadingServices {
  RecentFiles* recent = nullptr;
  Bookmarks* bookmarks = nullptr;
  ScreenshotFolder* screenshots = nullptr;
  Thumbnails* thumbnails = nullptr;
  const ProcessMonitor* processes = nullptr;
  const SystemTemperature* temperature = nullptr;
  /// What only panels show.
  MachineDetails* machine = nullptr;
  /// Answers in place of the disk, for pictures of panels; empty otherwise.
  std::function<FolderContents(const FolderRequest& request)> fixedFolder{};
};

}  // namespace tarnwick
