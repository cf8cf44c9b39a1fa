#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>
#include <optional>

#include "clipboard/ClipboardCapture.h"
#include "clipboard/ClipboardEntry.h"

namespace tarnwick {

/// What is needed to take the removal of an entry back.
struct RemovedClipboardEntry {
  ClipboardEntry entry;
  qsizetype place = 0;                ///< Where it stood in the list.
  std::optional<QByteArray> picture;  ///< The file that went with it.
};

/// The history of what was copied and its folder: an index, and a file for each picture under the digest of its bytes.
/// Nothing is read before the first operation. Each operation is done whole or not at all, and throws DomainError.
///
/// An index that cannot be read stays untouched for the life of this object: from then on every operation fails, so
/// that no copy can destroy the history. All of it reads and writes files: not for the main thread, and for one thread
/// at a time. The program uses it through ClipboardHistory.
class ClipboardStore {
 public:
  static constexpr qsizetype kMostTextBytes = 100'000;      ///< Of UTF-8.
  static constexpr qsizetype kMostImageBytes = 10'485'760;  ///< Of PNG.
  static constexpr int kKeptImages = 40;                    ///< Those that are no favourites.
  static constexpr int kKeptOthers = 200;                   ///< The same, of all other kinds together.
  static constexpr qsizetype kMostIndexBytes = 64 << 20;    ///< A larger index is neither read nor written.
  static constexpr int kIndexVersion = 1;

  static QString needsRepair();

  /// `root` is the data folder; the history has a folder of its own in it.
  explicit ClipboardStore(const QString& root) : root_(root) {}

  /// Newest first. Empty before the first operation.
  const QList<ClipboardEntry>& items() const { return items_; }
  bool isReadable() const { return readable_; }

  /// Reads the index, once. One that is not there is an empty history.
  void load();

  /// Removes pictures that no entry has, of a copy that was on its way into the index when the last run ended. Only
  /// for who alone writes to the folder, and nothing where there is no index to go by.
  void removeStrayPictures();

  /// Takes a copy in as the newest entry, and gives what was stored. One that is there already moves to the front and
  /// stays a favourite. Absent for what is not kept: nothing at all, and what is over the limits.
  std::optional<ClipboardEntry> record(const ClipboardCapture& capture, const QDateTime& now);

  /// Nothing happens for an identity that is not there, like in `remove`.
  void toggleFavourite(const QUuid& id);
  std::optional<RemovedClipboardEntry> remove(const QUuid& id);
  /// Takes a removal back. What was copied anew meanwhile stays where it is, and becomes a favourite again.
  void putBack(const RemovedClipboardEntry& removed);
  /// Favourites and pictures too.
  void clear();

  /// Takes over texts of older settings, in their order, behind what is there.
  void migrate(const QStringList& texts, const QDateTime& now);

  /// For the next run: whether the newest entry was on the clipboard, put there by this program, when that ended.
  void noteHeld(bool isHeld);
  /// The entry that was noted, once: null afterwards, and where there was none.
  QUuid takeHeld();

  /// The picture of an entry, there or not. Absent for an entry without one, and for a name that leads out of the
  /// folder: anybody may have edited the index.
  std::optional<QUrl> imageURL(const ClipboardEntry& entry) const;
  /// The bytes of that file; absent where it cannot be read.
  std::optional<QByteArray> picture(const ClipboardEntry& entry) const;

 private:
  QString folder() const;
  QString indexPath() const;
  QString heldPath() const;
  /// Writes the list and then makes it the history.
  void save(const QList<ClipboardEntry>& items);
  void savePicture(const QByteArray& png, const QString& name);
  /// Removes all but the index; false where something stays.
  bool emptyFolder() const;
  /// Drops what is over the limits.
  static QList<ClipboardEntry> evict(const QList<ClipboardEntry>& items);
  /// Removes the files of entries that are not in the history any more.
  void removeFiles(const QList<ClipboardEntry>& before) const;

  QString root_;
  QList<ClipboardEntry> items_;
  bool loaded_ = false;
  bool readable_ = true;
};

}  // namespace tarnwick
