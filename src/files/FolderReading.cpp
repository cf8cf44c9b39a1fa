#include "files/FolderReading.h"

#include <QCollator>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QTimeZone>
#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <vector>

namespace tarnwick {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

struct FolderReadingWords {
  Q_DECLARE_TR_FUNCTIONS(Files)
};

/// A thing whose dates have not been asked for yet.
struct Found {
  QString name;
  bool isFolder = false;
};

QString sentenceFor(const std::error_code& failure) {
  if (failure == std::errc::no_such_file_or_directory) return FolderReadingWords::tr("This folder no longer exists.");
  if (failure == std::errc::not_a_directory) return FolderReadingWords::tr("This is not a folder.");
  if (failure == std::errc::permission_denied)
    return FolderReadingWords::tr("You do not have permission to open this folder.");
  return FolderReadingWords::tr("This folder could not be read.");
}

std::vector<Found> look(const FolderRequest& request, const std::stop_token& stop, FolderContents& into) {
  std::vector<Found> found;
  std::error_code failure;
  fs::directory_iterator at(QFile::encodeName(request.folder).toStdString(), failure);
  if (failure) into.problem = sentenceFor(failure);
  into.isGone = failure == std::errc::no_such_file_or_directory;
  for (const fs::directory_iterator end; !failure && at != end && !stop.stop_requested(); at.increment(failure)) {
    const QString name = QFile::decodeName(QByteArray::fromStdString(at->path().filename().string()));
    if (name.startsWith(u'.')) continue;
    std::error_code ignored;
    const bool isFolder = at->is_directory(ignored);
    if (request.onlyPictures && (isFolder || !FolderReading::isPicture(name))) continue;
    found.push_back({name, isFolder});
  }
  return found;
}

/// False when it has gone. `folder` ends in a slash.
bool complete(const QString& folder, const Found& found, FolderEntry& entry) {
  const QFileInfo info(folder + found.name);
  if (!info.exists() && !info.isSymLink()) return false;
  entry = {info.filePath(), found.name, found.isFolder, found.isFolder ? 0 : info.size(), info.lastModified()};
  return true;
}

template <class Less>
void keepFirst(auto& list, qsizetype most, Less less) {
  const auto middle = list.begin() + std::min<std::ptrdiff_t>(most, static_cast<std::ptrdiff_t>(list.size()));
  std::partial_sort(list.begin(), middle, list.end(), less);
  list.erase(middle, list.end());
}

/// Comes before others in an order that does not depend on names alone.
template <class Less>
void takeFirst(FolderContents& contents, const QString& folder, const std::vector<Found>& found, qsizetype most,
               const std::stop_token& stop, Less isBefore) {
  // Of a folder of many thousands only a few are ever kept at once.
  constexpr std::size_t kMostWaiting = 4096;
  std::vector<FolderEntry> entries;
  for (const Found& each : found) {
    if (stop.stop_requested()) break;
    if (FolderEntry entry; complete(folder, each, entry)) entries.push_back(std::move(entry));
    if (entries.size() >= kMostWaiting + static_cast<std::size_t>(most)) keepFirst(entries, most, isBefore);
  }
  keepFirst(entries, most, isBefore);
  contents.entries = QList<FolderEntry>(entries.begin(), entries.end());
}

bool isNewer(const FolderEntry& a, const FolderEntry& b) {
  return a.modified != b.modified ? a.modified > b.modified : a.name < b.name;
}

/// The order of names, as people expect it.
class NameOrder {
 public:
  NameOrder()
      // Without a language names sort by their bytes, which nobody expects of a list.
      : collator_(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale()) {
    collator_.setNumericMode(true);
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
  }
  bool isBefore(const QString& a, const QString& b) const {
    const int order = collator_.compare(a, b);
    return order != 0 ? order < 0 : a < b;
  }

 private:
  QCollator collator_;
};

/// By what names end with: files of one program are listed together.
QString kindOf(const QString& name) { return QFileInfo(name).suffix().toLower(); }

void takeByName(FolderContents& contents, const QString& folder, std::vector<Found>& found, FolderOrder order,
                qsizetype most) {
  const NameOrder names;
  keepFirst(found, most, [&names, order](const Found& a, const Found& b) {
    if (a.isFolder != b.isFolder) return a.isFolder;
    if (order == FolderOrder::Kind && !a.isFolder)
      if (const QString one = kindOf(a.name), other = kindOf(b.name); one != other) return one < other;
    return names.isBefore(a.name, b.name);
  });
  for (const Found& each : found)
    if (FolderEntry entry; complete(folder, each, entry)) contents.entries.append(std::move(entry));
}

}  // namespace

FolderContents FolderReading::read(const FolderRequest& request, const std::stop_token& stop) {
  FolderContents contents;
  std::vector<Found> found = look(request, stop, contents);
  contents.total = static_cast<qsizetype>(found.size());
  const qsizetype most = std::max<qsizetype>(0, request.most);
  const QString folder = request.folder.endsWith(u'/') ? request.folder : request.folder + u'/';
  const NameOrder names;
  switch (request.order) {
    case FolderOrder::Newest:
      takeFirst(contents, folder, found, most, stop, isNewer);
      break;
    case FolderOrder::Size:
      takeFirst(contents, folder, found, most, stop, [&names](const FolderEntry& a, const FolderEntry& b) {
        if (a.isFolder != b.isFolder) return a.isFolder;
        return a.size != b.size ? a.size > b.size : names.isBefore(a.name, b.name);
      });
      break;
    case FolderOrder::Name:
    case FolderOrder::Kind:
      takeByName(contents, folder, found, request.order, most);
      break;
  }
  return contents;
}

bool FolderReading::isPicture(const QString& name) {
  static constexpr std::array kEndings = {".png"_L1, ".jpg"_L1,  ".jpeg"_L1, ".webp"_L1,
                                          ".gif"_L1, ".avif"_L1, ".jxl"_L1,  ".bmp"_L1};
  return std::ranges::any_of(kEndings,
                             [&name](QLatin1StringView end) { return name.endsWith(end, Qt::CaseInsensitive); });
}

}  // namespace tarnwick
