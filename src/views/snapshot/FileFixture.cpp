#include "views/snapshot/FileFixture.h"

#include <QFileInfo>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <functional>

#include "files/Bookmarks.h"
#include "files/RecentFiles.h"
#include "files/ScreenshotFolder.h"
#include "files/Thumbnails.h"
#include "system/SystemMetrics.h"
#include "views/families/files/FileItems.h"
#include "views/theme/SnapshotScenery.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kPictures = u"/home/robin/Pictures/Screenshots"_s;

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
    entries.append({kPictures + u'/' + name, name, false, 184'000 + i * 7000, taken});
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

ProcessUsage process(const QString& name, double cpu, double megabytes) {
  static qint32 pid = 4200;
  ProcessUsage usage;
  usage.reading = {++pid, 1, name, 0, static_cast<quint64>(megabytes * 1024 * 1024)};
  usage.cpu = cpu;
  return usage;
}

/// Each reading comes as much later as the one before.
class FixedMachine final : public MachineDetails {
 public:
  MachineReading read() override {
    static constexpr quint64 busy[] = {42, 16, 9, 34, 7, 22, 28, 15};
    ++readings_;
    MachineReading reading;
    for (const quint64 each : busy) reading.cores << CoreTicks{readings_ * each, readings_ * 100};
    reading.frequency = 2.4e9;
    reading.load = 1.84;
    reading.uptime = 76 * 3600;
    constexpr double giga = 1024.0 * 1024 * 1024;
    reading.memory = MemoryParts{5.9 * giga, 1.6 * giga, 2.3 * giga, 6.2 * giga, 0.2 * giga, 4 * giga};
    return reading;
  }

 private:
  quint64 readings_ = 0;
};

QList<double> curve(double base, double swing, double phase) {
  QList<double> values;
  for (int i = 0; i < SystemMetrics::depth; ++i)
    values << std::max(0.0, base + swing * (std::sin((i + phase) * 0.22) * 0.65 + std::sin((i + phase) * 0.61) * 0.35));
  return values;
}

}  // namespace

FileFixture::FileFixture(const QDateTime& now, Scheduler& scheduler)
    : now_(now),
      recent_(std::make_unique<RecentFiles>(QString(), scheduler)),
      bookmarks_(std::make_unique<Bookmarks>(BookmarkPlaces(), scheduler)),
      screenshots_(std::make_unique<ScreenshotFolder>(QString(), scheduler)),
      thumbnails_(std::make_unique<Thumbnails>(QString())),
      machine_(std::make_unique<FixedMachine>()) {
  recent_->setFixed({{u"/home/robin/Documents/Quarterly summary.pdf"_s, now.addSecs(-600)},
                     {u"/home/robin/Pictures/museum.jpg"_s, now.addSecs(-4300)},
                     {u"/home/robin/Documents/Release plan.md"_s, now.addSecs(-9000)},
                     {u"/home/robin/Projects/dock/ring-width.svg"_s, now.addDays(-1)},
                     {u"/home/robin/Documents/budget.ods"_s, now.addDays(-2)}});
  bookmarks_->setFixed({{u"Release notes"_s, QUrl(u"https://docs.example.org/releases"_s), u"Work"_s},
                        {u"Weather in Kendal"_s, QUrl(u"https://weather.example.com/kendal"_s), {}},
                        {u"Icon grid, all sizes"_s, QUrl(u"https://design.example.net/grid"_s), u"Design"_s},
                        {u"Timetable"_s, QUrl(u"https://trains.example.com/"_s), u"Travel"_s}});
  const QList<FolderEntry> shots = screenshotEntries(now);
  screenshots_->setFixed(kPictures, shots);
  for (int i = 0; i < shots.size(); ++i)
    thumbnails_->setFixed(shots[i].path, shots[i].modified, kPanelThumbnail, landscape(i));
  for (const FolderEntry& entry : folder({}, now).entries)
    if (FolderReading::isPicture(entry.name))
      for (const QString& where : {u"/home/robin/Documents"_s, u"/home/robin/Downloads"_s})
        thumbnails_->setFixed(where + entry.path, entry.modified, kPanelThumbnail,
                              landscape(static_cast<int>(entry.name.size() % 5)));
}

FileFixture::~FileFixture() = default;

ReadingServices FileFixture::services() const {
  ReadingServices services{recent_.get(), bookmarks_.get(), screenshots_.get(), thumbnails_.get()};
  services.machine = machine_.get();
  services.fixedFolder = [now = now_](const FolderRequest& request) { return folder(request, now); };
  return services;
}

ReadingFacts FileFixture::readings(const QDateTime& now) {
  ReadingFacts readings;
  readings.downloadHistory = curve(1.6e6, 1.2e6, 3);
  readings.uploadHistory = curve(240e3, 160e3, 9);
  readings.celsius = 54;
  readings.celsiusHistory = curve(48, 8, 22);
  readings.celsiusHistory.last() = 54;
  readings.processes = {process(u"Browser"_s, 18.2, 3170),  process(u"Editor"_s, 11, 1430),
                        process(u"Indexer"_s, 4.1, 310),    process(u"Player"_s, 2.3, 260),
                        process(u"Mail"_s, 1.2, 610),       process(u"Messages"_s, 0.8, 505),
                        process(u"compositor"_s, 0.7, 190), process(u"Terminal"_s, 0.2, 84)};
  readings.processMessage = u"CPU uses one core as 100%. RAM is each process’s physical footprint."_s;
  for (const RunningApp& app : running()) readings.running.append({app.identity, app.name, app.iconName, app.active});
  readings.recentNames = {u"Quarterly summary.pdf"_s, u"museum.jpg"_s, u"Release plan.md"_s};
  readings.screenshots.emplace();
  int mood = 0;
  for (const FolderEntry& shot : screenshotEntries(now).mid(0, 2)) {
    readings.screenshots->append({{shot.path, landscape(mood)}, shot.modified});
    ++mood;
  }
  readings.bookmarks = 24;
  return readings;
}

std::shared_ptr<const AppIndex> FileFixture::applications() {
  QList<DesktopEntry> entries;
  for (const QString& name : {u"Browser"_s,
                              u"Calculator"_s,
                              u"Calendar"_s,
                              u"Camera"_s,
                              u"Documents"_s,
                              u"Editor"_s,
                              u"Files"_s,
                              u"Fonts"_s,
                              u"Mail"_s,
                              u"Maps"_s,
                              u"Messages"_s,
                              u"Music"_s,
                              u"Photos"_s,
                              u"Player"_s,
                              u"Settings"_s,
                              u"Software"_s,
                              u"System Monitor"_s,
                              u"Terminal"_s,
                              u"Text to Speech and Dictation"_s,
                              u"Weather"_s}) {
    DesktopEntry entry;
    entry.id = name.toLower();
    entry.path = u"/usr/share/applications/%1.desktop"_s.arg(entry.id);
    entry.name = name;
    entry.iconName = entry.id;
    entries.append(entry);
  }
  return std::make_shared<AppIndex>(AppEnvironment(), entries, QHash<QString, DesktopEntry>(), MimeDefaults());
}

QList<RunningApp> FileFixture::running() {
  QList<RunningApp> apps;
  quint64 number = 0;
  for (const QString& name : {u"Browser"_s, u"Editor"_s, u"Terminal"_s, u"Mail"_s}) {
    ++number;
    RunningApp app;
    app.identity = number;
    app.name = name;
    app.desktopId = name.toLower();
    app.iconName = app.desktopId;
    app.path = u"/usr/share/applications/%1.desktop"_s.arg(app.desktopId);
    app.windows = {number * 10};
    app.active = number == 1;
    apps.append(app);
  }
  apps.first().windows.append(11);
  return apps;
}

QList<ClientWindow> FileFixture::windows() {
  QList<ClientWindow> windows;
  const auto add = [&windows](quint64 id, const QString& title) {
    ClientWindow window;
    window.id = id;
    window.title = title;
    windows.append(window);
  };
  add(10, u"Release notes"_s);
  add(11, u"Weather in Kendal"_s);
  add(20, u"tiles.cpp"_s);
  add(30, u"robin@kendal: ~"_s);
  add(40, u"Inbox"_s);
  windows.first().active = true;
  windows.last().minimised = true;
  return windows;
}

}  // namespace tarnwick
