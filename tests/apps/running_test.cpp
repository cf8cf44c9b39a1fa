#include <algorithm>

#include "apps/AppActivation.h"
#include "apps/RunningApplications.h"
#include "apps_fixture.h"
#include "support/FakeWindows.h"
#include "support/TestScheduler.h"

namespace tarnwick::test {
namespace {

class RunningTest : public AppsTest {
 protected:
  void SetUp() override {
    write(system(u"editor.desktop"_s), application(u"Editor"_s, u"editor %F"_s, u"Icon=edit\n"_s));
    write(system(u"player.desktop"_s), application(u"Player"_s, u"/opt/player"_s));
    write(system(u"com.brindlemoor.Tarnwick.desktop"_s), application(u"Tarnwick"_s, u"tarnwick"_s));
    installed = std::make_unique<InstalledApps>(environment, scheduler);
    running = std::make_unique<RunningApplications>(
        windows, *installed, RunningApplications::Self{u"com.brindlemoor.Tarnwick"_s, 42}, [this](qint64 pid) {
          ++asked;
          return pid == 300 ? QStringList{u"/opt/player"_s} : QStringList();
        });
    QObject::connect(running.get(), &RunningApplications::changed, [this] { ++changes; });
  }
  void load() {
    running->start();
    EXPECT_TRUE(running->list().isEmpty());
    ASSERT_TRUE(waitFor([this] { return installed->loaded(); }));
  }
  QStringList names() const {
    QStringList result;
    for (const RunningApp& app : running->list()) result << app.name;
    return result;
  }

  TestScheduler scheduler;
  FakeWindows windows;
  std::unique_ptr<InstalledApps> installed;
  std::unique_ptr<RunningApplications> running;
  int changes = 0;
  int asked = 0;
};

TEST_F(RunningTest, GivesOneTileAnApplicationWithoutUsAndTheUnlisted) {
  windows.open(1, u"editor"_s);
  windows.open(2, u"stranger"_s);
  windows.open(3, u"editor"_s, 101);
  windows.open(4, u"anything"_s, 42);
  windows.open(5, u"com.brindlemoor.tarnwick"_s, 43);
  windows.open(6, u"panel"_s, 100, false);
  windows.open(7, u"weird"_s, 300);
  load();
  ASSERT_EQ(names(), (QStringList{u"Editor"_s, u"Stranger"_s, u"Player"_s}));
  const RunningApp editor = running->list().at(0);
  EXPECT_EQ(editor.windows, (QList<quint64>{3, 1}));
  EXPECT_EQ(editor.path, system(u"editor.desktop"_s));
  EXPECT_EQ(editor.iconName, u"edit"_s);
  EXPECT_EQ(running->list().at(1).path, QString());
  const int before = asked;
  windows.windows[6].title = u"another title"_s;
  Q_EMIT windows.changed();
  EXPECT_EQ(asked, before) << "a new title is no reason to look at processes";
  EXPECT_EQ(changes, 1);
}

TEST_F(RunningTest, KnowsWhichWindowsADockShows) {
  for (const quint64 id : {1, 2, 3, 4}) windows.open(id, u"editor"_s);
  windows.windows[0].screens = {u"L"_s};
  windows.windows[1].screens = {u"L"_s, u"R"_s};
  windows.windows[1].elsewhere = true;
  windows.windows[2].screens = {u"R"_s};
  windows.windows[3].screens = {u"R"_s};
  windows.windows[3].minimised = true;
  load();
  const RunningApp editor = running->list().at(0);
  const struct {
    WindowScope scope;
    QList<quint64> windows;
  } rows[] = {{{}, {4, 3, 2, 1}},
              {{.workspaceOnly = true}, {4, 3, 1}},
              {{.display = u"L"_s}, {4, 2, 1}},
              {{.workspaceOnly = true, .display = u"R"_s}, {4, 3}},
              {{.display = u"another"_s}, {4}}};
  for (const auto& row : rows) EXPECT_EQ(editor.windowsIn(row.scope), row.windows) << row.scope.display.toStdString();
}

TEST_F(RunningTest, IsInFrontWhereItsActiveWindowIs) {
  for (const quint64 id : {1, 2, 3}) windows.open(id, u"editor"_s);
  windows.windows[0].screens = {u"L"_s};
  windows.windows[1].screens = {u"R"_s};
  windows.windows[2].screens = {u"R"_s};
  windows.open(4, u"player"_s);
  load();
  AppActivation activation(*running, windows);
  const quint64 identity = running->list().at(0).identity;
  const struct {
    quint64 front;
    bool left, right, anywhere;
    QList<quint64> brought;  ///< By the dock on the right.
  } rows[] = {{1, true, false, true, {3}}, {3, false, true, true, {3}}, {4, false, false, false, {3}}};
  for (const auto& row : rows) {
    windows.activate(row.front);
    const RunningApp editor = *running->byIdentity(identity);
    EXPECT_EQ(editor.within({.display = u"L"_s}).active, row.left) << row.front;
    EXPECT_EQ(editor.within({.display = u"R"_s}).active, row.right) << row.front;
    EXPECT_EQ(editor.within({}).active, row.anywhere) << row.front;
    windows.activated.clear();
    EXPECT_TRUE(activation.bring(identity, {.display = u"R"_s}));
    EXPECT_EQ(windows.activated, row.brought) << row.front;
  }
  windows.activated.clear();
  EXPECT_TRUE(activation.bring(identity, {.display = u"another"_s}));
  EXPECT_EQ(windows.activated, QList<quint64>{3}) << "one that has no window there is not lost";
}

TEST_F(RunningTest, KeepsPlacesAndIdentitiesWhateverIsInFront) {
  windows.open(1, u"editor"_s);
  windows.open(2, u"player"_s);
  windows.open(3, u"editor"_s);
  load();
  const quint64 editor = running->list().at(0).identity;
  windows.activate(2);
  EXPECT_EQ(names(), (QStringList{u"Editor"_s, u"Player"_s}));
  EXPECT_TRUE(running->list().at(1).active);
  windows.activate(1);
  windows.activate(2);
  EXPECT_EQ(running->byIdentity(editor)->windows, (QList<quint64>{1, 3}));
  EXPECT_FALSE(running->byIdentity(editor)->urgent);
  windows.windows.last().urgent = true;
  Q_EMIT windows.changed();
  EXPECT_TRUE(running->byIdentity(editor)->urgent);

  windows.close(1);
  windows.close(3);
  EXPECT_FALSE(running->byIdentity(editor));
  windows.open(4, u"editor"_s);
  EXPECT_EQ(names(), (QStringList{u"Player"_s, u"Editor"_s}));
  EXPECT_NE(running->list().at(1).identity, editor);

  running->stop();
  windows.close(4);
  EXPECT_EQ(names().size(), 2) << "nothing is followed after the end";
}

TEST_F(RunningTest, KeepsTheIdentityWhenTheEntryIsInstalledLater) {
  windows.open(1, u"late"_s);
  windows.open(2, u"editor"_s);
  load();
  const quint64 identity = running->list().at(0).identity;
  EXPECT_EQ(running->list().at(0).desktopId, QString());
  write(system(u"late.desktop"_s), application(u"Late Comer"_s, u"late"_s));
  ASSERT_TRUE(waitFor(scheduler, [this] { return names() == QStringList{u"Late Comer"_s, u"Editor"_s}; }));
  EXPECT_EQ(running->list().at(0).identity, identity);
}

TEST_F(RunningTest, BringsTheWindowForwardThatWasUsedLastAndNoOther) {
  windows.open(1, u"editor"_s);
  windows.open(2, u"editor"_s);
  windows.open(3, u"editor"_s);
  windows.open(4, u"player"_s);
  load();
  windows.activate(2);
  windows.activate(4);
  windows.activated.clear();
  AppActivation activation(*running, windows);
  EXPECT_TRUE(activation.bring(system(u"editor.desktop"_s)));
  EXPECT_EQ(windows.activated, QList<quint64>{2});
  EXPECT_TRUE(running->byPath(system(u"editor.desktop"_s))->active);
  // The same application under the name that it would have in the user's own folder.
  EXPECT_TRUE(activation.bring(own(u"player.desktop"_s)));
  EXPECT_FALSE(activation.bring(system(u"com.brindlemoor.Tarnwick.desktop"_s)));
  EXPECT_FALSE(activation.bring(QString()));
}

TEST_F(RunningTest, HoldsManyApplicationsAndManyWindowsOfOne) {
  const struct {
    quint64 apps;
    quint64 windowsEach;
  } cases[] = {{60, 1}, {1, 50}, {60, 3}};
  load();
  for (const auto& [apps, each] : cases) {
    SCOPED_TRACE(::testing::Message() << apps << " with " << each);
    for (quint64 id = 0; id < apps * each; ++id) windows.open(id + 1, u"app%1"_s.arg(id / each));
    ASSERT_EQ(running->list().size(), static_cast<qsizetype>(apps));
    for (quint64 app = 0; app < apps; ++app) {
      const RunningApp& one = running->list()[static_cast<qsizetype>(app)];
      EXPECT_EQ(one.name, u"App%1"_s.arg(app));
      EXPECT_EQ(one.windows.size(), static_cast<qsizetype>(each));
    }
    // The places of those that stay do not change, whichever go.
    const QStringList before = names();
    QStringList left;
    for (quint64 app = 0; app < apps; ++app) {
      if (app % 2 == 1) left << before[static_cast<qsizetype>(app)];
      for (quint64 window = 0; app % 2 == 0 && window < each; ++window) windows.close(app * each + window + 1);
    }
    EXPECT_EQ(names(), left);
    while (!windows.windows.isEmpty()) windows.close(windows.windows.first().id);
    EXPECT_EQ(names(), QStringList());
  }
}

}  // namespace
}  // namespace tarnwick::test
