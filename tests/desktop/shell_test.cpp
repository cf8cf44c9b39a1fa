// What of the dock under a real pointer belongs to X11 alone.
#include <gtest/gtest.h>
#include <signal.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFile>
#include <QMenu>

#include "app/Orders.h"
#include "config/Persistence.h"
#include "desktop/Program.h"
#include "desktop/ShellTest.h"
#include "handover/Docks.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class X11Shell : public ShellTest {
 protected:
  VirtualDisplay& display = VirtualDisplay::current();
};

TEST_F(X11Shell, TheKeyboardGoesBackToTheWindowThatHadIt) {
  startShown(DockConfiguration());
  ForeignWindow other(display, QRect(100, 100, 300, 200));
  ASSERT_TRUE(other.show());
  ASSERT_TRUE(comesTrue([&] { return display.focus() == other.id(); }));
  // A panel by the pointer, the dock by name, another panel by the keyboard.
  display.click(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen() && display.focus() != other.id(); }));
  const xcb_window_t panel = display.focus();
  delegate->orders().perform({Order::Kind::Focus, 0});
  ASSERT_TRUE(comesTrue([&] { return display.focus() != panel && view().hasFocus(); }));
  const xcb_window_t docks = display.focus();
  constexpr quint8 kReturn = 36;
  constexpr quint8 kEscape = 9;
  view().focusItem(1);
  display.tap(kReturn);
  ASSERT_TRUE(comesTrue([&] { return isOpen() && display.focus() != docks; }));
  display.tap(kEscape);
  ASSERT_TRUE(comesTrue([&] { return !isOpen() && display.focus() == docks; }));
  display.tap(kEscape);
  EXPECT_TRUE(comesTrue([&] { return display.focus() == other.id(); }));
}

TEST_F(X11Shell, AWindowThatIsMovedOntoTheDocksPlaceHidesItAtOnce) {
  const QRect whole = desk.display(0);
  ForeignWindow other(display, QRect(100, 100, whole.width() - 200, 300));
  other.setText("_NET_WM_NAME", "UTF8_STRING", "other");
  ASSERT_TRUE(other.show());
  DockConfiguration config;
  config.layout = DockLayout::RevealBottom;
  DeskOptions options;
  options.dodge = u"any"_s;
  config.setDesk(options);
  start(config);
  ASSERT_TRUE(comesTrue([&] { return dock().isVisible(id()) && isIn(); }));
  // Nothing but the window moves: neither the pointer nor the clock.
  const qsizetype atRest = time.waiting();
  other.moveTo({100, whole.height() - 300});
  EXPECT_TRUE(comesTrue([&] { return !dock().isVisible(id()); }));
  EXPECT_TRUE(comesTrue([&] { return !takesClicks(middle()); }));
  EXPECT_EQ(time.waiting(), atRest);
  other.moveTo({100, 100});
  EXPECT_TRUE(comesTrue([&] { return dock().isVisible(id()) && isIn(); }));
  EXPECT_TRUE(comesTrue([&] { return takesClicks(middle()); }));
  other.addState("_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ");
  EXPECT_TRUE(comesTrue([&] { return !dock().isVisible(id()); }));
  desk.turnToEmpty(true);
  EXPECT_TRUE(comesTrue([&] { return dock().isVisible(id()); }));
  desk.turnToEmpty(false);
  EXPECT_TRUE(comesTrue([&] { return !dock().isVisible(id()); }));
}

TEST_F(X11Shell, AnAppThatAsksForAttentionLetsTheDockBeSeen) {
  DockConfiguration config;
  config.layout = DockLayout::RevealBottom;
  config.liveApps = true;
  DeskOptions options;
  options.peep = true;
  config.setDesk(options);
  start(config);
  const auto open = [&](ForeignWindow& window, const char* name) {
    window.setText("_NET_WM_NAME", "UTF8_STRING", name);
    window.setText("WM_CLASS", "STRING", QByteArray(name) + '\0' + name + '\0');
    return window.show() && comesTrue([&] { return display.focus() == window.id(); });
  };
  ForeignWindow first(display, QRect(100, 100, 300, 200)), second(display, QRect(500, 100, 300, 200));
  ASSERT_TRUE(open(first, "first") && open(second, "second"));
  // One that is in front needs no dock to be seen.
  const auto isInFront = [&](const RunningApp& app) { return app.active && app.windows.contains(second.id()); };
  ASSERT_TRUE(comesTrue([&] {
    const QList<RunningApp> apps = store().unpinnedRunningApps(id());
    return apps.size() == 2 && std::ranges::any_of(apps, isInFront);
  }));
  ASSERT_FALSE(dock().isVisible(id()) || dock().isPeeping(id()));
  first.setWords("WM_HINTS", "WM_HINTS", {1 << 8, 0, 0, 0, 0, 0, 0, 0, 0});
  ASSERT_TRUE(comesTrue([&] { return dock().isPeeping(id()) && isIn(); }));
  EXPECT_FALSE(dock().isVisible(id()) || takesClicks(glass().center()));
  EXPECT_EQ(display.focus(), second.id());
  // By no clock: the pointer alone calls it.
  desk.moveTo({desk.display(0).center().x(), desk.display(0).bottom()});
  EXPECT_TRUE(comesTrue([&] { return dock().isVisible(id()); }));
}

TEST_F(X11Shell, AppsShowTheNumbersOfTheirKeysWhileSuperIsHeld) {
  constexpr quint8 kSuper = 133;
  DockConfiguration config;
  for (int app = 0; app < 3; ++app) {
    const QString path = folder.filePath(u"app%1.desktop"_s.arg(app));
    QFile entry(path);
    ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nType=Application\nName=App\nExec=true\n");
    config.profiles[0].widgets.prepend({QUuid::createUuid(), u"appLauncher"_s, {}, {{u"path"_s, path}}});
  }
  startShown(config);
  const QRect apps = tile(0) | tile(2);
  const auto seen = [&](const QRect& place) { return display.screenshot().copy(place); };
  ASSERT_TRUE(inTime([&] { return view().itemText(0).name == u"App"_s && !view().isMoving(); }));
  display.settle();
  const QImage atRest = seen(apps);
  const qsizetype waiting = time.waiting();
  display.key(kSuper, true);
  ASSERT_TRUE(comesTrue([&] { return time.waiting() > waiting; }));
  time.advance(0.25);
  display.settle();
  EXPECT_EQ(seen(apps), atRest);
  time.advance(0.1);
  EXPECT_TRUE(comesTrue([&] { return seen(apps) != atRest; }));
  // Each its own, in the middle of its tile.
  const auto number = [&](int app) { return seen(QRect(tile(app).center() - QPoint(10, 10), QSize(20, 20))); };
  EXPECT_TRUE(number(0) != number(1) && number(1) != number(2) && number(0) != number(2));
  display.key(kSuper, false);
  EXPECT_TRUE(comesTrue([&] { return seen(apps) == atRest; }));
}

TEST_F(X11Shell, AProgramThatMovesThePointerAwaySendsTheDockAway) {
  DockConfiguration config;
  config.layout = DockLayout::RevealBottom;
  start(config);
  const auto warp = [this](QPoint place) {
    xcb_warp_pointer(display.connection(), XCB_NONE, display.root(), 0, 0, 0, 0, static_cast<qint16>(place.x()),
                     static_cast<qint16>(place.y()));
    xcb_flush(display.connection());
  };
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    warp({desk.display(0).center().x(), desk.display(0).bottom()});
    EXPECT_TRUE(inTime([&] { return dock().isVisible(id()) && isIn(); }));
    // Straight from the edge, and by way of the dock.
    warp(desk.display(0).center());
    EXPECT_TRUE(inTime([&] { return !dock().isVisible(id()); }));
    warp({desk.display(0).center().x(), desk.display(0).bottom()});
    EXPECT_TRUE(inTime([&] { return dock().isVisible(id()) && isIn(); }));
    warp(glass().center());
    EXPECT_TRUE(comesTrue([&] { return view().underMouse(); }));
    warp(desk.display(0).center());
    EXPECT_TRUE(inTime([&] { return !dock().isVisible(id()); }));
  }
}

TEST_F(X11Shell, ARealDockIsAsItWasHoweverTheProgramEnds) {
  const auto plankRuns = [] {
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(u"net.launchpad.plank"_s).value();
  };
  const auto plank = ChildProcess::start({u"plank"_s});
  ASSERT_TRUE(comesTrue([&] { return plankRuns() && dconfDump().contains("dock-items"); }));
  output({u"dconf"_s, u"write"_s, u"/net/launchpad/plank/docks/dock1/hide-mode"_s, u"'window-dodge'"_s});
  const QByteArray before = dconfDump();
  for (const DockLayout layout : {DockLayout::Swap, DockLayout::Replace, DockLayout::ReplaceAutoHide}) {
    for (const int number : {SIGTERM, SIGKILL}) {
      SCOPED_TRACE(::testing::Message() << static_cast<int>(layout) << " signal " << number);
      DockConfiguration config;
      config.layout = layout;
      Persistence::save(config, file());
      Program program(folder.path());
      EXPECT_TRUE(comesTrue([] { return dconfDump().contains("hide-mode='auto'"); }));
      program.signal(number);
      EXPECT_EQ(program.end(), number == SIGTERM ? std::optional(0) : std::nullopt);
      EXPECT_TRUE(comesTrue([&] { return dconfDump() == before; }));
    }
  }
}

}  // namespace
}  // namespace tarnwick::testing
