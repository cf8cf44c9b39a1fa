// A real Plank, hidden and given back however the program ends.
#include <gtest/gtest.h>
#include <signal.h>

#include <QDBusConnectionInterface>
#include <QTemporaryDir>

#include "base/HandoverLock.h"
#include "desktop/Program.h"
#include "dock/NativeDockState.h"
#include "handover/Docks.h"
#include "platform/docks/SystemDockPreferences.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QString kPath = u"/net/launchpad/plank/docks/dock1/"_s;

QString holderProgram() { return QCoreApplication::applicationDirPath() + u"/handover_holder"_s; }

QByteArray dconf(const QString& key) { return output({u"dconf"_s, u"read"_s, kPath + key}).value().trimmed(); }

bool plankRuns() {
  return QDBusConnection::sessionBus().interface()->isServiceRegistered(u"net.launchpad.plank"_s).value();
}

class PlankTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    plank = ChildProcess::start({u"plank"_s});
    const auto isUp = [] { return plankRuns() && !dconf(u"dock-items"_s).isEmpty(); };
    ASSERT_TRUE(VirtualDisplay::waitUntil(isUp));
  }
  static void TearDownTestSuite() {
    plank.reset();
    VirtualDisplay::waitUntil([] { return !plankRuns(); });
  }
  void setUser(bool has) const {
    const QStringList values[] = {
        {u"hide-mode"_s, u"'window-dodge'"_s}, {u"unhide-delay"_s, u"350"_s}, {u"pressure-reveal"_s, u"true"_s}};
    for (const QStringList& value : values) {
      const QStringList change =
          has ? QStringList{u"write"_s, kPath + value[0], value[1]} : QStringList{u"reset"_s, kPath + value[0]};
      ASSERT_TRUE(output(QStringList{u"dconf"_s} + change));
    }
  }
  QString file() const { return NativeDockState::recoveryFile(folder.path()); }
  bool isGivenBack(const QByteArray& before) const { return dconfDump() == before && !QFile::exists(file()); }
  /// The one guardian of the folder. The program has begun to start it when the settings change, no more.
  pid_t guardian() const {
    QList<pid_t> guardians;
    VirtualDisplay::waitUntil([&] { return (guardians = guardiansOf(folder.path())).size() == 1; });
    return guardians.value(0, -1);
  }
  /// Kills the guardian first, so that nobody gives the dock back, while the program cannot start another.
  void killBoth(ChildProcess& program) const {
    const pid_t watching = guardian();
    ASSERT_GT(watching, 0);
    ::kill(program.pid(), SIGSTOP);
    ::kill(watching, SIGKILL);
    ::kill(program.pid(), SIGKILL);
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return !program.isRunning(); }));
    ASSERT_TRUE(QFile::exists(file()));
    ASSERT_EQ(dconf(u"hide-mode"_s), "'auto'");
  }

  static std::unique_ptr<ChildProcess> plank;
  QTemporaryDir folder;
};

std::unique_ptr<ChildProcess> PlankTest::plank;

TEST_F(PlankTest, IsGivenBackHoweverTheProgramEnds) {
  const std::pair<QString, QByteArray> layouts[] = {
      {u"swap"_s, "0"}, {u"replace"_s, "1000000"}, {u"replaceAutoHide"_s, "1000000"}};
  enum End { Terminated, GroupKilled, NextStart, ManualRepair };
  for (const bool has : {false, true}) {
    for (const auto& [layout, wanted] : layouts) {
      for (const End end : {Terminated, GroupKilled, NextStart, ManualRepair}) {
        SCOPED_TRACE(::testing::Message() << qPrintable(layout) << " set " << has << " end " << end);
        setUser(has);
        const QByteArray& delay = wanted;
        const QByteArray before = dconfDump();
        const auto program = ChildProcess::start({holderProgram(), folder.path(), layout});
        ASSERT_TRUE(VirtualDisplay::waitUntil(
            [&] { return dconf(u"hide-mode"_s) == "'auto'" && dconf(u"unhide-delay"_s) == delay; }));
        EXPECT_EQ(dconf(u"pressure-reveal"_s), "false");
        EXPECT_TRUE(QFile::exists(file()));
        switch (end) {
          case Terminated:
            program->stop();
            EXPECT_EQ(program->exitCode(), 0);
            EXPECT_TRUE(isGivenBack(before));
            EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return guardiansOf(folder.path()).isEmpty(); }));
            break;
          case GroupKilled:
            ::kill(-program->pid(), SIGKILL);
            EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isGivenBack(before); }));
            break;
          case NextStart: {
            killBoth(*program);
            SystemDockPreferences preferences(folder.path());
            const NativeDockState state(folder.path(), preferences);
            EXPECT_FALSE(state.recoveryError());
            EXPECT_TRUE(isGivenBack(before));
            break;
          }
          case ManualRepair:
            killBoth(*program);
            EXPECT_EQ(output({holderProgram(), u"--restore-dock"_s, u"--restore-dock-directory"_s, folder.path()}),
                      "Restored the macOS Dock settings saved before Tarnwick changed them.\n");
            EXPECT_TRUE(isGivenBack(before));
            break;
        }
      }
    }
  }
}

TEST_F(PlankTest, WhatTheUserChangesMeanwhileStays) {
  for (const bool isKilled : {false, true}) {
    SCOPED_TRACE(isKilled);
    setUser(true);
    const auto program = ChildProcess::start({holderProgram(), folder.path(), u"replace"_s});
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return dconf(u"unhide-delay"_s) == "1000000"; }));
    ASSERT_TRUE(output({u"dconf"_s, u"write"_s, kPath + u"hide-mode"_s, u"'intelligent'"_s}));
    if (isKilled) {
      ::kill(program->pid(), SIGKILL);
    } else {
      program->stop();
    }
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !QFile::exists(file()); }));
    EXPECT_EQ(dconf(u"hide-mode"_s), "'intelligent'");
    EXPECT_EQ(dconf(u"unhide-delay"_s), "350");
    EXPECT_EQ(dconf(u"pressure-reveal"_s), "true");
  }
}

TEST_F(PlankTest, ANewStartThatComesBeforeTheGuardiansRepairKeepsItsOwnFile) {
  setUser(true);
  const QByteArray before = dconfDump();
  const auto program = ChildProcess::start({holderProgram(), folder.path(), u"replace"_s});
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return dconf(u"unhide-delay"_s) == "1000000"; }));
  const pid_t watching = guardian();
  ASSERT_GT(watching, 0);
  HandoverLock lock(folder.path());
  auto held = lock.take(30s);  // The program has it until all settings are written.
  ASSERT_TRUE(held);
  ::kill(program->pid(), SIGKILL);
  // The guardian becomes the repair, which finds the lock taken.
  const auto repairs = [&] {
    QFile line(u"/proc/%1/cmdline"_s.arg(watching));
    return line.open(QIODevice::ReadOnly) && line.readAll().contains("--restore-dock\0");
  };
  ASSERT_TRUE(VirtualDisplay::waitUntil(repairs));

  SystemDockPreferences preferences(folder.path());
  NativeDockState state(folder.path(), preferences, NoGuard::shared(), {.patience = {}, .file = -1, .lock = &lock});
  EXPECT_FALSE(state.recoveryError());
  EXPECT_EQ(dconfDump(), before);
  state.apply(DockLayout::Replace);
  held.reset();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !repairs(); }));
  EXPECT_TRUE(QFile::exists(file()));
  EXPECT_EQ(dconf(u"unhide-delay"_s), "1000000");
  state.restore();
  EXPECT_TRUE(isGivenBack(before));
}

TEST_F(PlankTest, ReallyGoesOutOfTheWay) {
  setUser(false);
  ASSERT_TRUE(output({u"dconf"_s, u"write"_s, kPath + u"hide-mode"_s, u"'none'"_s}));
  VirtualDisplay& display = VirtualDisplay::current();
  const QColor wallpaper = display.pixel({5, 5});
  const auto stands = [&] { return display.pixel({640, 797}) != wallpaper; };
  ASSERT_TRUE(VirtualDisplay::waitUntil(stands));
  SystemDockPreferences preferences(folder.path());
  EXPECT_TRUE(preferences.capability());
  NativeDockState state(folder.path(), preferences);
  state.apply(DockLayout::Replace);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !stands(); }));
  state.restore();
  EXPECT_TRUE(VirtualDisplay::waitUntil(stands));
}

TEST_F(PlankTest, WithoutSavedValuesAManualRepairResets) {
  setUser(true);
  EXPECT_EQ(output({holderProgram(), u"--restore-dock"_s, u"--restore-dock-directory"_s, folder.path()}),
            "No saved settings were available. The macOS Dock has been reset to system defaults.\n");
  for (const QString& key : {u"hide-mode"_s, u"unhide-delay"_s, u"pressure-reveal"_s}) EXPECT_EQ(dconf(key), "");
}

}  // namespace
}  // namespace tarnwick::testing
