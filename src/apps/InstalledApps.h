#pragma once

#include <QFileSystemWatcher>
#include <QList>
#include <QObject>
#include <QSet>
#include <memory>
#include <optional>

#include "apps/AppEnvironment.h"
#include "apps/AppIndex.h"
#include "apps/AppScan.h"
#include "apps/DesktopEntry.h"
#include "base/OrderedWork.h"
#include "base/Scheduler.h"

namespace tarnwick {

/// The applications that are installed. Nothing is read until the first question; the answer is then empty and
/// `changed` follows when the folders have been read on another thread. From then on changes in the folders are noticed
/// by themselves. Main thread only.
class InstalledApps : public QObject {
  Q_OBJECT
 public:
  /// `scheduler` must outlive it.
  InstalledApps(AppEnvironment environment, Scheduler& scheduler, QObject* parent = nullptr);

  /// Begins the first reading, if none has begun. Every look-up below does it too.
  void load();
  /// Whether the folders have been read once.
  bool loaded() const { return loaded_; }

  /// Those that belong into a list of applications on this desktop, sorted by name.
  QList<DesktopEntry> all();
  /// The same, read from the folders within the call, for what has no event loop. Blocks; any thread may ask.
  static QList<DesktopEntry> enumerate(const AppEnvironment& environment);
  /// By desktop-file id, with or without ".desktop". Finds also those that no list shows.
  std::optional<DesktopEntry> byId(const QString& id);
  /// By the path of a desktop entry. For a file in the folders that is the entry in force for its id, even if the file
  /// was overridden or has moved; a file elsewhere is read on another thread when it is first asked for, then watched.
  std::optional<DesktopEntry> byPath(const QString& path);
  /// Everything at once, for matching and for use on other threads. Never null.
  std::shared_ptr<const AppIndex> index();

  const AppEnvironment& environment() const { return environment_; }

  /// Knows these from here on and reads nothing more, for pictures.
  void setFixed(std::shared_ptr<const AppIndex> index);
  /// Ends reading and watching, and waits for nothing. What is known stays known; `changed` never comes again.
  void stop();

 Q_SIGNALS:
  /// The folders are about to be read.
  void scanStarted();
  /// The first reading has ended, or a later one found a difference.
  void changed();

 private:
  void scan();
  void scanSoon();
  void take(const std::shared_ptr<AppScan>& scan);
  void watch(const AppScan& scan);
  void folderChanged(const QString& path);

  AppEnvironment environment_;
  Scheduler& scheduler_;
  std::unique_ptr<QFileSystemWatcher> watcher_;
  std::shared_ptr<const AppIndex> index_ = std::make_shared<AppIndex>();
  QHash<QString, qint64> watched_;
  QHash<QString, QSet<QString>> awaited_;
  QSet<QString> others_;
  JobHandle soon_;
  bool scanning_ = false;
  bool again_ = false;
  bool loaded_ = false;
  bool stopped_ = false;
  OrderedWork scans_;  ///< The last member: its answers use the others.
};

}  // namespace tarnwick
