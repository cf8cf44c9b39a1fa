#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include "apps/AppEnvironment.h"

namespace tarnwick {

/// What the user, the desktop and the system chose to open each kind of file and address with.
struct MimeDefaults {
  /// One file of choices: ids (without ".desktop") by type.
  struct Choices {
    QHash<QString, QStringList> defaults;
    QHash<QString, QStringList> added;
    QHash<QString, QStringList> removed;

    bool operator==(const Choices&) const = default;
  };

  QList<Choices> lists;   ///< The most important first.
  QStringList terminals;  ///< The ids of the terminals that the user prefers, the best first.

  bool operator==(const MimeDefaults&) const = default;

  static Choices parse(QByteArrayView utf8);

  /// Every file in which such choices may be stored, the most important first.
  static QStringList files(const AppEnvironment& environment);
  static QStringList terminalFiles(const AppEnvironment& environment);

  /// Reads them all. Blocks.
  static MimeDefaults read(const AppEnvironment& environment);
};

}  // namespace tarnwick
