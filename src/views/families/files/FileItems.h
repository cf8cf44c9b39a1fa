#pragma once

#include <QHash>
#include <QLocale>
#include <QString>
#include <functional>

#include "files/FolderReading.h"
#include "views/controls/ItemView.h"

namespace tarnwick {

struct PanelContext;

/// Pixels of the pictures that panels ask for: enough for a cell on a dense screen.
inline constexpr int kPanelThumbnail = 256;

/// Draws what stands for a file: its picture, a folder, or a sheet with its ending.
void paintFile(QPainter& painter, const QRectF& box, const FolderEntry& entry, const QImage& picture,
               const ControlLook& look);

/// Files in a view: they have their pictures, can be dragged out, and have a menu of what can be done to them.
class FileItems {
 public:
  /// The view and what the context names are borrowed; they must outlive this. `done` is called once a file was opened
  /// with a program that the user chose.
  FileItems(ItemView& view, const PanelContext& context, std::function<void()> done);

  /// What is shown below the name, or in its place.
  enum class Caption { None, AgeOnly, Folder, FolderAndAge };
  void set(const QList<FolderEntry>& entries, Caption caption, const QDateTime& now, const QLocale& locale);
  /// The file of an item; empty when it is there no more.
  FolderEntry of(const QString& id) const { return entries_.value(id); }

 private:
  QList<PaneMenuEntry> menuOf(const QString& path, const PanelContext& context) const;

  ItemView& view_;
  std::function<void()> done_;
  QHash<QString, FolderEntry> entries_;
};

}  // namespace tarnwick
