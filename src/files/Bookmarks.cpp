#include "files/Bookmarks.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <array>

#include "base/SmallFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Below the configuration folder.
constexpr std::array kBrowsers = {"google-chrome"_L1, "chromium"_L1,       "BraveSoftware/Brave-Browser"_L1,
                                  "vivaldi"_L1,       "microsoft-edge"_L1, "opera"_L1};

struct Sandbox {
  QLatin1StringView folder;  ///< Below the home folder.
  QLatin1StringView browser;
};
constexpr std::array kSandboxes = {
    Sandbox{".var/app/com.google.Chrome/config"_L1, "google-chrome"_L1},
    Sandbox{".var/app/org.chromium.Chromium/config"_L1, "chromium"_L1},
    Sandbox{".var/app/com.brave.Browser/config"_L1, "BraveSoftware/Brave-Browser"_L1},
    Sandbox{".var/app/com.vivaldi.Vivaldi/config"_L1, "vivaldi"_L1},
    Sandbox{"snap/chromium/common"_L1, "chromium"_L1},
};

/// Below the home folder, each with its profiles.
constexpr std::array kFirefoxes = {".mozilla/firefox"_L1, ".var/app/org.mozilla.firefox/.mozilla/firefox"_L1,
                                   "snap/firefox/common/.mozilla/firefox"_L1};
constexpr auto kBackups = "bookmarkbackups"_L1;

constexpr std::array kXbelFiles = {"konqueror/bookmarks.xml"_L1, "falkon/bookmarks.xbel"_L1};

/// The bookmark files of one browser's profiles.
QStringList profilesOf(const QString& folder) {
  QStringList names{u"."_s, u"Default"_s};
  names += QDir(folder).entryList({u"Profile *"_s}, QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
  QStringList files;
  for (const QString& name : names) {
    const QString file = QDir::cleanPath(u"%1/%2/Bookmarks"_s.arg(folder, name));
    if (QFileInfo(file).isFile()) files.append(file);
  }
  return files;
}

/// The newest backup of each profile; their names begin with the day.
QStringList backupsOf(const QString& folder) {
  QStringList files;
  for (const QString& profile : QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
    const QDir backups(u"%1/%2/%3"_s.arg(folder, profile, kBackups));
    const QStringList names = backups.entryList({u"bookmarks-*.jsonlz4"_s}, QDir::Files, QDir::Name);
    if (!names.isEmpty()) files.append(backups.filePath(names.last()));
  }
  return files;
}

/// What is watched for a file: itself, or for one of many the folder into which the next one is put.
QString watched(const QString& file) {
  const QFileInfo info(file);
  return info.dir().dirName() == kBackups ? info.path() : file;
}

QList<Bookmark> bookmarksOf(const QString& file, const QByteArray& text) {
  if (file.endsWith(".jsonlz4"_L1)) return BookmarkText::fromFirefox(text);
  return QFileInfo(file).fileName() == "Bookmarks"_L1 ? BookmarkText::fromChromium(text) : BookmarkText::fromXbel(text);
}

}  // namespace

Bookmarks::Bookmarks(BookmarkPlaces places, Scheduler& scheduler, QObject* parent)
    : QObject(parent), places_(std::move(places)), watch_(scheduler) {
  connect(&watch_, &FileWatch::changed, this, &Bookmarks::load);
}

const QList<Bookmark>& Bookmarks::list() {
  if (!asked_) {
    asked_ = true;
    load();
  }
  return list_;
}

void Bookmarks::setFixed(const QList<Bookmark>& list) {
  asked_ = loaded_ = true;
  list_ = list;
}

void Bookmarks::load() {
  work_.start(
      [places = places_](const std::stop_token& stop) {
        Read read;
        read.files = files(places);
        read.list = Bookmarks::read(read.files, stop);
        return read;
      },
      [this](Read read) {
        QStringList paths{places_.configHome};
        if (!read.files.isEmpty()) paths.clear();
        for (const QString& file : read.files) paths.append(watched(file));
        watch_.watch(paths);
        if (loaded_ && read.list == list_) return;
        loaded_ = true;
        list_ = std::move(read.list);
        Q_EMIT changed();
      });
}

QStringList Bookmarks::files(const BookmarkPlaces& places) {
  QStringList files;
  for (const QLatin1StringView browser : kBrowsers) files += profilesOf(places.configHome + u'/' + browser);
  for (const Sandbox& sandbox : kSandboxes)
    files += profilesOf(u"%1/%2/%3"_s.arg(places.home, sandbox.folder, sandbox.browser));
  for (const QLatin1StringView folder : kFirefoxes) files += backupsOf(places.home + u'/' + folder);
  for (const QLatin1StringView name : kXbelFiles)
    if (const QString file = places.dataHome + u'/' + name; QFileInfo(file).isFile()) files.append(file);
  return files;
}

QList<Bookmark> Bookmarks::read(const QStringList& files, const std::stop_token& stop) {
  QList<Bookmark> all;
  QSet<QUrl> known;
  for (const QString& file : files) {
    if (stop.stop_requested()) break;
    const QByteArray text = SmallFile::read(file, kMostBytes).value_or(QByteArray());
    for (Bookmark& each : bookmarksOf(file, text)) {
      if (known.contains(each.address) || all.size() >= BookmarkText::most) continue;
      known.insert(each.address);
      all.append(std::move(each));
    }
  }
  return all;
}

}  // namespace tarnwick
