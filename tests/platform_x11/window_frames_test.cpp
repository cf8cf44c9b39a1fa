#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>

#include "platform/linux/ProcessLaunch.h"
#include "platform/x11/X11WindowFrames.h"
#include "support/ForeignWindow.h"
#include "support/VirtualDisplay.h"
#include "windows/WindowKeeper.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto kPatience = 500ms;

/// Ends its process without a word at a certain call.
class DyingFrames final : public WindowFrames {
 public:
  explicit DyingFrames(int calls) : left_(calls) {}

  Capability capability() override { return step(), frames_.capability(); }
  std::optional<QList<Window>> all(std::chrono::milliseconds patience) override {
    return step(), frames_.all(patience);
  }
  std::optional<QRectF> frame(quint32 number, std::chrono::milliseconds patience) override {
    return step(), frames_.frame(number, patience);
  }
  QRectF accepted(quint32 number, const QRectF& wanted) override { return step(), frames_.accepted(number, wanted); }
  bool setFrame(quint32 number, const QRectF& frame, std::chrono::milliseconds patience) override {
    step();
    const bool isThere = frames_.setFrame(number, frame, patience);
    step();
    return isThere;
  }

 private:
  void step() {
    if (--left_ == 0) ::kill(::getpid(), SIGKILL);
  }

  X11WindowFrames frames_;
  int left_;
};

/// Moves windows aside and back in a process of its own, which dies at that call. Whether it did.
bool diesWhileMoving(const QString& folder, const ReservedSpace& space, int call) {
  const pid_t child = ::fork();
  if (child == 0) {
    DyingFrames frames(call);
    WindowReservationJournal journal(folder, 0ms);
    WindowKeeper keeper(frames, journal, &processLaunch, ::getpid());
    keeper.reserve({space});
    keeper.restore();
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFSIGNALED(status);
}

/// Real programs under a real window manager, seen over a connection of the adapter's own.
class X11WindowFramesTest : public ::testing::Test {
 protected:
  /// A terminal of that many letters, in front once this returns its window.
  WindowFrames::Window terminal(const QString& geometry) {
    programs_.push_back(ChildProcess::start({u"xterm"_s, u"-T"_s, u"Terminal"_s, u"-geometry"_s, geometry}));
    const qint64 pid = programs_.back()->pid();
    std::optional<WindowFrames::Window> found;
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
      for (const WindowFrames::Window& window : frames_.all(kPatience).value_or(QList<WindowFrames::Window>()))
        if (window.pid == pid && window.active) found = window;
      return found.has_value();
    }));
    return found.value_or(WindowFrames::Window());
  }
  QRectF frame(quint32 number) { return frames_.frame(number, kPatience).value_or(QRectF()); }

  X11WindowFrames frames_;
  std::vector<std::unique_ptr<ChildProcess>> programs_;
};

TEST_F(X11WindowFramesTest, AWindowIsMovedWithWhatTheManagerDrawsAroundIt) {
  ASSERT_TRUE(frames_.capability());
  const auto window = terminal(u"40x10+100+100"_s);
  ASSERT_NE(window.number, 0U);
  const QRectF before = frame(window.number);
  EXPECT_EQ(before, window.frame);
  // A place alone, and back: nothing creeps by the width of a border.
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(frames_.setFrame(window.number, before.translated(30, 40), kPatience));
    EXPECT_EQ(frame(window.number), before.translated(30, 40));
    ASSERT_TRUE(frames_.setFrame(window.number, before, kPatience));
    EXPECT_EQ(frame(window.number), before);
  }
  // A terminal has whole letters: it accepts a little less, and takes that.
  const QRectF wanted = before.adjusted(0, 0, -21, -21);
  const QRectF accepted = frames_.accepted(window.number, wanted);
  EXPECT_TRUE(wanted.contains(accepted));
  EXPECT_GT(accepted.height(), wanted.height() - 30);
  ASSERT_TRUE(frames_.setFrame(window.number, accepted, kPatience));
  EXPECT_TRUE(WindowReservation::near(frame(window.number), accepted));
  EXPECT_TRUE(frames_.accepted(window.number, QRectF(0, 0, 5, 5)).isEmpty());
  // What no server can do, and a window that is gone.
  EXPECT_FALSE(frames_.setFrame(window.number, QRectF(1e9, 0, 100, 100), kPatience));
  programs_.clear();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !frames_.frame(window.number, kPatience); }));
  EXPECT_FALSE(frames_.setFrame(window.number, before, kPatience));
}

TEST_F(X11WindowFramesTest, WindowsAreKeptClearOfADockAndComeBackAfterADeath) {
  const QTemporaryDir folder;
  const auto window = terminal(u"60x20+100+300"_s);
  const QRectF before = frame(window.number);
  const QRectF dock(0, before.bottom() - 50, 1000, 200);
  const QRectF display(0, 0, dock.right(), dock.bottom());
  ASSERT_TRUE(processLaunch(window.pid));
  {
    WindowReservationJournal journal(folder.path(), 0ms);
    WindowKeeper keeper(frames_, journal, &processLaunch, QCoreApplication::applicationPid());
    EXPECT_EQ(keeper.reserve({{dock, display, 1}}), QString());
    EXPECT_EQ(frame(window.number).bottom(), dock.top() - 8);
    EXPECT_EQ(frame(window.number).size(), before.size());
  }
  WindowReservationJournal journal(folder.path(), 0ms);
  EXPECT_EQ(journal.records().size(), 1);
  WindowKeeper keeper(frames_, journal, &processLaunch, QCoreApplication::applicationPid());
  EXPECT_EQ(keeper.restore(), QString());
  EXPECT_EQ(frame(window.number), before);
  EXPECT_TRUE(journal.records().isEmpty());
}

TEST_F(X11WindowFramesTest, AWindowComesBackWhereverItsMoverIsKilled) {
  const QTemporaryDir folder;
  const auto window = terminal(u"60x20+100+300"_s);
  const QRectF before = frame(window.number);
  const QRectF dock(0, before.bottom() - 50, 1000, 200);
  const ReservedSpace space{dock, QRectF(0, 0, dock.right(), dock.bottom()), 1};
  int kills = 0;
  int moved = 0;
  for (int call = 1; kills < 200; ++call) {
    // Behind the last call it ends by itself, and all steps begin again.
    if (!diesWhileMoving(folder.path(), space, call)) {
      ASSERT_GT(call, 5);
      call = 0;
      continue;
    }
    ++kills;
    if (frame(window.number) != before) ++moved;
    WindowReservationJournal journal(folder.path(), 0ms);
    WindowKeeper keeper(frames_, journal, &processLaunch, ::getpid());
    ASSERT_EQ(keeper.restore(), QString());
    ASSERT_EQ(frame(window.number), before) << "killed at call " << call;
    ASSERT_TRUE(journal.records().isEmpty());
  }
  EXPECT_GT(moved, 20) << "many died while it stood aside";
}

}  // namespace
}  // namespace tarnwick::testing
