// Windows of a real program beside the dock of the real executable, until that ends in one way or another.
#include <gtest/gtest.h>
#include <signal.h>

#include <QTemporaryDir>

#include "config/Persistence.h"
#include "desktop/Program.h"
#include "platform/x11/X11WindowFrames.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class X11Reservation : public ::testing::Test {
 protected:
  QRectF frame() { return frames_.frame(window_, 1s).value_or(QRectF()); }
  bool comesTo(const QRectF& place) {
    return VirtualDisplay::waitUntil([&] { return frame() == place; });
  }

  QTemporaryDir folder_;
  X11WindowFrames frames_;
  quint32 window_ = 0;
};

TEST_F(X11Reservation, AWindowUnderTheDockIsMovedAndComesBackWhateverEndsTheDock) {
  DockConfiguration config;
  config.onboardingComplete = true;
  config.desktop.reserveSpace = true;
  Persistence::save(config, folder_.filePath(u"Tarnwick/config.json"_s));
  const auto terminal = ChildProcess::start({u"xterm"_s, u"-T"_s, u"Loose"_s, u"-geometry"_s, u"60x20+300-0"_s});
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] {
    for (const auto& each : frames_.all(1s).value_or(QList<WindowFrames::Window>()))
      if (each.pid == terminal->pid() && each.active) window_ = each.number;
    return window_ != 0;
  }));
  const QRectF before = frame();
  for (const int end : {SIGTERM, SIGKILL, SIGSEGV}) {
    Program program(folder_.path());
    ASSERT_TRUE(program.shows(1)) << qPrintable(program.standardError());
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return frame().bottom() < before.bottom() - 50; }));
    EXPECT_EQ(frame().size(), before.size());
    program.signal(end);
    program.end();
    EXPECT_TRUE(comesTo(before)) << "after signal " << end;
  }
  // What its user moves meanwhile stays there.
  Program program(folder_.path());
  ASSERT_TRUE(VirtualDisplay::waitUntil(
      [&] { return frame().bottom() < before.bottom() - 50 && frame().left() == before.left(); }));
  const QRectF chosen = frame().translated(40, -60);
  ASSERT_TRUE(frames_.setFrame(window_, chosen, 1s));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
  EXPECT_EQ(frame(), chosen);
}

}  // namespace
}  // namespace tarnwick::testing
