#pragma once

#include <QString>

#include "config/ContentLine.h"

namespace tarnwick {

/// What was entered since the settings document was written, a line a value, in files beside it:
/// `content-journal.json`, and `content-journal-older.json` while a document that has its lines is being written. Lines
/// are only appended and not waited for, so they cost next to nothing and outlive every end of this process, though not
/// a power loss. Private to the user, and never more than kMostBytes together. One instance a document. Nothing here
/// throws.
class ContentJournal {
 public:
  static constexpr qint64 kMostBytes = 1'000'000;

  explicit ContentJournal(const QString& settingsFile);

  bool isEmpty() const;
  /// All lines, in their order.
  QList<ContentLine> read() const;
  /// False when there is no space for them, or the disk takes nothing; then nothing was added.
  bool append(const QList<ContentLine>& lines);
  /// Whether further lines would find no space.
  bool isFullFor(const QList<ContentLine>& lines) const;
  /// Replaces all lines by these; those for which there is no space are left out. False when the disk takes nothing.
  bool replace(const QList<ContentLine>& lines);

  /// Before a document is written that has all lines so far: they stand aside and a new file begins. `all` is what the
  /// lines amount to, for when lines of an earlier document that failed are there already.
  void setAside(const QList<ContentLine>& all);
  /// The document is on the disk.
  void forgetAside();
  void removeAll();
  /// Keeps all lines under another name, for a document that could not be loaded.
  void preserve(const QString& name);
  /// The lines that were kept in a file.
  static QList<ContentLine> kept(const QString& file);

 private:
  QByteArray older_;
  QByteArray newer_;
};

}  // namespace tarnwick
