#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "desktop/Program.h"
#include "dock/NativeDockState.h"
#include "handover/Docks.h"
#include "platform/docks/GuardianProcess.h"
#include "support/TestScheduler.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class GuardianTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // Stands for the program: it notes how it was called, and with which file.
    write(restorer, "#!/bin/sh\necho \"$(cat <&3) $@\" > \"$0.called\"\n");
    QFile::setPermissions(restorer, QFile::ReadOwner | QFile::ExeOwner);
    write(file, "values");
  }
  static void write(const QString& path, const QByteArray& bytes) {
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes);
  }
  QByteArray called() const {
    QFile in(restorer + u".called"_s);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }
  /// Waits until the guardian has begun its work, so that what follows is not before it.
  pid_t started() const {
    const auto isReady = [&] {
      const QList<pid_t> all = guardiansOf(folder.path());
      return all.size() == 1 && QFile::symLinkTarget(u"/proc/%1/cwd"_s.arg(all[0])) == u"/"_s && isWaiting(all[0]);
    };
    EXPECT_TRUE(VirtualDisplay::waitUntil(isReady));
    return guardiansOf(folder.path()).value(0);
  }
  static bool isWaiting(pid_t process) {
    QFile state(u"/proc/%1/stat"_s.arg(process));
    return state.open(QIODevice::ReadOnly) && state.readAll().contains(") S ");
  }
  bool isGone() const {
    return VirtualDisplay::waitUntil([&] { return guardiansOf(folder.path()).isEmpty(); });
  }

  test::TestScheduler scheduler;
  QTemporaryDir folder;
  QString restorer = folder.filePath(u"restorer"_s);
  QString file = NativeDockState::recoveryFile(folder.path());
};

TEST_F(GuardianTest, ActsOnlyWhenTheLineBreaksWithoutAWord) {
  {
    GuardianProcess guardian(restorer, scheduler);
    guardian.watch(file);
    guardian.watch(file);
    const pid_t process = started();
    // What a session's end sends to everybody does not end it.
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) ::kill(process, signal);
    guardian.release();
    EXPECT_TRUE(isGone());
    EXPECT_EQ(called(), "");
    guardian.watch(file);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) ::kill(started(), signal);
  }
  const QByteArray expected = "values --restore-dock --restore-dock-directory " + folder.path().toUtf8() + '\n';
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return called() == expected; }));
}

TEST_F(GuardianTest, OneThatIsKilledIsReplaced) {
  {
    GuardianProcess guardian(restorer, scheduler);
    guardian.watch(file);
    const pid_t first = started();
    ::kill(first, SIGKILL);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
      const QList<pid_t> all = guardiansOf(folder.path());
      return all.size() == 1 && all[0] != first;
    }));
    started();
    EXPECT_EQ(called(), "");
  }
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !called().isEmpty(); }));
}

TEST_F(GuardianTest, OneThatIsKilledAgainAndAgainComesBackAfterAWhile) {
  GuardianProcess guardian(restorer, scheduler, {.replacements = 1, .window = 60});
  guardian.watch(file);
  for (int window = 0; window < 2; ++window) {
    const pid_t first = started();
    if (window == 0) {
      // The one that a window has is not taken by the guardian that it began with.
      ::kill(first, SIGKILL);
      EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
        const QList<pid_t> all = guardiansOf(folder.path());
        return all.size() == 1 && all[0] != first;
      }));
    }
    ::kill(started(), SIGKILL);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return scheduler.waiting() == 1; })) << window;
    EXPECT_TRUE(isGone());
    scheduler.advance(59);
    EXPECT_TRUE(guardiansOf(folder.path()).isEmpty());
    scheduler.advance(1);
    EXPECT_EQ(scheduler.waiting(), 0);
  }
  started();
  guardian.release();
  EXPECT_TRUE(isGone());
  EXPECT_EQ(called(), "");
}

TEST_F(GuardianTest, StandsByForTheFileThatIsThereLast) {
  {
    GuardianProcess guardian(restorer, scheduler);
    guardian.watch(file);
    const pid_t first = started();
    guardian.watch(file);
    EXPECT_EQ(started(), first);
    ASSERT_TRUE(QFile::rename(file, folder.filePath(u"old"_s)));
    write(file, "others");
    guardian.watch(file);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
      const QList<pid_t> all = guardiansOf(folder.path());
      return all.size() == 1 && all[0] != first;
    }));
    started();
  }
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return called().startsWith("others "); }));
}

TEST_F(GuardianTest, StandsByForMovedWindowsToo) {
  const QString journal = folder.filePath(u"window-recovery.json"_s);
  const QByteArray directory = " --restore-dock-directory " + folder.path().toUtf8() + '\n';
  const struct {
    const char* what;
    bool dock;
    bool releasesDock;
    const char* journal;
    QByteArray called;
  } cases[] = {{"windows alone", false, false, "[{}]", " --restore-windows" + directory},
               {"none of which is moved any more", false, false, "[]", {}},
               {"with the dock", true, false, "[{}]", "values --restore-dock" + directory},
               {"after the dock", true, true, "[{}]", " --restore-windows" + directory}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    QFile::remove(restorer + u".called"_s);
    write(journal, each.journal);
    {
      GuardianProcess guardian(restorer, scheduler);
      if (each.dock) guardian.watch(file);
      guardian.watchWindows(folder.path());
      guardian.watchWindows(folder.path());
      started();
      if (each.releasesDock) {
        guardian.release();
        started();
      }
    }
    EXPECT_TRUE(isGone());
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return called() == each.called; })) << called().toStdString();
  }
  QFile::remove(restorer + u".called"_s);
  GuardianProcess guardian(restorer, scheduler);
  guardian.watchWindows(folder.path());
  started();
  guardian.releaseWindows();
  EXPECT_TRUE(isGone());
  EXPECT_EQ(called(), "");
}

TEST_F(GuardianTest, LeavesAloneWhatAnotherStartHasRepaired) {
  for (const bool changedAgain : {false, true}) {
    write(file, "values");
    {
      GuardianProcess guardian(restorer, scheduler);
      guardian.watch(file);
      started();
      // Kept, so that the new file cannot get the old one's number.
      ASSERT_TRUE(QFile::rename(file, folder.filePath(u"old%1"_s.arg(changedAgain))));
      if (changedAgain) write(file, "values");
    }
    EXPECT_TRUE(isGone());
    EXPECT_EQ(called(), "");
  }
}

TEST_F(GuardianTest, IsTinyAndKeepsNothingOpen) {
  const int inheritable = ::dup(STDIN_FILENO);
  GuardianProcess guardian(restorer, scheduler);
  guardian.watch(file);
  const pid_t process = started();
  ::close(inheritable);
  // The line, the two outputs, the file and where the outputs lead.
  EXPECT_EQ(
      QDir(u"/proc/%1/fd"_s.arg(process)).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size(), 5);
  QFile statistics(u"/proc/%1/status"_s.arg(process));
  ASSERT_TRUE(statistics.open(QIODevice::ReadOnly));
  const QByteArray text = statistics.readAll();
  const qsizetype at = text.indexOf("RssAnon:") + 8;
  EXPECT_LT(text.mid(at, text.indexOf("kB", at) - at).trimmed().toInt(), 200) << text.constData();
  EXPECT_NE(::getsid(process), ::getsid(0));
  guardian.release();
  EXPECT_TRUE(isGone());
}

}  // namespace
}  // namespace tarnwick::testing
