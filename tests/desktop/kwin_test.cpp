// What belongs to KWin alone: the window list that only a program with its permission gets.
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "desktop/ForeignProgram.h"
#include "desktop/ShellTest.h"
#include "platform/wayland/PlasmaClientWindows.h"
#include "support/HeadlessKWin.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class KWinShell : public ShellTest {
 protected:
  HeadlessKWin& kwin = HeadlessKWin::current();
};

TEST_F(KWinShell, ListsWindowsOfOthersAndActsOnThem) {
  const WaylandSession session;
  WaylandScreens screens(session);
  const WaylandPanels panels(session, screens);
  const auto listed = PlasmaClientWindows::make(session, screens, panels);
  ASSERT_TRUE(listed);
  PlasmaClientWindows& windows = *listed;
  const auto find = [&](const QString& title) {
    const QList<ClientWindow> all = windows.all();
    const auto found = std::ranges::find(all, title, &ClientWindow::title);
    return found == all.end() ? ClientWindow() : *found;
  };
  desk.moveTo(desk.away());
  const ForeignProgram first(u"first"_s, QRect());
  ASSERT_TRUE(comesTrue([&] { return find(u"first"_s).active; }));
  const ForeignProgram second(u"second"_s, QRect(), ForeignProgram::Size::FullScreen);
  ASSERT_TRUE(comesTrue([&] { return find(u"second"_s).fullscreen && !find(u"first"_s).active; }));
  EXPECT_EQ(windows.all().size(), 2);
  const ClientWindow one = find(u"first"_s);
  EXPECT_EQ(one.applicationId, u"drag_source"_s);
  EXPECT_GT(one.pid, 0);
  EXPECT_EQ(one.screens, QStringList(screens.mainId()));
  EXPECT_EQ(find(u"second"_s).frame, QRectF(desk.display(0)));
  EXPECT_TRUE(one.frame.isEmpty());
  windows.watchFrames(true);
  EXPECT_TRUE(QRectF(desk.display(0)).intersects(find(u"first"_s).frame));

  windows.minimise(one.id);
  EXPECT_TRUE(comesTrue([&] { return find(u"first"_s).minimised; }));
  windows.activate(one.id);
  EXPECT_TRUE(comesTrue([&] { return !find(u"first"_s).minimised && find(u"first"_s).active; }));
  windows.close(one.id);
  EXPECT_TRUE(comesTrue([&] { return find(u"first"_s).id == 0; }));
}

TEST_F(KWinShell, APanelTakesKeysWhileItIsOpen) {
  startShown(DockConfiguration());
  desk.click(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen(); }));
  // A key that is pressed before the panel has the keyboard is for whoever had it.
  ASSERT_TRUE(comesTrue([] { return QGuiApplication::focusWindow() != nullptr; }));
  kwin.tap(KEY_ESC);
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
}

TEST_F(KWinShell, AFingerCallsAHiddenDockAndTheDockGoesOnceNoneIsThere) {
  desk.moveTo(desk.away());
  DockConfiguration config;
  config.layout = DockLayout::RevealBottom;
  start(config);
  ASSERT_FALSE(dock().isVisible(id()));
  desk.settle();
  kwin.touch({desk.display(0).center().x(), desk.display(0).bottom()});
  ASSERT_TRUE(inTime([&] { return dock().isVisible(id()); }));
  ASSERT_TRUE(comesTrue([&] { return isIn(); }));
  kwin.lift();
  kwin.touch(tile(4).center());
  kwin.lift();
  ASSERT_TRUE(inTime([&] { return isOpen(); }));
  desk.settle();
  kwin.touch(desk.away());
  kwin.lift();
  EXPECT_TRUE(inTime([&] { return !isOpen() && !dock().isVisible(id()); }));
}

TEST_F(KWinShell, AWindowThatIsMovedOntoTheDocksPlaceHidesItAtOnce) {
  desk.moveTo(desk.away());
  const ForeignProgram other(u"other"_s, QRect());
  ASSERT_TRUE(comesTrue([&] { return isPainted(desk.away()); }));
  DockConfiguration config;
  config.layout = DockLayout::RevealBottom;
  DeskOptions options;
  options.dodge = u"active"_s;
  config.setDesk(options);
  start(config);
  ASSERT_TRUE(comesTrue([&] { return dock().isVisible(id()) && isIn(); }));
  // The clock stands still: nothing but the window decides.
  desk.button(true, Qt::RightButton);
  const auto drag = [&](int from, int to) {
    constexpr int steps = 8;
    for (int step = 1; step <= steps; ++step) {
      desk.moveTo(desk.away() + QPoint(0, from + (to - from) * step / steps));
      desk.settle();
    }
  };
  // The program asks for the move by itself, once the press has reached it.
  EXPECT_TRUE(comesTrue([&] {
    drag(0, 240);
    return !dock().isVisible(id());
  }));
  EXPECT_TRUE(comesTrue([&] {
    drag(240, 0);
    return dock().isVisible(id());
  }));
  desk.button(false, Qt::RightButton);
}

TEST_F(KWinShell, TheGlassBlursWhatLiesBehindIt) {
  desk.moveTo(desk.away());
  startShown(DockConfiguration());
  // Black and yellow meet behind the dock, 20 pixels above the display's edge.
  const QRect whole = desk.display(0);
  const QPoint border(glass().left() + 12, whole.bottom() - 20);
  ASSERT_TRUE(glass().contains(border));
  const ForeignProgram behind(u"behind"_s, whole);
  ASSERT_TRUE(comesTrue([&] { return isPainted({whole.left() + 30, whole.bottom() - 30}); }));
  const QImage picture = kwin.screenshot(QGuiApplication::screenAt(border)->name());
  const auto light = [&](int below) { return qRed(picture.pixel(border + QPoint(0, below))); };
  EXPECT_LT(light(-3) - light(3), 15);
}

}  // namespace
}  // namespace tarnwick::testing
