#pragma once

#include <QObject>

#include "clipboard/ClipboardGroup.h"
#include "clipboard/ClipboardHistory.h"
#include "clipboard/ports/Pasteboard.h"
#include "files/LatestWork.h"

namespace tarnwick {

/// What the panel of the history shows: one group of it, or of what a search finds in it. Follows the history. So long
/// a history that a search would be felt is searched on another thread, and what was found before stands until then.
/// Main thread only.
class ClipboardPanelModel final : public QObject {
  Q_OBJECT
 public:
  /// Both must outlive this object. Reads the history at once.
  ClipboardPanelModel(ClipboardHistory& history, Pasteboard& pasteboard, QObject* parent = nullptr);

  ClipboardGroup group() const { return group_; }
  void setGroup(ClipboardGroup group);
  const QString& search() const { return search_; }
  /// Entries with this text in them, whatever the case and the accents. Pictures have none.
  void setSearch(const QString& text);

  /// Those that are shown.
  const QList<ClipboardEntry>& entries() const { return entries_; }
  /// A finished sentence about what went wrong last; empty while all is well.
  const QString& message() const { return message_; }
  /// The groups that hold something, of what the search found.
  QList<ClipboardGroup> available() const;
  /// How many favourites clearing the history would take along.
  qsizetype favourites() const;

  void reload();
  /// Puts an entry on the clipboard again, which makes it the newest; done also when this is gone meanwhile. A picture
  /// whose file is gone leaves the clipboard empty.
  void use(const ClipboardEntry& entry);
  void toggleFavourite(const ClipboardEntry& entry) { history_.toggleFavourite(entry.id); }
  /// `removed` follows.
  void remove(const ClipboardEntry& entry);
  void clear();

 Q_SIGNALS:
  void changed();
  /// Can be taken back by `ClipboardHistory::putBack`, for as long as somebody keeps this.
  void removed(const tarnwick::RemovedClipboardEntry& entry);

 private:
  void find();
  void publish();
  void say(const QString& message);

  ClipboardHistory& history_;
  Pasteboard& pasteboard_;
  ClipboardGroup group_ = ClipboardGroup::Recent;
  QString search_;
  QList<ClipboardEntry> found_;  ///< What the search found, of all groups.
  QList<ClipboardEntry> entries_;
  QString message_;
  LatestWork searching_;
};

}  // namespace tarnwick
