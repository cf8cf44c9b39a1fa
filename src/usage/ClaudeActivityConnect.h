#pragma once

#include <QString>
#include <QStringList>

#include "config/DockWidget.h"

namespace tarnwick {

/// Connects widgets to what Claude Code does, and lets go of it again. Changes Claude Code's settings, which is the
/// user's wish alone; failures are DomainErrors, after which nothing has changed. Waits for the disk: any thread but
/// the main one.
class ClaudeActivityConnect {
 public:
  /// `executables` are those that may run as the hook, the one to be installed first; `directory` is where it leaves
  /// its records.
  ClaudeActivityConnect(QStringList executables, QString directory);
  /// Of this program: the small hook program where there is one, and the program itself.
  static ClaudeActivityConnect ofProgram(const QString& dataDirectory);

  /// Where the records of this program's hooks are.
  static QString folderIn(const QString& dataDirectory);

  /// Installs the hooks in the settings of a configuration folder; gives the widget as it is to be stored.
  DockWidget installed(DockWidget widget, const QString& configuration) const;
  /// Takes them out of where they were installed by this widget.
  DockWidget removed(DockWidget widget) const;
  /// A widget with the connection of another, which is itself as it was before it was installed or removed.
  static DockWidget connected(DockWidget widget, const DockWidget& changed);
  /// Whether a widget has installed them.
  static bool isInstalled(const DockWidget& widget);

  /// Where the user's configuration usually is.
  static QString usualConfiguration();

 private:
  QStringList executablesFor(const DockWidget& widget) const;

  QStringList executables_;
  QString directory_;
};

}  // namespace tarnwick
