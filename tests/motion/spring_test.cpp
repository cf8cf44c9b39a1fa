#include <gtest/gtest.h>

#include <QWidget>
#include <cmath>
#include <numbers>

#include "motion/SpringDriver.h"
#include "support/TestFrameClock.h"

namespace tarnwick {
namespace {

using test::TestFrameClock;

/// The same oscillator in very many small steps (Runge and Kutta's of the fourth order).
RevealSpring integrated(RevealSpring spring, double seconds, double response, double damping) {
  const double w = 2 * std::numbers::pi / response;
  const auto pull = [&](double x, double v) { return -w * w * x - 2 * damping * w * v; };
  constexpr int steps = 5'000;
  const double h = seconds / steps;
  double x = spring.value - spring.target, v = spring.velocity;
  for (int i = 0; i < steps; ++i) {
    const double v1 = v, a1 = pull(x, v);
    const double v2 = v + h / 2 * a1, a2 = pull(x + h / 2 * v1, v2);
    const double v3 = v + h / 2 * a2, a3 = pull(x + h / 2 * v2, v3);
    const double v4 = v + h * a3, a4 = pull(x + h * v3, v4);
    x += h / 6 * (v1 + 2 * v2 + 2 * v3 + v4);
    v += h / 6 * (a1 + 2 * a2 + 2 * a3 + a4);
  }
  return {spring.target + x, v, spring.target};
}

TEST(RevealSpring, LandsWhereTheOscillatorDoes) {
  const RevealSpring starts[] = {{0, 0, 1}, {0.4, -3, 1}, {1.2, 5, 0}};
  for (const double damping : {0.0, 0.2, 0.8, 0.9999, 1.0, 1.0001, 1.5, 6.0}) {
    for (const double response : {0.15, 0.4}) {
      for (const double seconds : {1.0 / 144, 0.05, 0.3}) {
        for (const RevealSpring& start : starts) {
          RevealSpring once = start, often = start;
          EXPECT_TRUE(once.step(seconds, response, damping));
          for (int i = 0; i < 10; ++i) often.step(seconds / 10, response, damping);
          const RevealSpring expected = integrated(start, seconds, response, damping);
          EXPECT_NEAR(once.value, expected.value, 1e-6) << damping << " " << response << " " << seconds;
          EXPECT_NEAR(once.velocity, expected.velocity, 1e-4) << damping << " " << response << " " << seconds;
          EXPECT_NEAR(often.value, once.value, 1e-9) << damping << " " << response << " " << seconds;
          EXPECT_NEAR(often.velocity, once.velocity, 1e-7) << damping << " " << response << " " << seconds;
        }
      }
    }
  }
}

TEST(RevealSpring, JumpsWithoutTimeOrPeriodAndRestsAtTheTarget) {
  for (const auto& [dt, response] : {std::pair{0.0, 0.4}, {-1.0, 0.4}, {0.1, 0.0}, {0.1, -1.0}}) {
    RevealSpring spring{0.3, 7, 1};
    EXPECT_FALSE(spring.step(dt, response, 1));
    EXPECT_EQ(spring.value, 1);
    EXPECT_EQ(spring.velocity, 0);
  }
  RevealSpring slow{0, 0, 1};
  EXPECT_FALSE(slow.step(1, 0.4, 1)) << "a second is long enough";
  EXPECT_EQ(slow.value, 1);
  RevealSpring passing{1.0005, 4, 1};
  EXPECT_TRUE(passing.step(1e-6, 0.4, 1)) << "at the target, but not at rest";

  const auto greatest = [](double damping) {
    RevealSpring spring{0, 0, 1};
    double most = 0;
    while (spring.step(TestFrameClock::kFrame, 0.3, damping)) most = std::max(most, spring.value);
    return most;
  };
  EXPECT_GT(greatest(0.8), 1.01);
  EXPECT_LE(greatest(1), 1);
}

TEST(MotionParameters, FollowTheStyle) {
  EXPECT_EQ(MotionParameters::of(MotionStyle::Reveal, false), (MotionParameters{0.4, 1.0}));
  EXPECT_EQ(MotionParameters::of(MotionStyle::Quick, false), (MotionParameters{0.25, 1.0}));
  EXPECT_EQ(MotionParameters::of(MotionStyle::Lively, false), (MotionParameters{0.3, 0.8}));
  for (const MotionStyle style : {MotionStyle::Reveal, MotionStyle::Quick, MotionStyle::Lively}) {
    EXPECT_EQ(MotionParameters::of(style, true), (MotionParameters{0.15, 1.0}));
  }
}

struct SpringDriverTest : ::testing::Test {
  SpringDriverTest() { view.show(); }

  void animate(double to, bool animated = true) { driver.animate(to, MotionStyle::Reveal, animated, false); }

  QWidget view;
  TestFrameClock* clock = new TestFrameClock;
  QList<double> values;
  SpringDriver driver{&view, std::unique_ptr<FrameClock>(clock), [this](double value) { values.append(value); }};
};

TEST_F(SpringDriverTest, RunsUntilItRests) {
  animate(1);
  EXPECT_TRUE(values.isEmpty());
  const int frames = clock->beat(5);
  EXPECT_FALSE(driver.isMoving());
  EXPECT_EQ(values.size(), frames);
  EXPECT_EQ(values.last(), 1);
  EXPECT_TRUE(std::ranges::is_sorted(values));
  EXPECT_LT(frames * TestFrameClock::kFrame, 0.9);

  RevealSpring expected{0, 0, 1};
  expected.step(TestFrameClock::kFrame, 0.4, 1);
  EXPECT_NEAR(values.first(), expected.value, 1e-9) << "the first frame has the length that the clock tells";

  animate(1);
  EXPECT_EQ(clock->starts, 1) << "it rests there already";
  EXPECT_EQ(values.size(), frames);
}

TEST_F(SpringDriverTest, ReversesWithoutAJump) {
  animate(1);
  clock->beat(0.1);
  const RevealSpring before = driver.spring();
  animate(1);
  animate(0);
  EXPECT_EQ(clock->starts, 1);
  EXPECT_EQ(driver.spring().value, before.value);
  EXPECT_EQ(driver.spring().velocity, before.velocity);
  clock->beat();
  EXPECT_GT(driver.spring().value, before.value - 0.01) << "it first loses its speed";
  clock->beat(5);
  EXPECT_EQ(values.last(), 0);
}

TEST_F(SpringDriverTest, JumpsWhereNothingIsSeen) {
  animate(1, false);
  EXPECT_EQ(values, QList<double>{1});
  view.hide();
  animate(0);
  EXPECT_EQ(values, (QList<double>{1, 0}));
  EXPECT_EQ(clock->starts, 0);

  view.show();
  animate(1);
  clock->beat(0.1);
  view.hide();
  animate(1);
  EXPECT_EQ(values.last(), 1) << "hidden on the way";
  EXPECT_FALSE(driver.isMoving());
}

TEST_F(SpringDriverTest, MayBeRedirectedWhileItTells) {
  int turns = 0;
  auto* own = new TestFrameClock;
  SpringDriver* turning = nullptr;
  SpringDriver owner(&view, std::unique_ptr<FrameClock>(own), [&](double value) {
    if (value == 1 && turns++ == 0) turning->animate(0, MotionStyle::Quick, true, false);
  });
  turning = &owner;
  owner.animate(1, MotionStyle::Quick, true, false);
  own->beat(10);
  EXPECT_EQ(turns, 1);
  EXPECT_EQ(owner.spring().value, 0);
  EXPECT_FALSE(owner.isMoving());
}

}  // namespace
}  // namespace tarnwick
