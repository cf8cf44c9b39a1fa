#pragma once

#include <memory>

#include "apps/AppIndex.h"
#include "apps/RunningApp.h"
#include "base/Scheduler.h"
#include "desktop/ClientWindows.h"
#include "system/ports/MachineDetails.h"
#include "views/tiles/ReadingSources.h"

namespace tarnwick {

/// The files, applications and processes that pictures of the program show. Nothing of it is on any disk.
class FileFixture {
 public:
  /// `scheduler` must outlive it.
  FileFixture(const QDateTime& now, Scheduler& scheduler);
  ~FileFixture();

  /// What panels ask; it lives as long as this does.
  ReadingServices services() const;

  static ReadingFacts readings(const QDateTime& now);
  static std::shared_ptr<const AppIndex> applications();
  static QList<RunningApp> running();
  static QList<ClientWindow> windows();

 private:
  QDateTime now_;
  std::unique_ptr<RecentFiles> recent_;
  std::unique_ptr<Bookmarks> bookmarks_;
  std::unique_ptr<ScreenshotFolder> screenshots_;
  std::unique_ptr<Thumbnails> thumbnails_;
  std::unique_ptr<MachineDetails> machine_;
};

}  // namespace tarnwick
