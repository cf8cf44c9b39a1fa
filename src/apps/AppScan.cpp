#include "apps/AppScan.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kDeepest = 8;
constexpr int kMostFiles = 20000;

class Reader {
 public:
  Reader(const AppEnvironment& environment, const std::stop_token& stop) : environment_(environment), stop_(stop) {}

  void applications() {
    for (const QString& root : environment_.applicationFolders()) {
      // Only the user's own files are likely to be edited where they are; packages replace theirs, which the folder
      // shows.
      own_ = root == environment_.dataHome + "/applications"_L1;
      if (QFileInfo(root).isDir())
        folder(root, {}, 0);
      else
        await(root);
    }
  }

  void defaults() {
    for (const QString& path : MimeDefaults::files(environment_) + MimeDefaults::terminalFiles(environment_))
      watchOrAwait(path);
    defaults_ = MimeDefaults::read(environment_);
  }

  void other(const QString& path) {
    watchOrAwait(path);
    if (auto entry = DesktopEntry::read(path, environment_.locales); entry && !entry->hidden)
      others_.insert(path, *entry);
  }

  AppScan result() {
    AppScan scan;
    scan.index = AppIndex(environment_, std::move(entries_), std::move(others_), std::move(defaults_));
    scan.watched = std::move(watched_);
    scan.awaited = std::move(awaited_);
    return scan;
  }

 private:
  void folder(const QString& path, const QString& prefix, int depth) {
    const QString real = QFileInfo(path).canonicalFilePath();
    if (depth > kDeepest || visited_.contains(real)) return;
    visited_.insert(real);
    watched_.insert(path, AppScan::changeOf(path));
    const auto contents =
        QDir(path).entryInfoList(QDir::Files | QDir::Dirs | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& info : contents) {
      if (stop_.stop_requested() || seen_.size() > kMostFiles) return;
      if (info.isDir())
        folder(info.filePath(), prefix + info.fileName() + u'-', depth + 1);
      else if (info.fileName().endsWith(".desktop"_L1))
        file(info, prefix + info.fileName().chopped(8));
    }
  }

  void file(const QFileInfo& info, const QString& id) {
    // The first file of an id stands for it, even one that hides the application or cannot be read.
    if (seen_.contains(id)) return;
    seen_.insert(id);
    if (own_ && info.isFile()) watched_.insert(info.filePath(), info.lastModified().toMSecsSinceEpoch());
    auto entry = DesktopEntry::read(info.filePath(), environment_.locales);
    if (!entry || entry->hidden || entry->type != DesktopEntry::Type::Application) return;
    if (!entry->tryExec.isEmpty() && environment_.findExecutable(entry->tryExec).isEmpty()) return;
    entry->id = id;
    entries_ << *entry;
  }

  void watchOrAwait(const QString& path) {
    if (const qint64 change = AppScan::changeOf(path); change > 0)
      watched_.insert(path, change);
    else
      await(path);
  }

  void await(const QString& path) {
    QString missing = path;
    for (;;) {
      const QString parent = QFileInfo(missing).path();
      if (parent == missing) return;
      if (QFileInfo(parent).isDir()) {
        awaited_[parent].insert(missing);
        if (!watched_.contains(parent)) watched_.insert(parent, AppScan::changeOf(parent));
        return;
      }
      missing = parent;
    }
  }

  const AppEnvironment& environment_;
  const std::stop_token& stop_;
  bool own_ = false;
  QSet<QString> visited_;
  QSet<QString> seen_;
  QList<DesktopEntry> entries_;
  QHash<QString, DesktopEntry> others_;
  MimeDefaults defaults_;
  QHash<QString, qint64> watched_;
  QHash<QString, QSet<QString>> awaited_;
};

}  // namespace

AppScan AppScan::run(const AppEnvironment& environment, const QSet<QString>& others, const std::stop_token& stop) {
  Reader reader(environment, stop);
  reader.applications();
  reader.defaults();
  for (const QString& path : others) {
    if (stop.stop_requested()) break;
    reader.other(path);
  }
  return reader.result();
}

qint64 AppScan::changeOf(const QString& path) {
  const QFileInfo info(path);
  return info.exists() ? std::max<qint64>(1, info.lastModified().toMSecsSinceEpoch()) : 0;
}

}  // namespace tarnwick
