#pragma once

#include <QHash>
#include <QObject>

#include "app/PictureKeeper.h"
#include "apps/InstalledApps.h"
#include "store/UndoableEdits.h"

namespace tarnwick {

class AppStore;

/// The icons that the user chose for applications in place of their own. Pictures are copied into the data folder, so
/// that an icon outlives the file that it was made from. Main thread only; files are read and written elsewhere.
class OwnIcons : public QObject {
  Q_OBJECT
 public:
  /// The longer side of a kept picture, in pixels.
  static constexpr int kSide = 512;

  /// All must outlive it.
  OwnIcons(AppStore& store, UndoableEdits& edits, const InstalledApps& apps)
      : store_(store), edits_(edits), apps_(apps), keeper_(store) {}

  /// The picture for the application of a desktop entry; empty where it has the icon that it came with.
  QString iconOf(const QString& entryPath);
  bool has(const QString& entryPath) const;
  /// Takes a copy of a picture. A failure lands in the store's message line.
  void choose(const QString& entryPath, const QString& picture);
  void reset(const QString& entryPath);

 private:
  QString keyOf(const QString& entryPath) const;
  QString assetOf(const QString& entryPath) const;

  AppStore& store_;
  UndoableEdits& edits_;
  const InstalledApps& apps_;
  QHash<QString, bool> exists_;  // By asset: every beat asks.
  PictureKeeper keeper_;
};

}  // namespace tarnwick
