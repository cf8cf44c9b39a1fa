#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "apps/StandardApplications.h"
#include "config/DockWidget.h"

namespace tarnwick {

/// Where the folders lie that the library offers. Absolute paths; an empty one isn't offered.
struct StandardFolders {
  static constexpr QLatin1StringView kApplications{"/usr/share/applications"};

  QString applications;  ///< the entries of the installed applications
  QString downloads;
  QString documents;
  QString desktop;
  QString pictures;
  QString movies;
  QString music;
  QString home;

  /// As this user's desktop has them.
  static StandardFolders ofUser();
};

/// One item that the widget library offers: a widget to insert or a picker to run, never both.
struct LibraryEntry {
  /// Values of `picker`.
  static constexpr QLatin1StringView applicationPicker{"application"};
  static constexpr QLatin1StringView folderPicker{"folder"};

  QString id;     ///< unique in its section, the same at every call
  QString title;  ///< in the user's language
  /// A widget with an identity of its own. An entry may be inserted more than once: give every copy a fresh identity.
  std::optional<DockWidget> widget;
  std::optional<QString> picker;
  /// An icon of the desktop's theme, or a path. Without one, the symbol of the widget's kind stands for the entry.
  std::optional<QString> icon;

  /// A widget of `kind` with nothing set, under the name that the catalog has for it.
  static LibraryEntry ofKind(const QString& kind);

  /// The section of applications: trash and all applications, the standard ones, the way to any other. An application
  /// that stands for several purposes is offered once.
  static QList<LibraryEntry> apps(const QList<StandardApplication>& applications);

  /// The section of folders and the way to any other. A special folder that the user switched off, which a desktop
  /// says by giving the home folder in its place, isn't offered.
  static QList<LibraryEntry> folders(const StandardFolders& folders);
};

}  // namespace tarnwick
