#pragma once

#include <QList>
#include <QObject>
#include <QUrl>
#include <functional>
#include <map>

#include "apps/AppLaunch.h"
#include "apps/InstalledApps.h"
#include "apps/TrustedEntries.h"
#include "base/OrderedWork.h"
#include "base/Scheduler.h"

namespace tarnwick {

/// Starts and opens by what a tile knows: the path of a desktop entry, a file, an address. Where the installed
/// applications have not been read yet it waits for them. A desktop entry outside the folders of applications runs only
/// once the user has said so; every request to start or open one takes this way. Main thread only; every failure
/// comes as `failed`.
class AppOpener : public QObject {
  Q_OBJECT
 public:
  using Done = std::function<void(bool started)>;

  /// How long an unknown entry may take to be found, in seconds.
  static constexpr double kPatience = 5;

  /// All must outlive it. Its end waits for a look at a file that is under way.
  AppOpener(InstalledApps& apps, AppLaunch& launch, Scheduler& scheduler);

  /// Starts the application of a desktop entry, or what `request` asks of it.
  void start(const QString& entryPath, const LaunchRequest& request = {});
  /// Opens a file, folder or address with the application that the user has for it. `done` runs once, later, with
  /// whether an application was started.
  void open(const QUrl& url, const Done& done = {});
  /// Shows the trash in the file manager; `folder` is where its things lie, for one that knows no trash.
  void openTrash(const QString& folder);

  /// Which entries from anywhere may run. Without it none is remembered.
  void setTrusted(TrustedEntries* trusted) { trusted_ = trusted; }
  /// Asks whether an entry from anywhere may run; `run` is called when it may, and once at most. Without it such an
  /// entry is shown in its folder.
  std::function<void(const ForeignEntry& entry, const QString& action, const std::function<void()>& run)> askToRun;
  /// Shows a file in the file manager.
  std::function<void(const QString& path)> reveal;

 Q_SIGNALS:
  /// An application was started, to be brought forward by its own doing. The path is the one that was asked for, or
  /// that of the application which opens a file.
  void started(const QString& entryPath);
  /// A finished sentence for the user.
  void failed(const QString& message);

 private:
  struct Waiting {
    std::function<bool()> attempt;
    JobHandle patience;
  };

  /// Whether a path is an entry that no folder of applications holds.
  bool isForeign(const QString& path) const;
  void startForeign(const QString& path, const LaunchRequest& request);
  void decide(const ForeignEntry& found, const LaunchRequest& request);
  void confirm(const ForeignEntry& found, const LaunchRequest& request);
  bool launch(const QString& asked, const DesktopEntry& entry, const LaunchRequest& request);
  void openFound(const QUrl& url, const QStringList& types, const Done& done);
  /// Tries now and whenever the installed applications change, until `attempt` gives true; then or never.
  void whenKnown(std::function<bool()> attempt, std::function<void()> otherwise);
  void appsChanged();

  InstalledApps& apps_;
  AppLaunch& launch_;
  Scheduler& scheduler_;
  TrustedEntries* trusted_ = nullptr;
  OrderedWork looks_;  ///< The last member: its answers use the others.
  std::map<quint64, Waiting> waiting_;
  quint64 lastWaiting_ = 0;
};

}  // namespace tarnwick
