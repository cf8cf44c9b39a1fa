#include "apps/AppScan.h"
#include "apps/StandardApplications.h"
#include "apps_fixture.h"

namespace tarnwick::test {
namespace {

class StandardTest : public AppsTest {
 protected:
  void install(const QString& id, const QString& categories, const QString& types = {}, const QString& more = {}) {
    write(
        system(id + ".desktop"_L1),
        application(id, u"run"_s, "Icon=icon-%1\nCategories=%2\nMimeType=%3\n%4"_L1.arg(id, categories, types, more)));
  }
  QStringList names() {
    const AppScan scan = AppScan::run(environment, {}, {});
    QStringList result;
    for (const StandardApplication& application : StandardApplications::list(scan.index)) {
      EXPECT_EQ(application.desktopEntryPath, system(application.name + ".desktop"_L1));
      EXPECT_EQ(application.iconName, "icon-"_L1 + application.name);
      result << application.name;
    }
    return result;
  }
};

TEST_F(StandardTest, ListsThePurposesInTheirOrderAndEachApplicationOnce) {
  EXPECT_EQ(names(), QStringList());
  install(u"org.gnome.Settings"_s, u"GNOME;Settings;"_s);
  install(u"store"_s, u"System;PackageManager;"_s);
  install(u"agenda"_s, u"Office;Calendar;"_s, u"text/calendar;"_s);
  install(u"viewer"_s, u"Graphics;Viewer;"_s, u"image/jpeg;"_s);
  install(u"player"_s, u"AudioVideo;Audio;Video;Player;"_s, u"audio/mpeg;video/mp4;"_s);
  install(u"writer"_s, u"Utility;TextEditor;"_s, u"text/plain;"_s);
  install(u"console"_s, u"System;TerminalEmulator;"_s);
  install(u"folders"_s, u"System;FileManager;"_s, u"inode/directory;"_s);
  install(u"letters"_s, u"Network;Email;"_s, u"x-scheme-handler/mailto;"_s);
  install(u"surfer"_s, u"Network;WebBrowser;"_s, u"x-scheme-handler/https;text/html;"_s);
  EXPECT_EQ(names(), (QStringList{u"surfer"_s, u"letters"_s, u"folders"_s, u"console"_s, u"writer"_s, u"player"_s,
                                  u"viewer"_s, u"agenda"_s, u"store"_s, u"org.gnome.Settings"_s}));
}

TEST_F(StandardTest, FollowsChoicesBeforeAssociationsBeforeCategories) {
  // By name, then the one that belongs to this desktop, then the one that opens the type.
  install(u"alpha"_s, u"Utility;TextEditor;"_s);
  EXPECT_EQ(names(), QStringList{u"alpha"_s});
  install(u"beta"_s, u"Utility;TextEditor;Gnome;"_s);
  EXPECT_EQ(names(), QStringList{u"beta"_s});
  install(u"gamma"_s, u"Utility;TextEditor;"_s, u"text/plain;"_s);
  EXPECT_EQ(names(), QStringList{u"gamma"_s});
  // Opening text does not make an office suite an editor.
  install(u"aoffice"_s, u"Office;"_s, u"text/plain;"_s);
  EXPECT_EQ(names(), QStringList{u"gamma"_s});
  write(root(u"system/applications/mimeapps.list"_s),
        u"[Added Associations]\ntext/plain=alpha.desktop;\n[Removed Associations]\ntext/plain=gamma.desktop;\n"_s);
  EXPECT_EQ(names(), QStringList{u"alpha"_s});

  // From the least important list of choices to the most important one.
  install(u"delta"_s, u"Development;"_s);
  install(u"unseen"_s, u"Utility;TextEditor;"_s, {}, u"NoDisplay=true\n"_s);
  const std::pair<QString, QString> lists[] = {{u"etc/mimeapps.list"_s, u"delta"_s},
                                               {u"etc/gnome-mimeapps.list"_s, u"gamma"_s},
                                               {u"etc/lab-mimeapps.list"_s, u"beta"_s},
                                               {u"config/mimeapps.list"_s, u"aoffice"_s}};
  for (const auto& [file, id] : lists) {
    write(root(file),
          "[Default Applications]\ntext/plain=gone.desktop;unseen.desktop;%1.desktop;alpha.desktop\n"_L1.arg(id));
    EXPECT_EQ(names(), QStringList{id}) << file.toStdString();
  }
}

TEST_F(StandardTest, AMonitorWithAWindowComesBeforeOneInATerminal) {
  const auto monitor = [&] {
    const AppScan scan = AppScan::run(environment, {}, {});
    const DesktopEntry* entry = StandardApplications::entryFor(StandardApplications::Purpose::Monitor, scan.index);
    return entry ? entry->id : QString();
  };
  EXPECT_EQ(monitor(), QString());
  install(u"atop"_s, u"System;Monitor;"_s, {}, u"Terminal=true\n"_s);
  EXPECT_EQ(monitor(), u"atop"_s);
  install(u"gauges"_s, u"System;Monitor;"_s);
  EXPECT_EQ(monitor(), u"gauges"_s);
  install(u"meters"_s, u"Gnome;System;Monitor;"_s);
  EXPECT_EQ(monitor(), u"meters"_s);
  EXPECT_FALSE(names().contains(u"meters"_s));
}

TEST_F(StandardTest, AsksTheListOfTerminals) {
  install(u"aterm"_s, u"System;TerminalEmulator;"_s);
  install(u"bterm"_s, u"System;TerminalEmulator;"_s);
  EXPECT_EQ(names(), QStringList{u"aterm"_s});
  write(root(u"config/xdg-terminals.list"_s), u"# mine\n-aterm.desktop\n\nnone.desktop\nbterm.desktop:new-window\n"_s);
  EXPECT_EQ(names(), QStringList{u"bterm"_s});
}

}  // namespace
}  // namespace tarnwick::test
