#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

namespace tarnwick {

/// One step that was carried out on a file or folder, as far as it must be known to take it back.
struct FileChange {
  enum class Kind { Moved, Copied, Linked, Trashed };

  Kind kind = Kind::Moved;
  QString from;
  QString to;  ///< Where it is now; for `Trashed` the file in the trash.

  bool operator==(const FileChange&) const = default;
};

/// What came of an operation on files.
struct FilesOutcome {
  QList<FileChange> changes;  ///< What was carried out, in order.
  QString error;              ///< The first failure as a finished sentence; empty when everything went well.
};

/// How files come into a folder.
enum class FileTransfer {
  Natural,  ///< As file managers do it: moved within one file system, copied to another.
  Move,
  Copy,
  Link
};

/// The user's files. Nothing here blocks: operations run elsewhere, one after the other, and answer on the main thread
/// unless `context` is gone by then. Paths are absolute. A file is whole at every moment: one that cannot be copied to
/// its end leaves nothing behind, and nothing is ever replaced; a name that is taken becomes "name (2).ext". After a
/// failure the rest of the list is still carried out. Destroying this cancels what runs; what was done stays done.
class Files : public QObject {
  Q_OBJECT
 public:
  enum class Kind { Missing, File, Folder };
  using Done = std::function<void(const FilesOutcome&)>;

  /// What is at each of these paths; links count as what they lead to.
  virtual void look(const QStringList& paths, QObject* context,
                    std::function<void(const QHash<QString, Kind>&)> done) = 0;
  virtual void bringInto(const QString& folder, const QStringList& paths, FileTransfer how, QObject* context,
                         Done done) = 0;
  virtual void trash(const QStringList& paths, QObject* context, Done done) = 0;
  /// Takes changes back, the last one first: what was moved or trashed returns, under another name where its own is
  /// taken by now; copies go to the trash, for they may have been worked on.
  virtual void takeBack(const QList<FileChange>& changes, QObject* context, Done done) = 0;
  /// Deletes for good everything in the trash.
  virtual void emptyTrash(QObject* context, Done done) = 0;

  /// How many things lie in the trash; watched from the first question on, so that the first answer may be 0.
  virtual int trashCount() = 0;
  /// Where the things in the user's own trash lie, for a file manager that knows no trash. May not exist yet.
  virtual QString trashFolder() const = 0;

  /// Has the desktop's file manager show the files in their folder. `done` gets whether there was one that could.
  virtual void reveal(const QStringList& paths, QObject* context, std::function<void(bool shown)> done) = 0;

 Q_SIGNALS:
  void trashChanged();
};

}  // namespace tarnwick
