#include "widgets/LibraryEntries.h"

#include <QDir>
#include <QSet>
#include <QStandardPaths>

#include "widgets/EntryWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString translated(const char* text) { return EntryWords::tr(text); }

DockWidget widgetOf(const QString& kind) {
  return {.id = QUuid::createUuid(), .kind = kind, .title = QString(), .options = {}};
}

LibraryEntry entryForPath(const QString& idPrefix, const QString& kind, const QString& title, const QString& path,
                          const QString& icon) {
  LibraryEntry entry;
  entry.id = idPrefix + path;
  entry.title = title;
  entry.widget = widgetOf(kind);
  entry.widget->options.insert(option::path, path);
  if (!icon.isEmpty()) entry.icon = icon;
  return entry;
}

LibraryEntry entryForPicker(const QString& id, const char* title, QLatin1StringView picker) {
  LibraryEntry entry;
  entry.id = id;
  entry.title = translated(title);
  entry.picker = picker;
  return entry;
}

}  // namespace

StandardFolders StandardFolders::ofUser() {
  const auto folder = &QStandardPaths::writableLocation;
  return {.applications = kApplications,
          .downloads = folder(QStandardPaths::DownloadLocation),
          .documents = folder(QStandardPaths::DocumentsLocation),
          .desktop = folder(QStandardPaths::DesktopLocation),
          .pictures = folder(QStandardPaths::PicturesLocation),
          .movies = folder(QStandardPaths::MoviesLocation),
          .music = folder(QStandardPaths::MusicLocation),
          .home = QDir::homePath()};
}

LibraryEntry LibraryEntry::ofKind(const QString& kind) {
  LibraryEntry entry;
  entry.id = kind;
  entry.title = Catalog::find(kind).name;
  entry.widget = widgetOf(kind);
  return entry;
}

QList<LibraryEntry> LibraryEntry::apps(const QList<StandardApplication>& applications) {
  QList<LibraryEntry> entries;
  for (const QLatin1StringView kind : Catalog::readyApps()) entries.append(ofKind(kind));
  QSet<QString> offered;
  for (const StandardApplication& application : applications) {
    const QString& path = application.desktopEntryPath;
    if (path.isEmpty() || offered.contains(path)) continue;
    offered.insert(path);
    entries.append(entryForPath(u"app."_s, Catalog::launcherKind(), application.name, path, application.iconName));
  }
  entries.append(
      entryForPicker(u"more.apps"_s, QT_TRANSLATE_NOOP("LibraryEntry", "More Apps…"), LibraryEntry::applicationPicker));
  return entries;
}

QList<LibraryEntry> LibraryEntry::folders(const StandardFolders& folders) {
  struct Offer {
    const char* title;
    const QString& path;
    QString icon;
  };
  const Offer special[] = {
      {QT_TRANSLATE_NOOP("LibraryEntry", "Applications"), folders.applications, u"folder"_s},
      {QT_TRANSLATE_NOOP("LibraryEntry", "Downloads"), folders.downloads, u"folder-download"_s},
      {QT_TRANSLATE_NOOP("LibraryEntry", "Documents"), folders.documents, u"folder-documents"_s},
      {QT_TRANSLATE_NOOP("LibraryEntry", "Desktop"), folders.desktop, u"user-desktop"_s},
      {QT_TRANSLATE_NOOP("LibraryEntry", "Pictures"), folders.pictures, u"folder-pictures"_s},
      {QT_TRANSLATE_NOOP("LibraryEntry", "Movies"), folders.movies, u"folder-videos"_s},
      {QT_TRANSLATE_NOOP("LibraryEntry", "Music"), folders.music, u"folder-music"_s},
  };
  QList<LibraryEntry> entries;
  QSet<QString> offered;
  const auto offer = [&](const char* title, const QString& path, const QString& icon) {
    const QString clean = QDir::cleanPath(path);
    if (path.isEmpty() || offered.contains(clean)) return;
    offered.insert(clean);
    entries.append(entryForPath(u"folder."_s, Catalog::folderKind(), translated(title), clean, icon));
  };
  const QString home = QDir::cleanPath(folders.home);
  for (const Offer& one : special) {
    if (QDir::cleanPath(one.path) != home) offer(one.title, one.path, one.icon);
  }
  offer(QT_TRANSLATE_NOOP("LibraryEntry", "Home"), folders.home, u"user-home"_s);
  entries.append(entryForPicker(u"more.folders"_s, QT_TRANSLATE_NOOP("LibraryEntry", "More Folders…"),
                                LibraryEntry::folderPicker));
  return entries;
}

}  // namespace tarnwick
