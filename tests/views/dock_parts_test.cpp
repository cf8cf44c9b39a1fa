// The parts that a dock is put together of, each by itself.

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalSpy>
#include <algorithm>

#include "../support/TestFrameClock.h"
#include "../support/TestScheduler.h"
#include "DockFixture.h"
#include "config/Reordering.h"
#include "dock/rules/Magnification.h"
#include "views/dock/EdgeScroll.h"
#include "views/dock/Gestures.h"
#include "views/dock/KeyboardFocus.h"
#include "views/dock/Magnifier.h"
#include "views/dock/PressController.h"
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

  test::TestScheduler time;
  DockRow row;
  QRectF slot;
  RowLayout layout;
  Animator animator;
  test::TestFrameClock* clock;  // Owned by the animator.
};

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
    const QPointF right(layout.middle.right() - 2, 50);
    const QPointF left(layout.middle.left() + 2, 50);
    scrolled = 0;
    goesOn = true;
    edges.hold(mirrored ? left : right);
    clock->beat(0.5);
    EXPECT_NEAR(scrolled, theme::kEdgeScroll / 2, theme::kEdgeScroll / 50);
    edges.hold(mirrored ? right : left);
    clock->beat(0.5);
    EXPECT_NEAR(scrolled, 0, theme::kEdgeScroll / 50);
    for (const QPointF elsewhere : {layout.glass.center(), middleOf(0)}) {
      edges.hold(elsewhere);
      EXPECT_FALSE(clock->isRunning()) << "the app that begins the row stays, and takes what is held over it";
    }
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
  ProfileTabs tabs(row, layout, animator, time);
  QSignalSpy due(&tabs, &ProfileTabs::due);
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
  ProfileTabs tabs(row, layout, animator, time);
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

TEST_F(DockParts, APressBecomesWhatItBeganOnAndWhatTheDockAllows) {
  QWidget surface;
  enum class On { Tile, App, Glass };
  const struct {
    const char* name;
    On on;
    QPointF way;
    bool floats, swipes, busy;
    int tabs;
    const char* expected;
  } cases[] = {
      {"a little on a tile", On::Tile, {5, 0}, false, true, false, 2, "click"},
      {"a tile", On::Tile, {40, 0}, false, true, false, 2, "drag"},
      {"an application stays where it is", On::App, {80, 0}, true, true, false, 2, ""},
      {"sideways between profiles", On::Glass, {40, 5}, false, true, false, 2, "swipe"},
      {"upright", On::Glass, {20, 25}, false, true, false, 2, ""},
      {"with one profile", On::Glass, {40, 5}, false, true, false, 1, ""},
      {"switched off", On::Glass, {40, 5}, false, false, false, 2, ""},
      {"behind an open panel", On::Glass, {40, 5}, false, true, true, 2, ""},
      {"a dock that floats", On::Glass, {40, 5}, true, true, false, 2, "move"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    row.runningApps = runningApps();
    row.floats = each.floats;
    row.swipes = each.swipes;
    row.tabs = QStringList(each.tabs, u"Work"_s);
    stand(1200);
    RowTiles tiles(surface);
    tiles.take(row);
    tiles.lay(layout);
    PressController press(tiles, time);
    press.setSwitchGuard([&] { return each.busy; });
    QStringList said;
    QObject::connect(&press, &PressController::clicked, [&] { said << u"click"_s; });
    QObject::connect(&press, &PressController::dragBegun, [&](qsizetype item) {
      EXPECT_EQ(item, 1);
      said << u"drag"_s;
    });
    QObject::connect(&press, &PressController::swipeEnded, [&] { said << u"swipe"_s; });
    QObject::connect(&press, &PressController::moveEnded, [&] { said << u"move"_s; });
    const QSignalSpy released(&press, &PressController::released);
    const auto event = [&](QEvent::Type type, QPointF at) {
      return QMouseEvent(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    };
    const QPointF at = each.on == On::Tile  ? middleOf(1)
                       : each.on == On::App ? middleOf(layout.itemOf(RowItem::Kind::App, 1))
                                            : QPointF(layout.glass.left() + 1, middleOf(0).y());
    press.begin(event(QEvent::MouseButtonPress, at), -1);
    press.move(event(QEvent::MouseMove, at + each.way));
    press.end(event(QEvent::MouseButtonRelease, at + each.way));
    EXPECT_EQ(said.join(u' '), QLatin1String(each.expected));
    EXPECT_EQ(released.count(), 1);
    EXPECT_FALSE(press.isActive());
  }
}

TEST_F(DockParts, ADragThatIsRefusedAsItBeginsIsNotMoved) {
  QWidget surface;
  RowTiles tiles(surface);
  tiles.take(row);
  tiles.lay(layout);
  PressController press(tiles, time);
  QObject::connect(&press, &PressController::dragBegun, [&] { press.forget(); });
  const QSignalSpy dragged(&press, &PressController::dragged);
  for (const auto& [type, way] : {std::pair(QEvent::MouseButtonPress, 0), {QEvent::MouseMove, 40}}) {
    const QPointF at = middleOf(1) + QPointF(way, 0);
    const QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    if (type == QEvent::MouseButtonPress)
      press.begin(event, 1);
    else
      EXPECT_TRUE(press.move(event));
  }
  EXPECT_EQ(dragged.count(), 0);
  EXPECT_FALSE(press.isOn(1));
}

TEST_F(DockParts, TheKeyboardStaysOnItsTileOrOnWhatTakesItsPlace) {
  QWidget surface;
  RowTiles tiles(surface);
  const auto show = [&](const QList<DockWidget>& widgets) {
    row.widgets = widgets;
    stand(900);
    tiles.take(row);
    tiles.lay(layout);
  };
  const QList<DockWidget> all = row.widgets;
  const struct {
    const char* name;
    qsizetype item;
    QList<DockWidget> next;
    qsizetype expected;
    bool isKept;
  } cases[] = {
      {"the same row", 2, all, 2, true},
      {"moved", 0, Reordering::reordered(all, 0, 3), 3, false},
      {"gone from the middle", 2, all.first(2) + all.mid(3), 2, false},
      {"gone from the end", all.size() - 1, all.first(all.size() - 1), all.size() - 2, false},
      {"all gone", 2, {}, -1, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    show(all);
    KeyboardFocus focus(tiles, [](qsizetype) {});
    focus.moveTo(each.item);
    const KeyboardFocus::Place before = focus.place();
    show(each.next);
    EXPECT_EQ(focus.restore(before), each.isKept);
    EXPECT_EQ(focus.item(), each.expected);
  }
}

TEST(DockKeys, MeanTheSameWhereverPeopleReadFrom) {
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    DockKey expected, mirrored;
  } cases[] = {
      {Qt::Key_Left, Qt::NoModifier, DockKey::Back, DockKey::Onwards},
      {Qt::Key_Right, Qt::NoModifier, DockKey::Onwards, DockKey::Back},
      {Qt::Key_Home, Qt::NoModifier, DockKey::First, DockKey::First},
      {Qt::Key_End, Qt::NoModifier, DockKey::Last, DockKey::Last},
      {Qt::Key_Space, Qt::NoModifier, DockKey::Activate, DockKey::Activate},
      {Qt::Key_Enter, Qt::KeypadModifier, DockKey::Activate, DockKey::Activate},
      {Qt::Key_F10, Qt::NoModifier, DockKey::None, DockKey::None},
      {Qt::Key_F10, Qt::ShiftModifier, DockKey::ItemMenu, DockKey::ItemMenu},
      {Qt::Key_F10, Qt::ControlModifier, DockKey::DockMenu, DockKey::DockMenu},
      {Qt::Key_Menu, Qt::NoModifier, DockKey::ItemMenu, DockKey::ItemMenu},
      {Qt::Key_Menu, Qt::ControlModifier, DockKey::DockMenu, DockKey::DockMenu},
      {Qt::Key_Z, Qt::ControlModifier, DockKey::Undo, DockKey::Undo},
      {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, DockKey::Redo, DockKey::Redo},
      {Qt::Key_Z, Qt::NoModifier, DockKey::None, DockKey::None},
      {Qt::Key_Escape, Qt::NoModifier, DockKey::Leave, DockKey::Leave},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.key);
    const QKeyEvent event(QEvent::KeyPress, each.key, each.modifiers);
    EXPECT_EQ(dockKeyOf(event, false), each.expected);
    EXPECT_EQ(dockKeyOf(event, true), each.mirrored);
  }
}

}  // namespace
}  // namespace tarnwick::testing
