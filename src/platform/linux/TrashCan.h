#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace tarnwick {

/// The trash that all programs of this desktop share: one folder in the user's home for what lies on the home's file
/// system, and one on each other volume. Everything here blocks, may run on any thread and throws FileFault.
class TrashCan {
 public:
  /// The roots of the mounted volumes.
  using Volumes = std::function<QStringList()>;

  /// `dataHome`: the user's data folder.
  TrashCan(QString dataHome, Volumes volumes);
  static TrashCan ofUser();

  /// The user's own, in the home; others lie on their volumes.
  QString homeFolder() const { return dataHome_ + QLatin1StringView("/Trash"); }

  /// Moves a file, folder or link there; gives the path at which it lies now.
  QString put(const QString& path) const;
  /// Brings it back to `original`, or beside it where something else is there by now; gives the path. A folder
  /// that is gone is made again.
  static QString restore(const QString& trashed, const QString& original);

  /// What lies in all trash folders of the user.
  QStringList contents() const;
  /// Deletes one of the contents for good.
  static void erase(const QString& trashed);

  /// The folders whose changes mean that the contents may have changed.
  QStringList folders() const;

 private:
  QString folderFor(const QString& path) const;

  QString dataHome_;
  Volumes volumes_;
};

}  // namespace tarnwick
