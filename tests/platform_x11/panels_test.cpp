#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QWindow>

#include "Desk.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

const QColor kRed(255, 0, 0);
const QColor kBlue(0x33, 0x66, 0x99);
const QRect kPlace(300, 700, 400, 60);

bool waitForPixel(QPoint place, const QColor& colour) {
  return VirtualDisplay::waitUntil([&] { return VirtualDisplay::current().pixel(place) == colour; });
}

bool isDressed(const PaintedPanel& one) {
  const VirtualDisplay& display = VirtualDisplay::current();
  const QList<quint32> states = display.words(one.window(), "_NET_WM_STATE");
  for (const char* state : {"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}) {
    if (!states.contains(display.atom(state))) return false;
  }
  return display.words(one.window(), "_NET_WM_DESKTOP") == QList<quint32>{0xffffffff} &&
         display.words(one.window(), "_NET_WM_WINDOW_TYPE").value(0) == display.atom("_NET_WM_WINDOW_TYPE_DOCK");
}

TEST(X11Panel, StandsWhereItIsPutOnEveryDesktop) {
  Desk desk;
  PaintedPanel one(desk, kRed);
  one.panel->setShown(true);
  EXPECT_FALSE(one.panel->isShown()) << "without a place";

  one.panel->place({.screen = desk.screens.mainId(), .rectangle = kPlace, .margins = QMargins(10, 20, 10, 0)});
  one.panel->setShown(true);
  ASSERT_TRUE(waitForPixel({291, 681}, kRed));
  EXPECT_EQ(desk.display.frame(one.window()), QRect(290, 680, 420, 80));
  EXPECT_NE(desk.display.pixel({289, 681}), kRed);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isDressed(one); }));

  ASSERT_TRUE(desk.display.execute({u"xdotool"_s, u"set_desktop"_s, u"1"_s}));
  ASSERT_TRUE(VirtualDisplay::waitUntil(
      [&] { return desk.display.words(desk.display.root(), "_NET_CURRENT_DESKTOP").value(0) == 1; }));
  ForeignWindow window(desk.display, QRect(0, 0, 50, 50));
  ASSERT_TRUE(window.show());
  EXPECT_TRUE(waitForPixel({291, 681}, kRed));
  ASSERT_TRUE(desk.display.execute({u"xdotool"_s, u"set_desktop"_s, u"0"_s}));

  one.panel->place({.screen = desk.screens.mainId(), .rectangle = QRect(0, 740, 100, 60), .margins = {}});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.display.frame(one.window()) == QRect(0, 740, 100, 60); }));

  // Hidden and shown in one breath, the window manager takes its properties away while they are set again.
  one.panel->setShown(false);
  one.panel->setShown(true);
  ASSERT_TRUE(waitForPixel({50, 770}, kRed));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isDressed(one); }));
  EXPECT_EQ(desk.display.frame(one.window()), QRect(0, 740, 100, 60));
}

TEST(X11Panel, TakesTheClicksOfItsRegionAndNeverTheFocus) {
  Desk desk;
  ForeignWindow below(desk.display, QRect(200, 600, 600, 180));
  ASSERT_TRUE(below.show());
  const auto active = [&] { return desk.display.words(desk.display.root(), "_NET_ACTIVE_WINDOW").value(0); };
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return active() == below.id(); }));

  PaintedPanel one(desk, kRed);
  one.panel->place({.screen = desk.screens.mainId(), .rectangle = kPlace, .margins = {}});
  one.panel->setInputRegion(QRect(0, 0, 200, 60));
  one.panel->setShown(true);
  ASSERT_TRUE(waitForPixel({350, 730}, kRed));
  const auto letsThrough = [&](QPoint place) {
    return VirtualDisplay::waitUntil([&] {
      return desk.display.topLevelAt(place) == desk.display.topLevelAt({250, 650});
    });
  };
  ASSERT_TRUE(letsThrough({650, 730}));

  desk.display.click({350, 730});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->presses == 1; }));
  desk.display.click({650, 730});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return below.clicks() == 1; }));
  one.panel->setInputRegion({});
  ASSERT_TRUE(letsThrough({350, 730}));
  desk.display.click({350, 730});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return below.clicks() == 2; }));
  EXPECT_EQ(one.content->presses, 1);
  EXPECT_EQ(active(), below.id());
}

TEST(X11Panel, IsAboveFullScreenWindowsUnlessSetOtherwise) {
  Desk desk;
  ForeignWindow full(desk.display, QRect(0, 0, 300, 300));
  ASSERT_TRUE(full.show());
  PaintedPanel one(desk, kRed);
  one.panel->place({.screen = desk.screens.mainId(), .rectangle = kPlace, .margins = {}});
  one.panel->setShown(true);
  ASSERT_TRUE(waitForPixel({500, 730}, kRed));
  one.panel->setAboveFullscreen(false);
  full.addState("_NET_WM_STATE_FULLSCREEN");
  EXPECT_TRUE(waitForPixel({500, 730}, kBlue));
  one.panel->setAboveFullscreen(true);
  EXPECT_TRUE(waitForPixel({500, 730}, kRed));
  EXPECT_EQ(desk.display.focus(), full.id());
  one.panel->setAboveFullscreen(false);
  EXPECT_TRUE(waitForPixel({500, 730}, kBlue));

  one.panel->setAboveFullscreen(true);
  ASSERT_TRUE(waitForPixel({500, 730}, kRed));
  // As a window manager says that it has minimised the panel together with that window.
  const QSignalSpy states(one.content->windowHandle(), &QWindow::windowStateChanged);
  const auto tell = [&](const char* property, const char* type, quint8 mode, std::initializer_list<quint32> words) {
    xcb_change_property(desk.display.connection(), mode, one.window(), desk.display.atom(property),
                        desk.display.atom(type), 32, static_cast<quint32>(words.size()), words.begin());
  };
  tell("_NET_WM_STATE", "ATOM", XCB_PROP_MODE_APPEND, {desk.display.atom("_NET_WM_STATE_HIDDEN")});
  tell("WM_STATE", "WM_STATE", XCB_PROP_MODE_REPLACE, {3, XCB_WINDOW_NONE});
  desk.settle();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return states.size() >= 2 && !one.content->isMinimized(); }));
  EXPECT_TRUE(waitForPixel({500, 730}, kRed));
}

TEST(X11Panel, KeepsSpaceThatOnlyOthersLose) {
  Desk desk;
  ForeignWindow window(desk.display, QRect(100, 100, 300, 200));
  ASSERT_TRUE(window.show());
  window.addState("_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ");
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return window.frame() == QRect(0, 0, 1280, 800); }));
  {
    PaintedPanel one(desk, kRed);
    one.panel->place({.screen = desk.screens.mainId(), .rectangle = kPlace, .margins = {}});
    one.panel->reserve(Edge::Bottom, 70);
    one.panel->setShown(true);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return window.frame() == QRect(0, 0, 1280, 730); }));
    one.panel->reserve(Edge::Top, 40);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return window.frame() == QRect(0, 40, 1280, 760); }));
    desk.display.settle();
    EXPECT_EQ(desk.screens.all().value(0).usable, QRectF(0, 0, 1280, 800));
    one.panel->reserve(Edge::Top, 0);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return window.frame() == QRect(0, 0, 1280, 800); }));
    one.panel->reserve(Edge::Bottom, 50);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return window.frame() == QRect(0, 0, 1280, 750); }));
  }
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return window.frame() == QRect(0, 0, 1280, 800); }));
}

TEST(X11Panel, IsTranslucentOrCutAsTheCompositorComesAndGoes) {
  Desk desk;
  ForeignWindow below(desk.display, QRect(200, 600, 600, 180));
  ASSERT_TRUE(below.show());
  PaintedPanel one(desk, QColor(128, 0, 0, 128));
  one.panel->place({.screen = desk.screens.mainId(), .rectangle = kPlace, .margins = {}});
  one.panel->setOutline(QRect(100, 0, 200, 60));
  one.panel->setBlurBehind(QRect(10, 5, 20, 30));
  one.panel->setShown(true);
  const QPoint outside(350, 730);
  const QPoint inside(500, 730);
  EXPECT_FALSE(desk.panels.isComposited());
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.display.pixel(inside).blue() == 0; }));
  EXPECT_EQ(desk.display.pixel(outside), kBlue);
  EXPECT_EQ(desk.display.words(one.window(), "_KDE_NET_WM_BLUR_BEHIND_REGION"), (QList<quint32>{10, 5, 20, 30}));
  one.panel->setBlurBehind({});
  desk.display.settle();
  EXPECT_EQ(desk.display.words(one.window(), "_KDE_NET_WM_BLUR_BEHIND_REGION"), QList<quint32>());

  const QSignalSpy changes(&desk.panels, &Panels::compositingChanged);
  const auto isBlended = [&](QPoint place) {
    const QColor seen = desk.display.pixel(place);
    return seen.red() > kBlue.red() && seen.blue() > 40 && seen.blue() < kBlue.blue();
  };
  desk.display.startCompositor();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return changes.size() == 1; }));
  EXPECT_TRUE(desk.panels.isComposited());
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isBlended(inside) && isBlended(outside); }));
  EXPECT_FALSE(desk.panels.canBlur());

  const quint32 announced = 0;
  xcb_change_property(desk.display.connection(), XCB_PROP_MODE_REPLACE, desk.display.root(),
                      desk.display.atom("_KDE_NET_WM_BLUR_BEHIND_REGION"), XCB_ATOM_CARDINAL, 32, 1, &announced);
  xcb_flush(desk.display.connection());
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return changes.size() == 2; }));
  EXPECT_TRUE(desk.panels.canBlur());
  xcb_delete_property(desk.display.connection(), desk.display.root(),
                      desk.display.atom("_KDE_NET_WM_BLUR_BEHIND_REGION"));
  xcb_flush(desk.display.connection());
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return changes.size() == 3; }));

  desk.display.stopCompositor();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return changes.size() == 4; }));
  EXPECT_FALSE(desk.panels.isComposited());
  EXPECT_TRUE(waitForPixel(outside, kBlue));
}

}  // namespace
}  // namespace tarnwick::testing
