#include <gtest/gtest.h>

#include <QSignalSpy>
#include <cmath>

#include "Desk.h"
#include "platform/qt/TimerFrameClocks.h"
#include "platform/x11/X11Properties.h"
#include "platform/x11/X11ZoneSensor.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class X11ZoneSensorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    desk.display.moveTo({640, 300});
    desk.display.settle();
  }
  ZoneRequest request() const { return {.screen = desk.screens.mainId(), .panel = QRectF(300, 700, 400, 60)}; }
  PointerZones zones() const { return sensor.zones(desk.screens.mainId()); }

  Desk desk;
  X11ZoneSensor sensor{desk.events, desk.screens};
};

TEST_F(X11ZoneSensorTest, TellsEachChangeOnceAndNothingElse) {
  const QSignalSpy motions(&desk.events.rawInput(), &X11RawInput::moved);
  const QSignalSpy changes(&sensor, &ZoneSensor::changed);
  desk.display.moveTo({500, 720});
  desk.settle();
  EXPECT_EQ(motions.size(), 0) << "nobody watches";
  sensor.watch({request()});
  EXPECT_EQ(zones(), PointerZones{.inside = true});

  const struct {
    QPoint place;
    PointerZones zones;
    int changes;
  } rows[] = {{{510, 730}, {.inside = true}, 0},
              {{600, 500}, {}, 1},
              {{500, 799}, {.bottomEdge = true}, 1},
              {{501, 799}, {.bottomEdge = true}, 0},
              {{500, 770}, {.inside = true}, 1},
              {{500, 2}, {.topEdge = true}, 1},
              {{500, 3}, {}, 1},
              {{1279, 797}, {.bottomEdge = true}, 1}};
  qsizetype expected = 0;
  for (const auto& row : rows) {
    desk.display.moveTo(row.place);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones() == row.zones; })) << row.place.x();
    desk.settle();
    expected += row.changes;
    EXPECT_EQ(changes.size(), expected) << row.place.x() << ", " << row.place.y();
  }

  sensor.watch({});
  desk.settle();
  const auto before = motions.size();
  EXPECT_GT(before, 0);
  desk.display.moveTo({500, 720});
  desk.settle();
  EXPECT_EQ(motions.size(), before);
  EXPECT_EQ(changes.size(), expected);
  EXPECT_EQ(zones(), PointerZones());
}

TEST_F(X11ZoneSensorTest, TakesTheDesktopsOwnDockForTheEdgeButNotWhatLiesBesideIt) {
  ZoneRequest with = request();
  with.panel = {};
  with.systemDock = QRectF(400, 720, 200, 80);
  sensor.watch({with});
  const std::pair<QPoint, bool> rows[] = {
      {{500, 798}, true}, {{500, 730}, true}, {{620, 730}, false}, {{590, 730}, true}, {{500, 710}, false}};
  for (const auto& [place, isEdge] : rows) {
    desk.display.moveTo(place);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones() == PointerZones{.bottomEdge = isEdge}; })) << place.x();
  }
}

TEST_F(X11ZoneSensorTest, AsksAMouseSeldomAndMissesNothing) {
  sensor.watch({request()});
  const QSignalSpy answers(&desk.events.rawInput(), &X11RawInput::answered);
  const auto walk = [&](int count, QPoint way, int y) {
    for (int step = 0; step < count; ++step) {
      desk.display.moveBy(way);
      y = std::clamp(y + way.y(), 0, 799);
      desk.display.settle();
      const PointerZones expected{.inside = y >= 688 && y <= 772, .bottomEdge = y >= 797, .topEdge = y < 3};
      EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones() == expected; })) << "at " << y;
    }
  };
  walk(300, {0, 1}, 300);
  EXPECT_LT(answers.size(), 100);
  walk(40, {0, 6}, 600);
  walk(300, {0, -3}, 799);

  // Put elsewhere by a program, it is found after a little way.
  desk.display.moveTo({640, 300});
  walk(50, {1, 1}, 300);
  xcb_warp_pointer(desk.display.connection(), XCB_NONE, desk.display.root(), 0, 0, 0, 0, 640, 799);
  for (int step = 0; step < 70; ++step) desk.display.moveBy({0, 1});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones().bottomEdge; }));
}

// A pointer that is put somewhere makes no raw motion.
TEST_F(X11ZoneSensorTest, FeelsAPointerThatAProgramPutsAtAnEdgeAndLeavesTheClicksToWhatIsThere) {
  ForeignWindow below(desk.display, QRect(0, 0, 1280, 800));
  ASSERT_TRUE(below.show());
  const auto warp = [&](qint16 x, qint16 y) {
    xcb_warp_pointer(desk.display.connection(), XCB_NONE, desk.display.root(), 0, 0, 0, 0, x, y);
    xcb_flush(desk.display.connection());
  };
  const auto click = [&] {
    desk.display.button(1, true);
    desk.display.button(1, false);
    desk.settle();
  };
  const QSignalSpy changes(&sensor, &ZoneSensor::changed);
  sensor.watch({request()});
  int expected = 0;
  for (const auto& [place, there] :
       {std::pair{QPoint(200, 799), PointerZones{.bottomEdge = true}}, {{900, 0}, {.topEdge = true}}}) {
    warp(static_cast<qint16>(place.x()), static_cast<qint16>(place.y()));
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones() == there; })) << place.y();
    desk.settle();
    click();
    // The window manager looks at a click first and lets it through then.
    ++expected;
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return below.clicks() == expected; })) << "at the edge itself";
    desk.display.moveTo({640, 300});
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones() == PointerZones(); }));
    // Within one window, nothing but the strip is left.
    warp(static_cast<qint16>(place.x()), static_cast<qint16>(place.y()));
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones() == there; })) << "again " << place.y();
    warp(640, 300);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones() == PointerZones(); })) << "away from " << place.y();
  }
  EXPECT_EQ(changes.size(), 8);
}

TEST_F(X11ZoneSensorTest, LeavesAnEdgeToWhatIsThereOnceThePointerIsMovedByHand) {
  ForeignWindow below(desk.display, QRect(0, 0, 1280, 800));
  ASSERT_TRUE(below.show());
  sensor.watch({request()});
  const auto edgeWindow = [&] {
    const auto cookie =
        xcb_translate_coordinates(desk.display.connection(), desk.display.root(), desk.display.root(), 200, 799);
    const XcbReply reply(xcb_translate_coordinates_reply(desk.display.connection(), cookie, nullptr));
    return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
  };
  desk.settle();
  const xcb_window_t strip = edgeWindow();
  xcb_warp_pointer(desk.display.connection(), XCB_NONE, desk.display.root(), 0, 0, 0, 0, 200, 799);
  desk.display.settle();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones().bottomEdge; }));
  EXPECT_EQ(edgeWindow(), strip);
  desk.display.moveBy({1, 0});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return edgeWindow() != strip; }));
  EXPECT_TRUE(zones().bottomEdge);
}

TEST_F(X11ZoneSensorTest, SeesThroughTheDragOfAnotherProgram) {
  ForeignWindow source(desk.display, QRect(0, 100, 200, 200));
  ASSERT_TRUE(source.show());
  xcb_connection_t* other = desk.display.connection();
  const auto take = [&](xcb_window_t owner) {
    xcb_set_selection_owner(other, owner, desk.display.atom("XdndSelection"), XCB_CURRENT_TIME);
    xcb_flush(other);
  };
  sensor.watch({request()});
  take(source.id());
  desk.settle();
  EXPECT_FALSE(sensor.isDragging()) << "no button is down";

  desk.display.moveTo({50, 150});
  desk.display.button(1, true);
  desk.settle();
  EXPECT_FALSE(sensor.isDragging()) << "a press is no drag yet";
  xcb_grab_pointer(other, 0, source.id(), XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_BUTTON_RELEASE,
                   XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
  take(source.id());
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return sensor.isDragging(); }));
  desk.display.moveTo({500, 799});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return zones().bottomEdge; }));
  desk.display.button(1, false);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !sensor.isDragging(); }));
  xcb_ungrab_pointer(other, XCB_CURRENT_TIME);
  xcb_flush(other);

  const QSignalSpy changes(&sensor, &ZoneSensor::changed);
  desk.display.button(1, true);
  desk.settle();
  desk.display.button(1, false);
  desk.settle();
  EXPECT_EQ(changes.size(), 0) << "the selection is left over from the last drag";
}

TEST(TimerFrameClock, BeatsOnItsGridOnlyWhileItRuns) {
  Desk desk;
  TimerFrameClocks clocks([&](const QString& id) {
    const auto native = desk.screens.native(id);
    return native ? native->screen : nullptr;
  });
  for (const QString& screen : {desk.screens.mainId(), u"a display that is gone"_s}) {
    const auto clock = clocks.make(screen);
    QSignalSpy frames(clock.get(), &FrameClock::frame);
    desk.display.settle();
    EXPECT_FALSE(clock->isRunning());
    clock->start();
    clock->start();
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return frames.size() >= 5; }));
    QObject::connect(clock.get(), &FrameClock::frame, clock.get(), [&] { clock->stop(); });
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return !clock->isRunning(); }));

    const double duration = frames[0][1].toDouble();
    EXPECT_NEAR(duration, 1 / 60.0, 1e-3);
    const double start = frames[0][0].toDouble();
    for (qsizetype index = 1; index < frames.size(); ++index) {
      const double beats = (frames[index][0].toDouble() - start) / duration;
      EXPECT_NEAR(beats, std::round(beats), 1e-6) << "late or not, it stays on the grid";
      EXPECT_GT(frames[index][0].toDouble(), frames[index - 1][0].toDouble());
    }
    const auto last = frames.size();
    desk.display.settle();
    EXPECT_EQ(frames.size(), last);
  }
}

}  // namespace
}  // namespace tarnwick::testing
