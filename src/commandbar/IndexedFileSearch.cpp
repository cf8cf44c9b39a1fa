#include "commandbar/IndexedFileSearch.h"

#include "files/NameIndex.h"
#include "files/NameSearch.h"

namespace tarnwick {

IndexedFileSearch::IndexedFileSearch(QString indexFile, QByteArray root, std::function<QStringList()> recent)
    : indexFile_(std::move(indexFile)), root_(std::move(root)), recent_(std::move(recent)) {}

void IndexedFileSearch::start(const QString& query, Done done) {
  work_.start(
      [file = indexFile_, root = root_, recent = recent_ ? recent_() : QStringList(),
       query](const std::stop_token& stop) {
        QList<FoundFile> found;
        const auto index = NameIndex::open(file, root);
        if (!index) return found;
        for (const FolderEntry& entry : NameSearch::newest(*index, query, recent, kMost, stop))
          found.append({entry.path, entry.name});
        return found;
      },
      [done = std::move(done)](const QList<FoundFile>& found) { done(found); });
}

}  // namespace tarnwick
