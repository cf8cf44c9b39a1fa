#pragma once

#include <QObject>

#include "files/FolderListing.h"

namespace tarnwick {

/// The newest screenshots, wherever this desktop's tools put them. Nothing is read before the first question. Main
/// thread only.
class ScreenshotFolder final : public QObject {
  Q_OBJECT
 public:
  static constexpr qsizetype most = 60;

  /// `pictures`: the user's folder of pictures.
  ScreenshotFolder(const QString& pictures, Scheduler& scheduler, QObject* parent = nullptr);

  /// The folder that the user chose; an empty one means the desktop's own.
  void setChosen(const QString& folder);
  const QList<FolderEntry>& newest();
  /// Shows these and reads nothing, for pictures.
  void setFixed(const QString& folder, const QList<FolderEntry>& newest);
  const QString& folder() const { return listing_.request().folder; }
  bool loaded() const { return listing_.loaded(); }
  /// A finished sentence when the folder could not be read. That of the desktop may come with its first screenshot.
  QString problem() const {
    const bool isAwaited = chosen_.isEmpty() && listing_.contents().isGone;
    return isAwaited ? QString() : listing_.contents().problem;
  }

  /// The chosen folder, or the first of the usual ones that is there, or the most usual one.
  static QString find(const QString& chosen, const QString& pictures);

 Q_SIGNALS:
  void changed();

 private:
  QString pictures_;
  QString chosen_;
  FolderListing listing_;
};

}  // namespace tarnwick
