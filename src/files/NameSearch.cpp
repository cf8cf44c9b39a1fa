#include "files/NameSearch.h"

#include <sys/stat.h>

#include <QFile>
#include <QSet>
#include <algorithm>
#include <vector>

#include "base/Text.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct NamedFile {
  FolderEntry entry;
  timespec changed{};
};

/// Whether a path below the root answers as one of the index would.
bool answersText(const QString& path, const QString& root, const QString& folded) {
  if (!path.startsWith(root)) return false;
  const bool isHidden = QStringView(path).sliced(root.size() - 1).contains("/."_L1);
  if (isHidden && !folded.startsWith(u'.')) return false;
  return Text::folded(path.mid(path.lastIndexOf(u'/') + 1)).contains(folded);
}

QStringList candidatesFor(const NameIndex& index, const QString& text, const QStringList& recent,
                          const std::stop_token& stop, const NameIndex::Folders& first) {
  const QString folded = Text::folded(text);
  if (folded.isEmpty()) return {};
  QString root = QFile::decodeName(index.path(0));
  if (!root.endsWith(u'/')) root += u'/';
  QStringList paths;
  QSet<QString> known;
  const auto add = [&](const QString& path) {
    if (paths.size() >= NameSearch::kMostCandidates || known.contains(path)) return;
    known.insert(path);
    paths.append(path);
  };
  for (const QString& path : recent)
    if (answersText(path, root, folded)) add(path);
  for (const NameIndex::Hit& hit : index.find(text, NameSearch::kMostCandidates, stop, first))
    add(QFile::decodeName(index.path(hit.place)));
  return paths;
}

}  // namespace

QList<FolderEntry> NameSearch::newest(const NameIndex& index, const QString& text, const QStringList& recent,
                                      qsizetype most, const std::stop_token& stop, const NameIndex::Folders& first) {
  std::vector<NamedFile> files;
  for (const QString& path : candidatesFor(index, text, recent, stop, first)) {
    if (stop.stop_requested()) return {};
    struct stat status {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0) continue;
    NamedFile file;
    file.entry.path = path;
    file.entry.name = path.mid(path.lastIndexOf(u'/') + 1);
    file.entry.isFolder = S_ISDIR(status.st_mode);
    file.entry.size = file.entry.isFolder ? 0 : status.st_size;
    file.entry.modified = QDateTime::fromSecsSinceEpoch(status.st_mtim.tv_sec);
    file.changed = status.st_mtim;
    files.push_back(file);
  }
  std::ranges::stable_sort(files, [](const NamedFile& left, const NamedFile& right) {
    if (left.changed.tv_sec != right.changed.tv_sec) return left.changed.tv_sec > right.changed.tv_sec;
    return left.changed.tv_nsec > right.changed.tv_nsec;
  });
  QList<FolderEntry> newest;
  for (auto each = files.begin(); each != files.end() && newest.size() < most; ++each) newest.append(each->entry);
  return newest;
}

}  // namespace tarnwick
