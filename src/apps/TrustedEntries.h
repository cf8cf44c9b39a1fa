#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

#include "apps/DesktopEntry.h"

namespace tarnwick {

/// What a look at a desktop entry outside the folders of applications found. The entry is read from the very bytes that
/// the digest is of.
struct ForeignEntry {
  QString path;
  QString digest;  ///< SHA-256 of the file, in hexadecimal digits.
  DesktopEntry entry;
  /// Why it may not be run, as a finished sentence; empty where it may once the user has said so.
  QString refusal;

  /// What it runs and how, for a person to judge: plain lines in which nothing is hidden or left out. Characters
  /// without a look of their own, such as line breaks and those that turn the direction of reading, are shown as their
  /// number.
  QString facts(const QString& action = {}) const;
  /// What it calls itself, in one line of the same kind; a long name loses its end.
  QString shownName() const;

  /// Blocks. Only a regular file of the user's own that is executable and that no other user may write can be run, and
  /// only one whose command is short enough to be read.
  static ForeignEntry look(const QString& path, const QStringList& locales);
};

/// Which desktop entries from anywhere the user has said may run: each by its path and content, so that one that
/// changed is asked about again. They are kept in a file of their own that no export takes along. Main thread only.
class TrustedEntries {
 public:
  static constexpr qsizetype kMost = 200;

  /// `file` is read when it is first needed; one that is damaged counts as empty.
  explicit TrustedEntries(QString file) : file_(std::move(file)) {}

  bool isTrusted(const QString& path, const QString& digest) const;
  /// Remembers it, in place of another state of the same file; the oldest goes beyond the most. Throws DomainError when
  /// that cannot be saved, and holds for this run then.
  void trust(const QString& path, const QString& digest);

 private:
  struct Item {
    QString path;
    QString digest;
  };

  QList<Item>& items() const;

  QString file_;
  mutable std::optional<QList<Item>> items_;
};

}  // namespace tarnwick
