// The process dies at every single call; the next start gives back what the user had, byte for byte.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>

#include "dock/NativeDockState.h"
#include "handover/FakeDock.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Runs `work` in a process that is killed at its call number `fatal`; whether it got that far.
template <class Work>
bool diesAt(int fatal, FakeDock& dock, const Work& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    dock.journal.clear();
    dock.before = [&](const QString&) {
      if (dock.journal.size() == fatal) ::kill(::getpid(), SIGKILL);
    };
    try {
      work();
      ::_exit(0);
    } catch (const std::exception&) {
      ::_exit(1);
    }
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << fatal;
  return WIFSIGNALED(status);
}

/// What a user has set.
struct User {
  const char* name;
  QVariantMap values;
};

void PrintTo(const User& user, std::ostream* out) { *out << user.name; }

class CrashTest : public ::testing::TestWithParam<User> {
 protected:
  void SetUp() override { dock.setValues(GetParam().values); }

  /// A day of changes.
  void run() {
    NativeDockState state(folder.path(), dock);
    for (const DockLayout layout :
         {DockLayout::Swap, DockLayout::Replace, DockLayout::Fixed, DockLayout::Replace, DockLayout::ReplaceAutoHide}) {
      state.apply(layout);
    }
    state.restore();
  }
  void expectRepaired(const QByteArray& before) {
    const NativeDockState state(folder.path(), dock);
    EXPECT_EQ(dock.bytes(), before);
    EXPECT_FALSE(state.recoveryError());
    EXPECT_FALSE(QFile::exists(NativeDockState::recoveryFile(folder.path())));
  }

  QTemporaryDir folder;
  FakeDock dock{folder.filePath(u"dock.json"_s)};
};

TEST_P(CrashTest, TheNextStartGivesBack) {
  const QByteArray before = dock.bytes();
  int fatal = 0;
  while (diesAt(fatal, dock, [&] { run(); })) {
    expectRepaired(before);
    ++fatal;
  }
  EXPECT_EQ(dock.bytes(), before);
  EXPECT_GT(fatal, 25);
}

TEST_P(CrashTest, AStartThatDiesWhileItRepairsIsRepairedByTheNext) {
  const QByteArray before = dock.bytes();
  for (int fatal = 0; fatal < 5; ++fatal) {
    ASSERT_TRUE(diesAt(7, dock, [&] { run(); }));
    ASSERT_NE(dock.bytes(), before);
    diesAt(fatal, dock, [&] { const NativeDockState state(folder.path(), dock); });
    expectRepaired(before);
  }
}

INSTANTIATE_TEST_SUITE_P(Users, CrashTest,
                         ::testing::Values(User{"SetNothing", {}}, User{"SetTheDelay", {{u"autohide-delay"_s, 0.5}}},
                                           User{"SetBoth", {{u"autohide"_s, true}, {u"autohide-delay"_s, 0.1}}}),
                         [](const auto& user) { return std::string(user.param.name); });

}  // namespace
}  // namespace tarnwick
