#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace tarnwick {

/// One of the further things that an application offers to start with, such as a new private window.
struct DesktopAction {
  QString id;
  QString name;
  QString iconName;
  QString exec;

  bool operator==(const DesktopAction&) const = default;
};

/// What a desktop entry file says, in the user's language.
struct DesktopEntry {
  enum class Type { Application, Link, Directory };

  QString id;    ///< The desktop-file id without ".desktop"; empty until code that knows the folder sets it.
  QString path;  ///< The file; empty until code that knows it sets it.

  Type type = Type::Application;
  QString name;
  QString untranslatedName;  ///< English as a rule; the same as `name` where that is in no other language.
  QString genericName;
  QString comment;
  QString iconName;  ///< A name in the icon theme, or an absolute path.
  QString exec;      ///< The command line as written, with field codes and quotes.
  QString tryExec;
  QString workingDirectory;
  QString url;  ///< Of a link.
  QString startupWmClass;
  QStringList categories;
  QStringList keywords;
  QStringList mimeTypes;
  QStringList onlyShowIn;
  QStringList notShowIn;
  QList<DesktopAction> actions;  ///< In the order in which they are offered.
  QString flatpakId;
  QString snapInstanceName;
  bool restrictsDesktops = false;  ///< `onlyShowIn` was given, even if it names no desktop.
  bool noDisplay = false;
  bool hidden = false;  ///< The user deleted it: it only hides what is below it.
  bool terminal = false;
  bool dbusActivatable = false;
  bool startupNotify = false;

  bool operator==(const DesktopEntry&) const = default;

  /// Nothing for a text that is no desktop entry or lacks what its type requires. A hidden entry need say no more than
  /// that. `locales`: the suffixes of localized keys that the user reads, the best first.
  static std::optional<DesktopEntry> parse(QByteArrayView utf8, const QStringList& locales = {});

  /// Reads a file and sets `path`. Blocks. `id` stays empty.
  static std::optional<DesktopEntry> read(const QString& path, const QStringList& locales = {});

  /// Whether it wants to be listed in a desktop with these names, the most specific first.
  bool shownIn(const QStringList& desktops) const;

  std::optional<DesktopAction> action(const QString& actionId) const;
};

}  // namespace tarnwick
