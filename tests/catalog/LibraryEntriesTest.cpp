#include "widgets/LibraryEntries.h"

#include <gtest/gtest.h>

#include <QSet>

#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

StandardFolders foldersOf(const QString& home) {
  return {.applications = u"/usr/share/applications"_s,
          .downloads = home + u"/Downloads"_s,
          .documents = home + u"/Papers"_s,
          .desktop = home + u"/Desktop"_s,
          .pictures = home + u"/Pictures"_s,
          .movies = home + u"/Videos"_s,
          .music = home + u"/Music"_s,
          .home = home};
}

QStringList titlesOf(const QList<LibraryEntry>& entries) {
  QStringList titles;
  for (const LibraryEntry& entry : entries) titles.append(entry.title);
  return titles;
}

TEST(LibraryEntries, EveryEntryInsertsOneFreshWidgetOrRunsAPicker) {
  const auto all = LibraryEntry::apps({{u"Web"_s, u"/a/web.desktop"_s, u"web"_s}}) +
                   LibraryEntry::folders(foldersOf(u"/home/u"_s)) + LibraryEntry::apps({});
  QSet<QUuid> identities;
  for (const LibraryEntry& entry : all) {
    SCOPED_TRACE(entry.id.toStdString());
    EXPECT_NE(entry.widget.has_value(), entry.picker.has_value());
    if (!entry.widget) continue;
    EXPECT_TRUE(Catalog::contains(entry.widget->kind) && entry.widget->title.isEmpty());
    EXPECT_FALSE(entry.widget->id.isNull() || identities.contains(entry.widget->id));
    identities.insert(entry.widget->id);
  }
}

TEST(LibraryEntries, AppsNameEachApplicationOnceBetweenTheFixedEntries) {
  const auto entries = LibraryEntry::apps({{u"Web"_s, u"/a/web.desktop"_s, u"web-icon"_s},
                                           {u"Mail"_s, u"/a/suite.desktop"_s, {}},
                                           {u"Calendar"_s, u"/a/suite.desktop"_s, u"suite"_s}});
  EXPECT_EQ(titlesOf(entries), QStringList({u"Trash"_s, u"Applications"_s, u"Web"_s, u"Mail"_s, u"More Apps…"_s}));
  EXPECT_EQ(entries[0].widget->kind, u"trash");
  EXPECT_EQ(entries[1].widget->kind, u"applications");
  EXPECT_EQ(entries[2].id, u"app./a/web.desktop");
  EXPECT_EQ(entries[2].widget->kind, u"appLauncher");
  EXPECT_EQ(entries[2].widget->options, (QMap<QString, QString>{{u"path"_s, u"/a/web.desktop"_s}}));
  EXPECT_EQ(entries[2].icon, u"web-icon"_s);
  EXPECT_EQ(entries[3].icon, std::nullopt);
  EXPECT_EQ(entries[4].id, u"more.apps");
}

TEST(LibraryEntries, FoldersStandInOrderAndLieWhereTheDesktopHasThem) {
  StandardFolders folders = foldersOf(u"/home/u"_s);
  const auto entries = LibraryEntry::folders(folders);
  EXPECT_EQ(titlesOf(entries), QStringList({u"Applications"_s, u"Downloads"_s, u"Documents"_s, u"Desktop"_s,
                                            u"Pictures"_s, u"Movies"_s, u"Music"_s, u"Home"_s, u"More Folders…"_s}));
  EXPECT_EQ(entries[0].id, u"folder./usr/share/applications");
  EXPECT_EQ(entries[2].id, u"folder./home/u/Papers");
  EXPECT_EQ(entries[2].widget->kind, u"folderLauncher");
  EXPECT_EQ(entries[2].widget->options, (QMap<QString, QString>{{u"path"_s, u"/home/u/Papers"_s}}));
  EXPECT_EQ(entries[8].id, u"more.folders");

  // Folders that are switched off are no second home.
  folders.desktop = u"/home/u/"_s;
  folders.movies.clear();
  folders.music = folders.pictures;
  EXPECT_EQ(titlesOf(LibraryEntry::folders(folders)), QStringList({u"Applications"_s, u"Downloads"_s, u"Documents"_s,
                                                                   u"Pictures"_s, u"Home"_s, u"More Folders…"_s}));
}

}  // namespace
}  // namespace tarnwick
