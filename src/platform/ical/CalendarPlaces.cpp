#include "platform/ical/CalendarPlaces.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <cerrno>
#include <memory>
#include <system_error>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "platform/ical/CalendarFileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

/// The first line of a small file beside the calendars.
QString firstLine(const QString& path) {
  constexpr qsizetype kMost = 200;
  try {
    const auto data = DurableFile::readIfPresent(path);
    return data ? QString::fromUtf8(data->first(std::min(kMost, data->size()))).section(u'\n', 0, 0).trimmed()
                : QString();
  } catch (const DomainError&) {
    return {};
  }
}

bool isCalendarName(const QByteArray& name) { return name.size() > 4 && name.right(4).toLower() == ".ics"; }

/// Looks through the places, once.
class Walk {
 public:
  explicit Walk(CalendarListing& into) : into_(into) {}

  void evolution(const CalendarPlaces& places) {
    if (places.evolutionData.isEmpty()) return;
    for (const auto& [kind, fileName] : {std::pair(u"calendar"_s, u"calendar.ics"_s), {u"tasks"_s, u"tasks.ics"_s}}) {
      const QString parent = places.evolutionData + u'/' + kind;
      if (!enter(parent)) continue;
      for (const QString& id : QDir(parent).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString folder = parent + u'/' + id;
        if (id == "trash"_L1 || !enter(folder)) continue;
        CalendarFile file = evolutionFile(places.evolutionSources, id, kind == "tasks"_L1);
        file.path = folder + u'/' + fileName;
        struct stat status {};
        if (::stat(QFile::encodeName(file.path).constData(), &status) == 0) add(file, status);
      }
    }
  }

  void folder(const QString& path, const QString& name, int depth) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    if (canonical.isEmpty() || seen_.contains(canonical)) return;
    seen_.insert(canonical);
    const std::unique_ptr<DIR, CloseFolder> opened(::opendir(QFile::encodeName(path).constData()));
    if (!opened) {
      const int reason = errno;
      await(path);
      into_.problems << CalendarFileWords::tr("The calendar folder “%1” could not be read: %2.")
                            .arg(QFileInfo(path).fileName(),
                                 QString::fromLocal8Bit(std::generic_category().message(reason).c_str()));
      return;
    }
    if (!remember(path)) return;
    CalendarFile file;
    file.calendarName = firstLine(path + "/displayname"_L1);
    file.fallbackName = name;
    file.colour = firstLine(path + "/color"_L1);
    file.mayChange = true;
    QStringList below;
    while (const dirent* entry = ::readdir(opened.get())) {
      const QByteArray entryName(entry->d_name);
      if (entryName.startsWith('.')) continue;
      struct stat status {};
      // Most entries of a folder of calendars are calendars; the rest is asked only for whether it is a folder.
      const bool mayBeFolder = entry->d_type == DT_DIR || entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN;
      if (!mayBeFolder && !isCalendarName(entryName)) continue;
      if (::fstatat(::dirfd(opened.get()), entry->d_name, &status, 0) != 0) continue;
      if (S_ISDIR(status.st_mode)) {
        below << path + u'/' + QFile::decodeName(entryName);
      } else if (isCalendarName(entryName) && S_ISREG(status.st_mode)) {
        file.path = path + u'/' + QFile::decodeName(entryName);
        if (!add(file, status)) return;
      }
    }
    if (depth >= CalendarListing::mostDepth) return;
    below.sort();
    for (const QString& next : below) folder(next, QFileInfo(next).fileName(), depth + 1);
  }

  /// Notes a folder, or where it may appear.
  bool enter(const QString& path) {
    if (QFileInfo(path).isDir()) return remember(path);
    await(path);
    return false;
  }

 private:
  void await(const QString& path) {
    QFileInfo at(path);
    while (!QFileInfo(at.path()).isDir() && at.path() != at.filePath()) at = QFileInfo(at.path());
    into_.awaited[at.path()].insert(at.fileName());
  }

  static CalendarFile evolutionFile(const QString& sources, const QString& id, bool isTasks) {
    CalendarFile file;
    file.isTasks = isTasks;
    const QString path = sources + u'/' + id + ".source"_L1;
    if (QFileInfo(path).isFile()) {
      const QSettings source(path, QSettings::IniFormat);
      file.calendarName = source.value(u"Data Source/DisplayName"_s).toString();
      file.colour = source.value(isTasks ? u"Task List/Color"_s : u"Calendar/Color"_s).toString();
    }
    // The one that is there from the beginning has a name in the user's language.
    file.fallbackName = CalendarFileWords::tr("Personal");
    return file;
  }

  bool add(CalendarFile file, const struct stat& status) {
    if (into_.files.size() >= CalendarListing::mostFiles) {
      if (!isFull_)
        into_.problems
            << CalendarFileWords::tr("There are more calendar files than Tarnwick reads (%1).").arg(into_.files.size());
      isFull_ = true;
      return false;
    }
    file.changed = qint64{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
    file.size = status.st_size;
    file.number = status.st_ino;
    into_.files.append(std::move(file));
    return true;
  }

  bool remember(const QString& path) {
    if (into_.folders.size() >= CalendarListing::mostFolders) return false;
    into_.folders << path;
    return true;
  }

  CalendarListing& into_;
  QSet<QString> seen_;
  bool isFull_ = false;
};

}  // namespace

CalendarPlaces CalendarPlaces::ofUser() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return {.evolutionData = data + "/evolution"_L1,
          .evolutionSources = config + "/evolution/sources"_L1,
          .folders = {QDir::homePath() + "/.calendars"_L1, data + "/calendars"_L1}};
}

CalendarListing CalendarListing::of(const CalendarPlaces& places) {
  CalendarListing listing;
  Walk walk(listing);
  walk.evolution(places);
  for (const QString& folder : places.folders) {
    const QString path = QDir::cleanPath(folder);
    if (QFileInfo(path).isDir()) {
      walk.folder(path, QFileInfo(path).fileName(), 0);
    } else {
      walk.enter(path);
    }
  }
  return listing;
}

}  // namespace tarnwick
