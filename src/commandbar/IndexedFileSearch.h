#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

#include "commandbar/ports/FileSearch.h"
#include "files/LatestWork.h"

namespace tarnwick {

/// Finds files by an index of names that somebody else keeps in a file. The index is mapped for the time of a search
/// alone; while there is none, or a damaged one, nothing is found. Main thread only.
class IndexedFileSearch final : public FileSearch {
 public:
  /// `root`: the folder whose names the index holds, as the system writes it. `recent` gives the paths of files that
  /// the user had open lately, and may be left out.
  IndexedFileSearch(QString indexFile, QByteArray root, std::function<QStringList()> recent = {});

  void start(const QString& query, Done done) override;
  void stop() override { work_.cancel(); }

 private:
  QString indexFile_;
  QByteArray root_;
  std::function<QStringList()> recent_;
  LatestWork work_;
};

}  // namespace tarnwick
