// A meeting program of its own is read and driven over the real accessibility bus.
#include <gtest/gtest.h>
#include <signal.h>

#include "platform/dbus/AtSpiControls.h"
#include "platform/linux/ProcessName.h"
#include "support/VirtualDisplay.h"
#include "windows/ZoomMeetingService.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class RealMeeting : public ::testing::Test {
 protected:
  void open(const QString& trait = {}) {
    program_ = ChildProcess::start({QCoreApplication::applicationDirPath() + u"/meeting_program"_s, trait});
  }
  /// Reads until that holds.
  bool reads(const std::function<bool()>& holds) {
    return VirtualDisplay::waitUntil([&] {
      if (service_.loading()) return false;
      if (holds()) return true;
      service_.refresh();
      return false;
    });
  }

  std::unique_ptr<ChildProcess> program_;
  ZoomMeetingService service_{{.controls = [] { return std::make_unique<AtSpiControls>(); },
                               .processes = [] { return processesNamed(u"zoom"_s); }}};
};

TEST_F(RealMeeting, ItsButtonsAreSeenAndPressed) {
  ASSERT_TRUE(reads([&] { return service_.error() == u"Open a Zoom meeting, then refresh."_s; }));
  open();
  ASSERT_TRUE(reads([&] { return service_.connected(); }));
  EXPECT_EQ(service_.actions(), (QMap<ZoomAction, QString>{{ZoomAction::Microphone, u"Mute"_s}}));
  EXPECT_EQ(service_.participants(), 3);
  EXPECT_EQ(service_.duration(), u"12:05"_s);
  service_.perform(ZoomAction::Microphone, u"Mute"_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    return !service_.loading() && service_.actions().value(ZoomAction::Microphone) == u"Unmute"_s;
  })) << qPrintable(service_.error());
  // Pressed by what was seen before, nothing happens.
  service_.perform(ZoomAction::Microphone, u"Mute"_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !service_.loading(); }));
  EXPECT_EQ(service_.error(), u"Zoom’s controls changed. Refresh before trying again."_s);
  ASSERT_TRUE(reads([&] { return service_.error().isEmpty(); }));
  EXPECT_EQ(service_.actions().value(ZoomAction::Microphone), u"Unmute"_s);

  // One that hangs answers nothing, and nobody waits for it for ever.
  program_->signal(SIGSTOP);
  service_.refresh();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !service_.loading() && !service_.connected(); }));
  EXPECT_TRUE(service_.error().startsWith(u"No supported meeting toolbar"_s));
  program_->signal(SIGCONT);
  EXPECT_TRUE(reads([&] { return service_.connected(); }));
}

TEST_F(RealMeeting, ACrowdIsNotLookedThrough) {
  open(u"crowd"_s);
  AtSpiControls controls;
  // Its window is there, and more in it than is looked at.
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] {
    const auto windows = controls.windows(program_->pid());
    return !windows.isEmpty() && controls.children(windows.first()).size() > 700;
  }));
  service_.refresh();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !service_.loading(); }));
  EXPECT_TRUE(service_.error().startsWith(u"No supported meeting toolbar"_s));
}

}  // namespace
}  // namespace tarnwick::testing
