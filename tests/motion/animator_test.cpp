// What moves: only as long as it does, by the test's own frames.

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <cmath>

#include "../support/TestFrameClock.h"
#include "motion/Fade.h"
#include "motion/Pulse.h"
#include "motion/SpringSet.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;
using test::TestFrameClock;

namespace {

/// A clock that never starts, as where the desktop has no timers left.
class DeadClock final : public FrameClock {
 public:
  void start() override {}
  void stop() override {}
  bool isRunning() const override { return false; }
};

class Motion : public ::testing::Test {
 protected:
  Motion() {
    auto made = std::make_unique<TestFrameClock>();
    clock = made.get();
    animator.setClock(std::move(made));
  }

  Animator animator;
  TestFrameClock* clock;  // Owned by the animator.
};

TEST_F(Motion, OneClockBeatsForAllThatMovesAndForNothingElse) {
  Fade quick(animator, 0.1, [] {});
  Fade slow(animator, 0.3, [] {});
  EXPECT_FALSE(clock->isRunning());
  quick.fadeTo(0);
  EXPECT_FALSE(clock->isRunning()) << "it is there already";
  quick.fadeTo(1);
  slow.fadeTo(1);
  EXPECT_EQ(clock->starts, 1);
  clock->beat(0.15);
  EXPECT_FALSE(quick.isMoving());
  EXPECT_TRUE(slow.isMoving());
  EXPECT_NEAR(slow.value(), 0.5, 0.06);
  clock->beat(1);
  EXPECT_EQ(slow.value(), 1);
  EXPECT_FALSE(clock->isRunning());
}

TEST_F(Motion, ACallbackOfAnAnimationMayStopOrStartOthers) {
  Fade* other = nullptr;
  Fade first(
      animator, 0.1, [&] { other->jump(0.5); }, [&] { other->fadeTo(0); });
  Fade second(animator, 0.1, [] {});
  other = &second;
  second.fadeTo(1);
  first.fadeTo(1);
  clock->beat(0.2);
  EXPECT_EQ(first.value(), 1);
  EXPECT_EQ(second.goal(), 0);
  clock->beat(1);
  EXPECT_EQ(second.value(), 0);
  EXPECT_FALSE(clock->isRunning());

  // One that goes while it moves leaves nothing that beats for it.
  auto gone = std::make_unique<Fade>(animator, 1, [] {});
  gone->fadeTo(1);
  gone.reset();
  EXPECT_FALSE(clock->isRunning());
  // One that is sent on as it arrives goes on without a pause.
  int turns = 0;
  Fade pendulum(
      animator, 0.1, [] {},
      [&] {
        if (++turns < 3) pendulum.fadeTo(pendulum.goal() == 0 ? 1 : 0);
      });
  pendulum.fadeTo(1);
  clock->beat(2);
  EXPECT_EQ(turns, 3);
  EXPECT_EQ(pendulum.value(), 1);
  EXPECT_FALSE(clock->isRunning());
}

TEST(MotionWithoutFrames, EverythingIsWhereItGoesToAtOnce) {
  for (const bool dead : {false, true}) {
    Animator animator(dead ? std::make_unique<DeadClock>() : nullptr);
    int arrived = 0;
    Fade fade(
        animator, 1, [] {}, [&] { ++arrived; });
    SpringSet springs(animator);
    QSignalSpy rested(&springs, &SpringSet::rested);
    Pulse pulse(animator, {0.4, 0.5, 2}, [] {});
    fade.fadeTo(1);
    springs.animate(u"a"_s, 40);
    pulse.start();
    EXPECT_EQ(fade.value(), 1);
    EXPECT_EQ(arrived, 1);
    EXPECT_EQ(springs.value(u"a"_s), 40);
    EXPECT_EQ(rested.count(), 1);
    EXPECT_EQ(pulse.value(), 1);
    EXPECT_FALSE(animator.isRunning());
  }
  // The clock may go while something is on its way.
  Animator animator(std::make_unique<TestFrameClock>());
  SpringSet springs(animator);
  springs.animate(u"a"_s, 40);
  EXPECT_EQ(springs.value(u"a"_s), 0);
  animator.setClock(nullptr);
  EXPECT_EQ(springs.value(u"a"_s), 40);
}

TEST_F(Motion, AFadeTurnsBackFromWhereItIs) {
  Fade fade(animator, 0.12, [] {});
  fade.fadeTo(1);
  clock->beat(0.05);
  const double turned = fade.value();
  EXPECT_GT(turned, 0.3);
  EXPECT_LT(turned, 0.5);
  fade.fadeTo(0);
  clock->beat();
  EXPECT_LT(fade.value(), turned);
  EXPECT_GT(fade.value(), 0);
  EXPECT_LE(clock->beat(1), 3) << "the way back is as long as the way was";
  EXPECT_EQ(fade.value(), 0);
}

TEST_F(Motion, SpringsArriveInTimeAndTellOnlyWhatIsSeen) {
  SpringSet springs(animator);
  springs.setRatio(1);
  QSignalSpy moved(&springs, &SpringSet::moved);
  QSignalSpy rested(&springs, &SpringSet::rested);
  springs.animate(u"far"_s, 300);
  springs.animate(u"near"_s, 0.2);
  const int frames = clock->beat(2);
  EXPECT_LE(frames, 25) << "nothing is seen to move for longer than 0.4 seconds";
  EXPECT_EQ(springs.value(u"far"_s), 300);
  EXPECT_EQ(springs.value(u"near"_s), 0.2);
  EXPECT_EQ(rested.count(), 1);
  EXPECT_FALSE(springs.isMoving());
  EXPECT_FALSE(clock->isRunning());
  moved.clear();
  springs.animate(u"near"_s, 0.4);
  const int steps = clock->beat(1);
  EXPECT_EQ(moved.count(), 1) << "of " << steps << " frames the last";
  // A new goal under way keeps what is seen.
  springs.animate(u"far"_s, 0);
  clock->beat(0.1);
  const double before = springs.value(u"far"_s);
  springs.animate(u"far"_s, 300);
  EXPECT_NEAR(springs.value(u"far"_s), before, 0.01);
}

TEST_F(Motion, APulseBeatsSoOftenAndNotAgainBeforeItWasStopped) {
  int calls = 0;
  Pulse pulse(animator, {0.4, 0.5, 3}, [&] { ++calls; });
  pulse.start();
  clock->beat(0.2);
  EXPECT_NEAR(pulse.value(), 0.5, 0.05);
  clock->beat(0.2);
  EXPECT_NEAR(pulse.value(), 1, 0.05);
  EXPECT_NEAR(clock->beat(5), 48, 1);
  EXPECT_NEAR(calls, 72, 1);
  EXPECT_EQ(pulse.value(), 1);
  pulse.start();
  EXPECT_FALSE(clock->isRunning());
  pulse.stop();
  pulse.start();
  EXPECT_TRUE(clock->isRunning());
  pulse.stop();
  EXPECT_FALSE(clock->isRunning());
}

}  // namespace
}  // namespace tarnwick::testing
