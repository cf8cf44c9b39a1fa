#include "views/families/files/FilesRoom.h"

#include <QFileInfo>
#include <QPainter>
#include <algorithm>
#include <functional>

#include "views/families/files/FileItems.h"
#include "views/theme/SnapshotScenery.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString pictures() { return u"/home/robin/Pictures/Screenshots"_s; }

QImage landscape(int which) {
  QImage image(256, 160, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  SnapshotScenery::paintLandscape(painter, image.rect(), which);
  return image;
}

QList<FolderEntry> screenshotEntries(const QDateTime& now) {
  QList<FolderEntry> entries;
  for (int i = 0; i < 8; ++i) {
    const QDateTime taken = now.addSecs(-130 - i * i * 5400);
    const QString name = u"Screenshot from %1.png"_s.arg(taken.toString(u"yyyy-MM-dd HH-mm-ss"_s));
    entries.append({pictures() + u'/' + name, name, false, 184'000 + i * 7000, taken});
  }
  return entries;
}

FolderContents folder(const FolderRequest& request, const QDateTime& now) {
  struct Thing {
    const char* name;
    bool isFolder;
    int hours;
  };
  static constexpr Thing things[] = {
      {"Travel", true, 2},         {"Invoices 2026", true, 30},    {"Quarterly summary.pdf", false, 3},
      {"tiles.png", false, 1},     {"museum.jpg", false, 26},      {"notes.txt", false, 7},
      {"budget.ods", false, 52},   {"Release plan.md", false, 75}, {"talk.odp", false, 120},
      {"recording.ogg", false, 9}, {"archive.zip", false, 200},    {"letter.odt", false, 31},
  };
  FolderContents contents;
  for (const Thing& thing : things) {
    const QString name = QString::fromLatin1(thing.name);
    contents.entries.append({request.folder + u'/' + name, name, thing.isFolder, thing.isFolder ? 0 : 48'000,
                             now.addSecs(-3600 * thing.hours)});
  }
  std::ranges::sort(contents.entries, std::greater(), &FolderEntry::modified);
  contents.total = contents.entries.size();
  return contents;
}

QStringList shelf() {
  return {u"/home/robin/Quarterly summary.pdf"_s, u"/home/robin/tiles.png"_s, u"/home/robin/notes.txt"_s};
}

}  // namespace

void pictureFiles(TileSources& sources) {
  sources.shelfItems = shelf().size();
  sources.trashItems = 12;
  ReadingFacts& readings = sources.readings;
  readings.recentNames = {u"Quarterly summary.pdf"_s, u"museum.jpg"_s, u"Release plan.md"_s};
  readings.screenshots.emplace();
  int mood = 0;
  for (const FolderEntry& shot : screenshotEntries(sources.now).mid(0, 2)) {
    readings.screenshots->append({{shot.path, landscape(mood)}, shot.modified});
    ++mood;
  }
  readings.bookmarks = 24;
}

void fillStoreWithFiles(AppStore& store, const QDateTime&) {
  store.edit([](DockConfiguration& config) { config.shelf = shelf(); });
}

void fillReadingsWithFiles(const PicturedParts& parts) {
  const QDateTime& now = parts.now;
  FixedReadings& readings = parts.readings;
  readings.recent.setFixed({{u"/home/robin/Documents/Quarterly summary.pdf"_s, now.addSecs(-600)},
                            {u"/home/robin/Pictures/museum.jpg"_s, now.addSecs(-4300)},
                            {u"/home/robin/Documents/Release plan.md"_s, now.addSecs(-9000)},
                            {u"/home/robin/Projects/dock/ring-width.svg"_s, now.addDays(-1)},
                            {u"/home/robin/Documents/budget.ods"_s, now.addDays(-2)}});
  readings.bookmarks.setFixed({{u"Release notes"_s, QUrl(u"https://docs.example.org/releases"_s), u"Work"_s},
                               {u"Weather in Kendal"_s, QUrl(u"https://weather.example.com/kendal"_s), {}},
                               {u"Icon grid, all sizes"_s, QUrl(u"https://design.example.net/grid"_s), u"Design"_s},
                               {u"Timetable"_s, QUrl(u"https://trains.example.com/"_s), u"Travel"_s}});
  const QList<FolderEntry> shots = screenshotEntries(now);
  readings.screenshots.setFixed(pictures(), shots);
  for (int i = 0; i < shots.size(); ++i)
    readings.thumbnails.setFixed(shots[i].path, shots[i].modified, kPanelThumbnail, landscape(i));
  for (const FolderEntry& entry : folder({}, now).entries)
    if (FolderReading::isPicture(entry.name))
      for (const QString& where : {u"/home/robin/Documents"_s, u"/home/robin/Downloads"_s})
        readings.thumbnails.setFixed(where + entry.path, entry.modified, kPanelThumbnail,
                                     landscape(static_cast<int>(entry.name.size() % 5)));
  readings.folder = [now](const FolderRequest& request) { return folder(request, now); };
}

}  // namespace tarnwick
