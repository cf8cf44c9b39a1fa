#include "views/tiles/ReadingSources.h"

#include <QFileInfo>
#include <QSet>

#include "files/Bookmarks.h"
#include "files/RecentFiles.h"
#include "files/ScreenshotFolder.h"
#include "files/Thumbnails.h"
#include "system/ProcessMonitor.h"
#include "system/SystemTemperature.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kNames = 3;
constexpr qsizetype kShots = 2;
/// Enough for the picture in a large tile on a dense screen.
constexpr int kShotPixels = 160;

void addScreenshots(ReadingFacts& readings, const ReadingServices& services) {
  const QList<FolderEntry>& newest = services.screenshots->newest();
  if (!services.screenshots->loaded()) return;
  readings.screenshots.emplace();
  readings.screenshotProblem = services.screenshots->problem();
  for (const FolderEntry& entry : newest.mid(0, kShots)) {
    QImage image;
    if (services.thumbnails) image = services.thumbnails->of(entry.path, entry.modified, kShotPixels);
    const QString key = u"%1 %2"_s.arg(entry.path).arg(entry.modified.toSecsSinceEpoch());
    readings.screenshots->append({{key, image}, entry.modified});
  }
}

}  // namespace

void addReadings(ReadingFacts& readings, const QList<DockWidget>& widgets, const ReadingServices& services) {
  QSet<QString> kinds;
  for (const DockWidget& widget : widgets) kinds.insert(widget.kind);
  if (services.recent && kinds.contains(u"recentFiles"_s))
    for (const RecentFile& file : services.recent->list().mid(0, kNames))
      readings.recentNames.append(QFileInfo(file.path).fileName());
  if (services.screenshots && kinds.contains(u"screenshots"_s)) addScreenshots(readings, services);
  if (services.bookmarks && kinds.contains(u"bookmarks"_s)) {
    const qsizetype count = services.bookmarks->list().size();
    if (services.bookmarks->loaded()) readings.bookmarks = count;
  }
  if (services.processes && kinds.contains(u"processTopApps"_s)) {
    readings.processes = services.processes->rows();
    readings.processMessage = services.processes->message();
  }
  if (services.temperature && (kinds.contains(u"temperature"_s) || kinds.contains(u"temperatureChart"_s))) {
    readings.celsius = services.temperature->celsius();
    readings.celsiusHistory = services.temperature->history();
  }
}

}  // namespace tarnwick
