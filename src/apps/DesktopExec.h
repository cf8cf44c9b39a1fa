#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

#include "apps/DesktopEntry.h"

namespace tarnwick {

/// The command lines of desktop entries. No shell ever sees them.
struct DesktopExec {
  /// One word of a command line, its quotes and escapes resolved.
  struct Word {
    QString text;
    bool quoted = false;
  };

  /// Nothing when a quote is left open or there is no word.
  static std::optional<QList<Word>> split(const QString& exec);

  /// Whether the command line has a place for files or addresses.
  static bool takesFiles(const QString& exec);

  /// The commands to run, each a program and its arguments: one, or one for each of `urls` where the program takes a
  /// single file at a time. `exec` is the entry's own command line or that of one of its actions. Throws DomainError
  /// when the command line is malformed or has no place for what was asked to be opened.
  static QList<QStringList> expand(const DesktopEntry& entry, const QString& exec, const QList<QUrl>& urls);

  /// The name by which a running process and a command line can be compared: the program behind wrappers such as env,
  /// the script behind an interpreter, without folders. Empty where it says nothing about the application (a sandbox's
  /// runner, a shell's one-liner).
  static QString executableName(const QStringList& command);
  static QString executableName(const QString& exec);
};

}  // namespace tarnwick
