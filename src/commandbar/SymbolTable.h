#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// The emoji, signs and keyboard symbols that the command bar finds by name.
struct SymbolTable {
  struct Entry {
    QString character;     ///< What is copied; one character as a user perceives it.
    QString name;          ///< As the Unicode standard calls it, in lower case.
    QStringList keywords;  ///< Two to five words, in lower case, by which people ask for it.
  };

  /// Emoji first, then signs of writing and mathematics, then keyboard symbols. Made at the first call, then constant.
  static const QList<Entry>& entries();
};

}  // namespace tarnwick
