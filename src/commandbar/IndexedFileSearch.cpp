#include "commandbar/IndexedFileSearch.h"

#include "files/NameSearch.h"

namespace tarnwick {

void IndexedFileSearch::closed() {
  work_.cancel();
  keeper_.closed();
}

void IndexedFileSearch::start(const QString& query, Done done) {
  work_.start(
      [mapped = keeper_.names(), changes = keeper_.changes(), others = recent_, query](const std::stop_token& stop) {
        QList<FoundFile> found;
        const auto names = mapped->get();
        if (!names) return found;
        const QStringList recent = others ? changes + others() : changes;
        for (const FolderEntry& entry : NameSearch::newest(*names->index, query, recent, kMost, stop, names->newest))
          found.append({entry.path, entry.name, entry.isFolder});
        return found;
      },
      [done = std::move(done)](const QList<FoundFile>& found) { done(found); });
}

}  // namespace tarnwick
