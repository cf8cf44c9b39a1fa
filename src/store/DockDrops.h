#pragma once

#include <QList>
#include <QObject>
#include <QUrl>
#include <QUuid>

#include "desktop/Files.h"
#include "dock/rules/DropRouting.h"
#include "store/UndoableEdits.h"

namespace tarnwick {

struct Services;

/// Files and addresses that were dropped on a dock.
struct DockFileDrop {
  QString display;  ///< The dock's.
  QList<QUrl> urls;
  QUuid widget{};           ///< The tile that they were dropped on; null for none.
  quint64 application = 0;  ///< The running application whose tile they were dropped on; 0 for none.
  qsizetype index = -1;     ///< Among the shown widgets, where a new tile goes; at the end when it is none.
  Qt::DropAction action = Qt::IgnoreAction;  ///< Move, copy or link where the user asked for it.
};

/// What happens to things that are dropped on a dock: a folder's tile takes files in, the trash throws them away, an
/// application opens them, the shelf keeps them; a desktop entry becomes a tile, and so does what nobody takes. All of
/// it can be taken back but the opening. Failures land in the store's message line. Main thread only.
class DockDrops : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  DockDrops(AppStore& store, const Services& services, UndoStack& undo, UndoableEdits& edits)
      : store_(store), services_(services), undo_(undo), edits_(edits) {}

  /// The caller, which shows the row, has found the tile.
  void routeDroppedFiles(const DockFileDrop& drop);
  /// The same for a folder that was shown beside the dock; the drop names no tile.
  void dropInto(const QString& folder, const DockFileDrop& drop);
  /// Moves files to the trash, as a step that can be taken back beside the dock of a display.
  void moveToTrash(const QStringList& paths, const QString& display);
  /// Takes a widget that travels as text.
  void dropWidget(const QString& text, qsizetype index, const QString& display);

 private:
  using Kinds = QHash<QString, Files::Kind>;

  void apply(const DockFileDrop& drop, const Kinds& kinds);
  bool applyToTile(const DockFileDrop& drop, const DockWidget& tile, const Kinds& kinds);
  bool openInApplication(const DockFileDrop& drop, const DockWidget* tile);
  void bringInto(const QString& folder, const DockFileDrop& drop);
  void shelve(const QStringList& paths, const Kinds& kinds, const QString& display);
  void sayMissing(const QString& path);
  void sayOnlyLocal();
  void makeTiles(const DockFileDrop& drop, const Kinds& kinds);
  void offerUndo(const FilesOutcome& outcome, const UndoStack::Notice& notice);
  static QStringList localPaths(const QList<QUrl>& urls);
  static DropRouting::Tile routed(const DockWidget& widget);

  AppStore& store_;
  const Services& services_;
  UndoStack& undo_;
  UndoableEdits& edits_;
};

}  // namespace tarnwick
