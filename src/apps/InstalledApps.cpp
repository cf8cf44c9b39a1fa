#include "apps/InstalledApps.h"

#include <QDir>
#include <QFileInfo>

#include "base/ProbeCounters.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

// An installer writes many files in a row; one reading a moment later serves them all.
constexpr double kBurstSeconds = 0.4;

QList<DesktopEntry> listedIn(const AppIndex& index) {
  QList<DesktopEntry> listed;
  for (const DesktopEntry& entry : index.applications())
    if (index.isVisible(entry)) listed << entry;
  return listed;
}

}  // namespace

InstalledApps::InstalledApps(AppEnvironment environment, Scheduler& scheduler, QObject* parent)
    : QObject(parent), environment_(std::move(environment)), scheduler_(scheduler) {}

void InstalledApps::load() {
  if (!loaded_ && !scanning_ && !stopped_) scan();
}

QList<DesktopEntry> InstalledApps::all() {
  load();
  return listedIn(*index_);
}

QList<DesktopEntry> InstalledApps::enumerate(const AppEnvironment& environment) {
  return listedIn(AppScan::run(environment, {}, {}).index);
}

std::optional<DesktopEntry> InstalledApps::byId(const QString& id) {
  load();
  const DesktopEntry* entry = index_->byId(id);
  return entry ? std::optional(*entry) : std::nullopt;
}

std::optional<DesktopEntry> InstalledApps::byPath(const QString& path) {
  if (const DesktopEntry* entry = index_->byPath(path)) return *entry;
  const bool elsewhere = QDir::isAbsolutePath(path) && environment_.desktopIdOf(path).isEmpty();
  if (elsewhere && !stopped_ && !others_.contains(path)) {
    others_.insert(path);
    scan();
  } else {
    load();
  }
  return {};
}

std::shared_ptr<const AppIndex> InstalledApps::index() {
  load();
  return index_;
}

void InstalledApps::stop() {
  if (stopped_) return;
  stopped_ = true;
  scans_.cancel();
  soon_.reset();
  watcher_.reset();
}

void InstalledApps::setFixed(std::shared_ptr<const AppIndex> index) {
  stop();
  index_ = std::move(index);
  loaded_ = true;
}

void InstalledApps::scan() {
  if (stopped_) return;
  soon_.reset();
  again_ = scanning_;
  if (scanning_) return;
  scanning_ = true;
  ProbeCounters::count("installedAppScan");
  Q_EMIT scanStarted();
  scans_.start(
      [environment = environment_, others = others_, stop = scans_.stopToken()] {
        return std::make_shared<AppScan>(AppScan::run(environment, others, stop));
      },
      [this](const auto& scan) { take(scan); });
}

void InstalledApps::scanSoon() {
  if (!soon_ && !stopped_) soon_ = scheduler_.after(kBurstSeconds, [this] { scan(); });
}

void InstalledApps::take(const std::shared_ptr<AppScan>& scan) {
  scanning_ = false;
  watch(*scan);
  const bool differs = !loaded_ || !(*index_ == scan->index);
  loaded_ = true;
  if (differs) index_ = std::shared_ptr<const AppIndex>(scan, &scan->index);
  if (again_) this->scan();
  if (differs) Q_EMIT changed();
}

void InstalledApps::watch(const AppScan& scan) {
  if (!watcher_) {
    watcher_ = std::make_unique<QFileSystemWatcher>();
    connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, this, &InstalledApps::folderChanged);
    connect(watcher_.get(), &QFileSystemWatcher::fileChanged, this, &InstalledApps::scanSoon);
  }
  const QStringList before = watcher_->directories() + watcher_->files();
  QStringList gone;
  for (const QString& path : before)
    if (!scan.watched.contains(path)) gone << path;
  if (!gone.isEmpty()) watcher_->removePaths(gone);

  const QSet<QString> known(before.begin(), before.end());
  QStringList added;
  for (auto it = scan.watched.begin(); it != scan.watched.end(); ++it)
    if (!known.contains(it.key())) added << it.key();
  if (!added.isEmpty()) watcher_->addPaths(added);
  watched_ = scan.watched;
  awaited_ = scan.awaited;
  // What changed between the reading and the watching would otherwise be missed for good.
  for (const QString& path : added)
    if (AppScan::changeOf(path) != scan.watched.value(path)) return scanSoon();
}

void InstalledApps::folderChanged(const QString& path) {
  const auto awaited = awaited_.constFind(path);
  if (awaited == awaited_.constEnd() || !QFileInfo::exists(path)) return scanSoon();
  for (const QString& next : *awaited)
    if (QFileInfo::exists(next)) return scanSoon();
  // A change of another kind in a folder where applications may appear one day, unless applications are in it as well.
  if (environment_.applicationFolders().contains(path)) scanSoon();
}

}  // namespace tarnwick
