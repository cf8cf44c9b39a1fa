#include "config/CalendarFolders.h"

#include <QDir>

#include "config/MediaConnection.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kMark = "calendarFolder:"_L1;

QString entryOf(const QString& path) { return kMark + QDir::cleanPath(path); }

}  // namespace

QStringList CalendarFolders::of(const DockConfiguration& config) {
  QStringList folders;
  for (const QString& connection : config.nativeConnections.value_or(QStringList())) {
    if (!connection.startsWith(kMark)) continue;
    const QString path = connection.sliced(kMark.size());
    if (QDir::isAbsolutePath(path) && !folders.contains(path)) folders << path;
  }
  return folders;
}

void CalendarFolders::add(DockConfiguration& config, const QString& path) {
  if (!QDir::isAbsolutePath(path) || of(config).contains(QDir::cleanPath(path))) return;
  // What is connected without a list stays so with one.
  if (!config.nativeConnections) config.nativeConnections = QStringList{MediaConnection::kMark};
  config.nativeConnections->append(entryOf(path));
}

void CalendarFolders::remove(DockConfiguration& config, const QString& path) {
  if (config.nativeConnections) config.nativeConnections->removeAll(entryOf(path));
}

}  // namespace tarnwick
