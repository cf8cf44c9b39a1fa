#pragma once

#include <QFileInfo>

#include "desktop/Files.h"

namespace tarnwick::test {

/// Files that exist only by name: everything succeeds at once and is written down.
class FakeFiles final : public Files {
 public:
  void look(const QStringList& paths, QObject*, std::function<void(const QHash<QString, Kind>&)> done) override {
    QHash<QString, Kind> found;
    for (const QString& path : paths) {
      found[path] = missing.contains(path) ? Kind::Missing : path.endsWith(u'd') ? Kind::Folder : Kind::File;
    }
    done(found);
  }
  void bringInto(const QString& folder, const QStringList& paths, FileTransfer how, QObject*, Done done) override {
    FilesOutcome outcome{{}, error};
    for (const QString& path : paths) {
      const auto kind = how == FileTransfer::Copy ? FileChange::Kind::Copied : FileChange::Kind::Moved;
      outcome.changes << FileChange{kind, path, folder + u'/' + QFileInfo(path).fileName()};
    }
    done(outcome);
  }
  void trash(const QStringList& paths, QObject*, Done done) override {
    FilesOutcome outcome;
    for (const QString& path : paths) outcome.changes << FileChange{FileChange::Kind::Trashed, path, {}};
    done(outcome);
  }
  void takeBack(const QList<FileChange>& changes, QObject*, Done done) override {
    for (const FileChange& change : changes) takenBack << change.from;
    done({});
  }
  void emptyTrash(QObject*, Done done) override {
    count = 0;
    done({});
  }
  int trashCount() override { return count; }
  QString trashFolder() const override { return QStringLiteral("/trash/files"); }
  void reveal(const QStringList&, QObject*, std::function<void(bool)> done) override { done(true); }

  QStringList missing;  ///< Every other path that ends in "d" is a folder, the rest are files.
  QString error;        ///< What the next transfer reports beside its changes.
  QStringList takenBack;
  int count = 0;
};

}  // namespace tarnwick::test
