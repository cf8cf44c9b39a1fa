#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// Where this session keeps its applications and how it wants them shown. A plain value, so that tests can point it at
/// folders of their own.
struct AppEnvironment {
  QString home;
  QString dataHome;
  QStringList dataFolders;  ///< Without `dataHome`, the most important first.
  QString configHome;
  QStringList configFolders;      ///< Without `configHome`, the most important first.
  QStringList executableFolders;  ///< Where programs without a path are looked for.
  QStringList desktops;           ///< The names of the running desktop, the most specific first.
  QStringList locales;  ///< The suffixes of localized keys that the user reads, the best first: "de_AT", "de".
  QString terminal;     ///< The terminal that the user named; may be empty.

  /// The folders of desktop entries, the most important first. They need not exist.
  QStringList applicationFolders() const;

  /// The id (without ".desktop") that a desktop entry at `path` has, or nothing when it lies in none of the folders.
  QString desktopIdOf(const QString& path) const;

  /// The full path of a program, or nothing when there is none that can be run.
  QString findExecutable(const QString& program) const;

  static AppEnvironment fromVariables(const QProcessEnvironment& variables);

  /// The environment of this process, and the folders of Flatpak and Snap where the session forgot to name them.
  static AppEnvironment ofProcess();
};

}  // namespace tarnwick
