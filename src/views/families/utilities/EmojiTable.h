#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// The emoji that the panel offers, with the words by which people ask for them.
struct EmojiTable {
  struct Entry {
    QString emoji;
    QString words;  ///< The name first; lower-case.
  };
  static const QList<Entry>& entries();
  /// Those of whose words every word of the query begins one; all of them for an empty query.
  static QStringList search(const QString& query);
  /// The name, or the emoji itself where it is not in the table.
  static QString nameOf(const QString& emoji);
};

}  // namespace tarnwick
