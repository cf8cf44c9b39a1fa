#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include "apps/AppEnvironment.h"
#include "apps/DesktopEntry.h"
#include "apps/MimeDefaults.h"

namespace tarnwick {

/// The installed applications at one moment, with every look-up that matching needs. It never changes once it is made,
/// so threads can share it; pointers that it gives live as long as it does.
class AppIndex {
 public:
  /// By what entries can be found. Values compare without case.
  enum class Key {
    WindowClass,    ///< The class that the entry announces for its windows.
    Id,             ///< The whole desktop-file id.
    LastComponent,  ///< What follows the last dot of an id such as org.example.Editor.
    Executable,     ///< The name of the program that the entry runs.
    Sandbox         ///< The id of the Flatpak or Snap that the entry belongs to.
  };

  AppIndex() = default;
  /// `applications`: one for each id. `others`: entries at requested paths outside the folders.
  AppIndex(const AppEnvironment& environment, QList<DesktopEntry> applications, QHash<QString, DesktopEntry> others,
           MimeDefaults defaults);
  AppIndex(AppIndex&&) = default;
  AppIndex& operator=(AppIndex&&) = default;

  /// Every application, those that want no place in a list included, sorted by name as the user's language does.
  const QList<DesktopEntry>& applications() const { return applications_; }
  const MimeDefaults& defaults() const { return defaults_; }

  /// The names of the running desktop, the most specific first.
  const QStringList& desktops() const { return environment_.desktops; }

  /// With or without ".desktop", in exactly this case.
  const DesktopEntry* byId(const QString& id) const;
  /// The entry that is in force for that file: for one in the folders that is the one of its id, even if another folder
  /// overrides the file or it has moved.
  const DesktopEntry* byPath(const QString& path) const;

  QList<const DesktopEntry*> find(Key key, const QString& value) const;

  /// Whether a list of applications should show it on this desktop.
  bool isVisible(const DesktopEntry& entry) const;

  bool operator==(const AppIndex& other) const;

 private:
  void enter(Key key, const QString& value, int place);

  AppEnvironment environment_;
  QList<DesktopEntry> applications_;
  QHash<QString, DesktopEntry> others_;
  MimeDefaults defaults_;
  QHash<QString, int> byId_;
  QHash<QString, int> byPath_;
  QHash<std::pair<int, QString>, QList<int>> places_;
};

}  // namespace tarnwick
