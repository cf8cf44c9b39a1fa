// The parts that a dock is put together of, each by itself.

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <algorithm>

#include "../support/TestFrameClock.h"
#include "../support/TestScheduler.h"
#include "DockFixture.h"
#include "config/Reordering.h"
#include "dock/rules/Magnification.h"
#include "views/dock/EdgeScroll.h"
#include "views/dock/Gestures.h"
#include "views/dock/Magnifier.h"
#include "views/dock/ProfileTabs.h"
#include "views/dock/TileDragController.h"
#include "views/theme/Theme.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

/// A row in a slot, and a clock for what moves in it.
class DockParts : public ::testing::Test {
 protected:
  DockParts() {
    auto made = std::make_unique<test::TestFrameClock>();
    clock = made.get();
    animator.setClock(std::move(made));
    row = starterRow();
    stand(900);
  }
  void stand(double width, const RowPose& pose = {}) {
    slot = QRectF(0, 20, width, 84);
    layout = RowLayout::of(row, slot, 1, pose);
  }
  QPointF middleOf(qsizetype item) const { return layout.items[item].rect.center(); }

  DockRow row;
  QRectF slot;
  RowLayout layout;
  Animator animator;
  test::TestFrameClock* clock;  // Owned by the animator.
};

}  // namespace

TEST_F(DockParts, TheMagnifierFollowsThePointerOnceAFrame) {
  QList<qsizetype> changed;
  Magnifier magnifier(
      row, layout, animator, [](qsizetype item) { return item != 3; }, [&](qsizetype item) { changed << item; });
  magnifier.point(middleOf(1).x());
  EXPECT_EQ(magnifier.of(1), 1) << "growing takes its time";
  clock->beat(1);
  EXPECT_NEAR(magnifier.of(1), 1 + Magnification::kMost, 0.01);
  EXPECT_EQ(magnifier.of(3), 1) << "it doesn't answer the pointer";
  EXPECT_EQ(magnifier.of(6), 1) << "it is far away";
  EXPECT_FALSE(clock->isRunning());

  changed.clear();
  magnifier.point(middleOf(1).x() + 10);
  const qsizetype atOnce = changed.size();
  EXPECT_GT(atOnce, 0);
  for (int way = 11; way < 40; ++way) magnifier.point(middleOf(1).x() + way);
  EXPECT_EQ(changed.size(), atOnce) << "no more often than there are frames";
  clock->beat(0.04);
  EXPECT_GT(changed.size(), atOnce);
  const double after = magnifier.of(1);
  clock->beat(1);
  EXPECT_EQ(magnifier.of(1), after);
  EXPECT_FALSE(clock->isRunning());

  magnifier.point(std::nullopt);
  clock->beat(1);
  for (qsizetype item = 0; item < layout.items.size(); ++item) EXPECT_EQ(magnifier.of(item), 1);
  row.swelling = Magnification::kMuch;
  magnifier.point(middleOf(1).x());
  clock->beat(1);
  EXPECT_NEAR(magnifier.of(1), 1 + Magnification::kMuch, 0.01);
  magnifier.point(std::nullopt);
  clock->beat(1);
  const auto rests = [&] {
    magnifier.point(middleOf(1).x());
    return !clock->isRunning() && magnifier.of(1) == 1;
  };
  row.swelling = 0;
  EXPECT_TRUE(rests()) << "who wants none has no frames for it either";
  row.swelling = Magnification::kMost;
  row.reduceMotion = true;
  EXPECT_TRUE(rests());
}

TEST_F(DockParts, TheEndsOfALongRowScrollAsLongAsSomethingIsHeldThere) {
  double scrolled = 0;
  bool goesOn = true;
  EdgeScroll edges(row, layout, animator, [&](double units) {
    scrolled += units;
    return goesOn;
  });
  edges.hold({layout.glass.right() - 2, 50});
  EXPECT_FALSE(clock->isRunning()) << "the whole row is seen";
  for (const bool mirrored : {false, true}) {
    stand(400, {0, 0, mirrored});
    ASSERT_GT(layout.overflow, 0);
    const QPointF right(layout.glass.right() - 2, 50);
    const QPointF left(layout.glass.left() + 2, 50);
    scrolled = 0;
    goesOn = true;
    edges.hold(mirrored ? left : right);
    clock->beat(0.5);
    EXPECT_NEAR(scrolled, theme::kEdgeScroll / 2, theme::kEdgeScroll / 50);
    edges.hold(mirrored ? right : left);
    clock->beat(0.5);
    EXPECT_NEAR(scrolled, 0, theme::kEdgeScroll / 50);
    edges.hold(layout.glass.center());
    EXPECT_FALSE(clock->isRunning());
    edges.hold(right);
    goesOn = false;
    EXPECT_EQ(clock->beat(1), 1) << "at the end of the row";
    edges.hold(right);
    edges.letGo();
    EXPECT_FALSE(clock->isRunning());
  }
}

TEST_F(DockParts, ADraggedTileMakesRoomAndGoesHomeByItself) {
  EdgeScroll edges(row, layout, animator, [](double) { return false; });
  TileDragController drag(row, layout, animator, edges,
                          [this](const DockRow& other) { return RowLayout::of(other, slot, 1); });
  QSignalSpy landed(&drag, &TileDragController::landed);
  EXPECT_TRUE(drag.visibleLefts().isEmpty());
  drag.begin(0, middleOf(0));
  EXPECT_TRUE(drag.holds(0));
  EXPECT_EQ(drag.liftedItem(), 0);
  drag.moveTo(middleOf(2));
  clock->beat(1);
  EXPECT_NEAR(drag.lift(), 1, 1e-9);
  // The two that it passed are where they would be without it, and the gap behind them.
  RowLayout other = layout;
  DockRow moved = row;
  moved.widgets = Reordering::reordered(row.widgets, 0, 2);
  other = RowLayout::of(moved, slot, 1);
  for (const qsizetype item : {1, 2})
    EXPECT_NEAR(drag.shiftOf(item), other.items[item - 1].rect.left() - layout.items[item].rect.left(), 0.01) << item;
  EXPECT_EQ(drag.shiftOf(3), 0);
  EXPECT_EQ(drag.gap().left(), std::round(other.items[2].rect.left()));
  // Far away the gap is where it came from, and letting go there means nothing.
  drag.moveTo(middleOf(2) - QPointF(0, 300));
  clock->beat(1);
  EXPECT_EQ(drag.shiftOf(1), 0);
  EXPECT_FALSE(drag.drop());
  EXPECT_TRUE(drag.isLanding());
  drag.settle();
  clock->beat(1);
  EXPECT_EQ(landed.count(), 1);
  EXPECT_FALSE(drag.isBusy());
  EXPECT_FALSE(clock->isRunning());

  drag.begin(0, middleOf(0));
  drag.moveTo(middleOf(2));
  const auto move = drag.drop();
  ASSERT_TRUE(move);
  EXPECT_EQ(*move, (std::pair<qsizetype, qsizetype>(0, 2)));
  // The new row goes on from where the old one was seen.
  const auto lefts = drag.visibleLefts();
  const QString key = itemKey(row, layout.items[0]);
  row = moved;
  stand(900);
  drag.carryOn(lefts);
  const qsizetype now = itemWithKey(row, layout, key);
  EXPECT_EQ(now, 2);
  EXPECT_TRUE(drag.isLifted(now));
  EXPECT_NEAR(layout.items[now].rect.left() + drag.shiftOf(now), lefts.value(key), 0.01);
  clock->beat(1);
  EXPECT_FALSE(drag.isBusy());
}

TEST_F(DockParts, TabsComeAfterTheirDelayAndStayAsTheyAreWhileTheyAreHeld) {
  row.tabs = {u"Everyday"_s, u"Work"_s, u"Home"_s};
  test::TestScheduler time;
  ProfileTabs tabs(row, layout, animator);
  QSignalSpy due(&tabs, &ProfileTabs::due);
  tabs.hover(true, false);
  time.advance(1);
  EXPECT_EQ(due.count(), 0) << "with nothing to count by";
  tabs.hover(false, false);
  tabs.setScheduler(&time);
  struct Case {
    const char* what;
    bool inside, held;
    qsizetype dueCount;
    double share;
  };
  const std::vector<Case> cases = {{"away", false, false, 0, 0},
                                   {"held from coming", true, true, 0, 0},
                                   {"there", true, false, 1, 1},
                                   {"held from going", false, true, 0, 1},
                                   {"away again", false, false, 1, 0}};
  for (const Case& one : cases) {
    due.clear();
    tabs.hover(one.inside, one.held);
    time.advance(theme::kTabsDelay + 0.01);
    ASSERT_EQ(due.count(), one.dueCount) << one.what;
    if (one.dueCount > 0) {
      EXPECT_TRUE(tabs.show(due[0][0].toBool(), true)) << one.what;
    }
    EXPECT_EQ(tabs.areMoving(), one.dueCount > 0) << one.what;
    clock->beat(1);
    EXPECT_EQ(tabs.share(), one.share) << one.what;
  }
  EXPECT_EQ(time.waiting(), 0);
  EXPECT_FALSE(clock->isRunning());
  row.tabs = {u"Everyday"_s};
  EXPECT_FALSE(tabs.show(true, true)) << "of one profile there are no tabs";
}

TEST_F(DockParts, ASwipeSlidesTheRowAndSwitchesThatWay) {
  row.tabs = {u"A"_s, u"B"_s, u"C"_s};
  ProfileTabs tabs(row, layout, animator);
  QList<std::pair<qsizetype, bool>> chosen;
  QObject::connect(&tabs, &ProfileTabs::activated, [&](qsizetype tab) {
    DockRow next = row;
    next.activeTab = tab;
    chosen.append({tab, tabs.isForward(next)});
    tabs.beginSlide(QPixmap(10, 10), tabs.isForward(next));
  });
  tabs.swipeBy(-20);
  EXPECT_EQ(tabs.offset(), -20 * theme::kSwipeFollows);
  tabs.endSwipe(-20, 0);
  EXPECT_TRUE(chosen.isEmpty());
  clock->beat(1);
  EXPECT_EQ(tabs.offset(), 0);
  tabs.swipeBy(90);
  tabs.endSwipe(90, 0);
  // Backwards, though by the shorter way it were as far forwards.
  EXPECT_EQ(chosen, (QList<std::pair<qsizetype, bool>>{{2, false}}));
  ASSERT_TRUE(tabs.slide());
  EXPECT_EQ(tabs.slide()->oldStart, 45);
  EXPECT_EQ(tabs.offset(), 45 - theme::kSlideTravel);
  clock->beat(1);
  EXPECT_FALSE(tabs.slide());
  EXPECT_EQ(tabs.offset(), 0);
  EXPECT_FALSE(clock->isRunning());
}

TEST(Wheels, CountWholeStepsOverOneThingInOneDirection) {
  WheelMeter wheel;
  struct Case {
    qsizetype over;
    double turned;
    int steps;
  };
  const std::vector<Case> cases = {{0, 60, 0},  {0, 60, 1},   {0, 300, 2},   {0, 60, 1}, {0, 100, 0},
                                   {1, 100, 0}, {1, -119, 0}, {1, -121, -2}, {1, 119, 0}};
  for (const Case& one : cases)
    EXPECT_EQ(wheel.steps(one.over, one.turned), one.steps) << one.over << ' ' << one.turned;
}

}  // namespace tarnwick::testing
