#include <sys/stat.h>

#include <QCoreApplication>

#include "apps/InstalledApps.h"
#include "apps_fixture.h"
#include "support/TestScheduler.h"

namespace tarnwick::test {
namespace {

class InstalledAppsTest : public AppsTest {
 protected:
  InstalledApps& apps() {
    if (!apps_) {
      apps_ = std::make_unique<InstalledApps>(environment, clock);
      QObject::connect(apps_.get(), &InstalledApps::scanStarted, [this] { ++scans; });
      QObject::connect(apps_.get(), &InstalledApps::changed, [this] { ++changes; });
    }
    return *apps_;
  }
  void load() {
    apps().load();
    ASSERT_TRUE(waitFor([this] { return apps().loaded(); }));
  }
  QStringList ids() {
    QStringList result;
    for (const DesktopEntry& entry : apps().all()) result << entry.id;
    return result;
  }

  TestScheduler clock;
  int scans = 0;
  int changes = 0;

 private:
  std::unique_ptr<InstalledApps> apps_;
};

TEST_F(InstalledAppsTest, FindsWhatIsInForceAndSortsItByName) {
  write(system(u"zebra.desktop"_s), application(u"apple"_s, u"zebra"_s));
  write(system(u"kde/konsole.desktop"_s), application(u"Zoo"_s, u"konsole"_s));
  write(system(u"both.desktop"_s), application(u"System"_s, u"both"_s));
  write(own(u"both.desktop"_s), application(u"Mine"_s, u"both"_s));
  write(system(u"masked.desktop"_s), application(u"Masked"_s, u"masked"_s));
  write(own(u"masked.desktop"_s), u"[Desktop Entry]\nHidden=true\n"_s);
  write(system(u"emptied.desktop"_s), application(u"Emptied"_s, u"emptied"_s));
  write(own(u"emptied.desktop"_s), {});
  write(system(u"helper.desktop"_s), application(u"Helper"_s, u"helper"_s, u"NoDisplay=true\n"_s));
  write(system(u"elsewhere.desktop"_s), application(u"Elsewhere"_s, u"elsewhere"_s, u"OnlyShowIn=KDE;\n"_s));
  write(system(u"tried.desktop"_s), application(u"Tried"_s, u"tried"_s, u"TryExec=not-there\n"_s));
  write(system(u"link.desktop"_s), u"[Desktop Entry]\nType=Link\nName=Link\nURL=https://example.org\n"_s);
  write(system(u"notes.txt"_s), u"[Desktop Entry]"_s);
  write(system(u"nulled.desktop"_s), application(u"Nulled"_s, u"nulled"_s));
  ASSERT_TRUE(QFile::link(u"/dev/null"_s, own(u"nulled.desktop"_s)));
  ASSERT_EQ(mkfifo(QFile::encodeName(system(u"pipe.desktop"_s)).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link(root(u"system/applications"_s), root(u"system/applications/loop"_s)));

  EXPECT_EQ(scans, 0) << "nothing may be read before somebody asks";
  EXPECT_TRUE(apps().all().isEmpty());
  ASSERT_TRUE(waitFor([this] { return apps().loaded(); }));
  EXPECT_EQ(ids(), (QStringList{u"zebra"_s, u"both"_s, u"kde-konsole"_s}));
  EXPECT_EQ(InstalledApps::enumerate(environment), apps().all());
  EXPECT_EQ(apps().byId(u"both.desktop"_s)->name, u"Mine"_s);
  EXPECT_EQ(apps().byPath(system(u"both.desktop"_s))->path, own(u"both.desktop"_s));
  EXPECT_EQ(apps().byPath(system(u"kde/konsole.desktop"_s))->id, u"kde-konsole"_s);
  EXPECT_TRUE(apps().byId(u"helper"_s) && apps().byId(u"elsewhere"_s));
  for (const QString& id : {u"masked"_s, u"emptied"_s, u"nulled"_s, u"tried"_s, u"link"_s, u"notes"_s})
    EXPECT_FALSE(apps().byId(id)) << id.toStdString();
  EXPECT_EQ(scans, 1);
}

TEST_F(InstalledAppsTest, NoticesWhatComesChangesAndGoes) {
  // Not even the folder is there at first.
  load();
  EXPECT_TRUE(ids().isEmpty());
  write(own(u"new.desktop"_s), application(u"New"_s, u"new"_s));
  ASSERT_TRUE(waitFor(clock, [this] { return ids() == QStringList{u"new"_s}; }));

  QFile file(own(u"new.desktop"_s));
  ASSERT_TRUE(file.open(QIODevice::Append));
  file.write("Name=Renamed\n");
  file.close();
  ASSERT_TRUE(waitFor(clock, [this] { return apps().byId(u"new"_s)->name == u"Renamed"_s; }));

  write(own(u"sub/deep.desktop"_s), application(u"Deep"_s, u"deep"_s));
  ASSERT_TRUE(waitFor(clock, [this] { return ids().contains(u"sub-deep"_s); }));
  QFile::remove(own(u"new.desktop"_s));
  ASSERT_TRUE(waitFor(clock, [this] { return ids() == QStringList{u"sub-deep"_s}; }));

  write(root(u"config/mimeapps.list"_s), u"[Default Applications]\ntext/plain=sub-deep.desktop\n"_s);
  ASSERT_TRUE(waitFor(clock, [this] { return !apps().index()->defaults().lists.isEmpty(); }));
}

TEST_F(InstalledAppsTest, ReadsOnceForABurst) {
  write(system(u"first.desktop"_s), application(u"First"_s, u"first"_s));
  load();
  EXPECT_EQ(clock.waiting(), 0);
  for (int i = 0; i < 30; ++i)
    write(system(u"burst%1.desktop"_s.arg(i)), application(u"Burst %1"_s.arg(i), u"burst"_s));
  while (clock.waiting() == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_EQ(clock.waiting(), 1);
  clock.advance(1);
  ASSERT_TRUE(waitFor([this] { return ids().size() == 31; }));
  EXPECT_EQ(scans, 2);
  EXPECT_EQ(changes, 2);
}

TEST_F(InstalledAppsTest, ReadsEntriesElsewhereWhenTheyAreAskedFor) {
  load();
  const QString path = root(u"home/Desktop/tool.desktop"_s);
  write(path, application(u"Tool"_s, u"tool"_s));
  EXPECT_FALSE(apps().byPath(path));
  ASSERT_TRUE(waitFor(clock, [&] { return apps().byPath(path).has_value(); }));
  EXPECT_EQ(apps().byPath(path)->name, u"Tool"_s);
  EXPECT_TRUE(apps().all().isEmpty());
  write(path, application(u"Better Tool"_s, u"tool"_s));
  ASSERT_TRUE(waitFor(clock, [&] { return apps().byPath(path) && apps().byPath(path)->name == u"Better Tool"_s; }));
}

TEST_F(InstalledAppsTest, SaysNothingAfterItsEnd) {
  write(system(u"a.desktop"_s), application(u"A"_s, u"a"_s));
  apps().load();
  apps().stop();
  QCoreApplication::processEvents();
  EXPECT_EQ(changes, 0);
  EXPECT_TRUE(apps().all().isEmpty());
  EXPECT_EQ(scans, 1);
}

}  // namespace
}  // namespace tarnwick::test
