#include "views/families/files/FilesRoom.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <array>

#include "base/ForeignText.h"
#include "files/Bookmarks.h"
#include "files/FolderStacks.h"
#include "files/RecentFiles.h"
#include "files/ScreenshotFolder.h"
#include "files/Thumbnails.h"
#include "views/families/files/FileTiles.h"
#include "views/families/files/PlaceTiles.h"
#include "views/panels/Room.h"
#include "widgets/WidgetFolder.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString downloads() { return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation); }

constexpr WidgetOption kStack{
    .key = option::stack,
    .shape = FieldShape::Switch,
    .label = QT_TRANSLATE_NOOP("Library", "Show newest files"),
    .help = QT_TRANSLATE_NOOP("Library", "The widget shows the newest files of the folder as a stack."),
    .value = value::on.data()};
constexpr std::array kFolderOptions = {
    WidgetOption{.key = option::path, .shape = FieldShape::Folder, .label = QT_TRANSLATE_NOOP("Library", "Folder")},
    kStack,
};
constexpr std::array kDownloadsOptions = {
    WidgetOption{.key = option::path,
                 .shape = FieldShape::Folder,
                 .label = QT_TRANSLATE_NOOP("Library", "Folder"),
                 .usualPath = downloads},
    kStack,
};

constexpr std::array kDropOptions = {
    WidgetOption{.key = option::path,
                 .shape = FieldShape::Folder,
                 .label = QT_TRANSLATE_NOOP("Library", "Folder"),
                 .help = QT_TRANSLATE_NOOP("Library", "Files that are dropped on the widget go to this folder.")},
};

constexpr qsizetype kNames = 3;
/// Enough for the picture in a large tile on a dense screen.
constexpr int kShotPixels = 160;

void readRecent(ReadingFacts& readings, const ReadingServices& services) {
  readings.recentNames.clear();
  for (const RecentFile& file : services.recent.list().mid(0, kNames))
    readings.recentNames.append(ForeignText::line(QFileInfo(file.path).fileName()));
}

void readScreenshots(ReadingFacts& readings, const ReadingServices& services) {
  const QList<FolderEntry>& newest = services.screenshots.newest();
  readings.screenshots.reset();
  readings.screenshotProblem = services.screenshots.problem();
  if (!services.screenshots.loaded()) return;
  readings.screenshots.emplace();
  for (const FolderEntry& entry : newest.mid(0, kShownScreenshots)) {
    const QImage image = services.thumbnails.of(entry.path, entry.modified, kShotPixels);
    const QString key = u"%1 %2"_s.arg(entry.path).arg(entry.modified.toSecsSinceEpoch());
    readings.screenshots->append({{key, image}, entry.modified});
  }
}

void readStacks(ReadingFacts& readings, const QList<DockWidget>& widgets, const ReadingServices& services) {
  for (const DockWidget& widget : widgets) {
    if (!showsStack(widget)) continue;
    const QString folder = widgetFolder(widget);
    QList<StackedFile>& stack = readings.stacks[folder];
    stack.clear();
    for (const FolderEntry& entry : services.stacks.newest(folder)) {
      const QImage image = services.thumbnails.of(entry.path, entry.modified, kShotPixels);
      const QString key = u"%1 %2"_s.arg(entry.path).arg(entry.modified.toSecsSinceEpoch());
      stack.append({entry.name, {key, image}});
    }
  }
}

void readBookmarks(ReadingFacts& readings, const ReadingServices& services) {
  const qsizetype count = services.bookmarks.list().size();
  readings.bookmarks = services.bookmarks.loaded() ? std::optional<qint64>(count) : std::nullopt;
}

QString screenshotProblem(const TileSources& sources) { return sources.readings.screenshotProblem; }

void sampleRecent(TileSources& sources, const TileSources& samples) {
  if (sources.readings.recentNames.isEmpty()) sources.readings.recentNames = samples.readings.recentNames;
}
void sampleScreenshots(TileSources& sources, const TileSources& samples) {
  auto& shown = sources.readings.screenshots;
  if (shown && !shown->isEmpty()) return;
  shown = samples.readings.screenshots;
  if (!shown) return;
  for (ScreenshotFacts& shot : *shown) shot.taken = {};  // A sample has no age.
}

QMap<QString, QString> picturedFolder(const QDateTime&) { return {{option::path, u"/home/robin/Documents"_s}}; }

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Files)},
    RoomRow{.of = familyText(Family::Bookmarks),
            .content = contentOf<makeBookmarks>,
            .panel = makeBookmarksPanel,
            .read = readBookmarks},
    RoomRow{.of = familyText(Family::Search)},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::folderLauncher,
            .content = contentOf<makeFolder>,
            .panel = makeFolderPanel,
            .options = kFolderOptions,
            .readEach = readStacks,
            .pictured = picturedFolder},
    RoomRow{.of = kind::downloads,
            .content = contentOf<makeDownloads>,
            .panel = makeFolderPanel,
            .options = kDownloadsOptions,
            .readEach = readStacks},
    RoomRow{.of = kind::trash, .content = contentOf<makeTrash>, .panel = makeTrashPanel},
    RoomRow{.of = kind::fileShelf, .content = contentOf<makeShelf>, .panel = makeShelfPanel},
    RoomRow{.of = kind::recentFiles,
            .content = contentOf<makeRecentFiles>,
            .panel = makeRecentFilesPanel,
            .options = kDropOptions,
            .read = readRecent,
            .sample = sampleRecent},
    // It says how long ago its picture was taken.
    RoomRow{.of = kind::screenshots,
            .content = contentOf<makeScreenshots>,
            .panel = makeScreenshotsPanel,
            .options = kDropOptions,
            .problem = screenshotProblem,
            .read = readScreenshots,
            .sample = sampleScreenshots},
    RoomRow{.of = kind::finderSearch, .content = contentOf<makeFileSearch>, .panel = makeFileSearchPanel},
    RoomRow{.of = kind::webSearch, .content = contentOf<makeWebSearch>, .panel = makeWebSearchPanel},
};

}  // namespace

extern const Room kFilesRoom;
constinit const Room kFilesRoom{.name = "files"_L1,
                                .families = kFamilies,
                                .kinds = kKinds,
                                .picture = pictureFiles,
                                .fillStore = fillStoreWithFiles,
                                .fillReadings = fillReadingsWithFiles};

}  // namespace tarnwick
