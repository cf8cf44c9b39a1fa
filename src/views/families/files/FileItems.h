#pragma once

#include <QHash>
#include <QLocale>
#include <QString>

#include "files/FolderReading.h"
#include "views/controls/ItemView.h"

namespace tarnwick {

class Commands;
class Thumbnails;

/// Pixels of the pictures that panels ask for: enough for a cell on a dense screen.
inline constexpr int kPanelThumbnail = 256;

/// Draws what stands for a file: its picture, a folder, or a sheet with its ending.
void paintFile(QPainter& painter, const QRectF& box, const FolderEntry& entry, const QImage& picture,
               const ControlLook& look);

/// Files in a view: they have their pictures, can be dragged out, and can be shown in their folder.
class FileItems {
 public:
  /// `thumbnails` may be null. All are borrowed; they must outlive this.
  FileItems(ItemView& view, Thumbnails* thumbnails, Commands& commands);

  /// What stands below the name, or in its place.
  enum class Caption { None, AgeOnly, Folder, FolderAndAge };
  void set(const QList<FolderEntry>& entries, Caption caption, const QDateTime& now, const QLocale& locale);
  /// The file of an item; empty when it is there no more.
  FolderEntry of(const QString& id) const { return entries_.value(id); }

 private:
  ItemView& view_;
  QHash<QString, FolderEntry> entries_;
};

/// A folder in the short form in which people know it: "~/Documents".
QString shortFolder(const QString& path);

}  // namespace tarnwick
