// Apps on the dock, under a real pointer and a real keyboard.
#include <gtest/gtest.h>

#include <vector>

#include "desktop/ShellTest.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class X11Apps : public ShellTest {
 protected:
  static constexpr quint8 kEscapeKey = 9;  ///< As X numbers keys, by their place.

  std::unique_ptr<ForeignWindow> open(const QString& app, const QString& title, const QRect& frame) {
    auto window = std::make_unique<ForeignWindow>(display, frame);
    window->setText("_NET_WM_NAME", "UTF8_STRING", title.toUtf8());
    window->setText("WM_CLASS", "STRING", app.toUtf8() + '\0' + app.toUtf8() + '\0');
    EXPECT_TRUE(window->show());
    EXPECT_TRUE(comesTrue([&] { return isInFront(*window); }));
    return window;
  }
  bool isInFront(const ForeignWindow& window) { return display.focus() == window.id(); }

  VirtualDisplay& display = VirtualDisplay::current();
};

TEST_F(X11Apps, ATileIsRemovedBeyondSixtyPointsAndEscapeBringsItBack) {
  startShown(DockConfiguration());
  const QList<DockWidget> before = store().widgets();
  const auto carry = [&](int above) {
    const QPoint held = tile(1).center();
    desk.moveTo(held);
    desk.button(true);
    desk.settle();
    for (const QPoint& place : {held - QPoint(0, 20), QPoint(held.x(), glass().top() - above)}) {
      desk.moveTo(place);
      desk.settle();
    }
  };
  const auto letGo = [&] {
    desk.button(false);
    EXPECT_TRUE(comesTrue([&] { return !view().isHeld(); }));
    desk.settle();
  };
  carry(58);
  letGo();
  EXPECT_EQ(store().widgets(), before);
  carry(150);
  display.tap(kEscapeKey);
  EXPECT_TRUE(comesTrue([&] { return !view().isHeld(); }));
  letGo();
  EXPECT_EQ(store().widgets(), before) << "thought better of";
  carry(62);
  letGo();
  EXPECT_TRUE(comesTrue([&] { return store().widgets().size() == before.size() - 1; }));
}

TEST_F(X11Apps, OfSixtyRunningAppsEachCanBeReached) {
  constexpr int kApps = 60;
  DockConfiguration config;
  config.liveApps = true;
  startShown(config);
  std::vector<std::unique_ptr<ForeignWindow>> windows;
  for (int app = 0; app < kApps; ++app)
    windows.push_back(open(u"app%1"_s.arg(app), QString(1000, u'x'), QRect(100 + app, 100, 300, 200)));
  ASSERT_TRUE(inTime([&] {
    return store().unpinnedRunningApps(id()).size() == kApps && view().apps().size() >= kApps && !view().isMoving();
  }));
  EXPECT_TRUE(desk.display(0).contains(glass()));
  const QList<RunningApp> apps = store().unpinnedRunningApps(id());
  for (const int app : {0, kApps / 2, kApps - 1}) {
    SCOPED_TRACE(app);
    const quint64 identity = apps[app].identity;
    const auto item = [&] {
      for (qsizetype each = 0; each < view().itemCount(); ++each)
        if (view().itemText(each).name == apps[app].name) return each;
      return qsizetype(-1);
    };
    // The keyboard brings it into sight.
    dock().focus();
    ASSERT_TRUE(comesTrue([&] { return view().hasFocus(); }));
    view().focusItem(item());
    ASSERT_TRUE(inTime([&] { return view().isItemSeen(item()) && !view().isMoving(); }));
    const QPoint place =
        view().applicationPlaces().value(identity).translated(dock().contentOrigin(id())).center().toPoint();
    EXPECT_TRUE(glass().contains(place));
    time.advance(1);
    desk.click(place);
    EXPECT_TRUE(comesTrue([&] {
      const auto brought = store().unpinnedRunningApps(id()).value(app);
      return brought.identity == identity && brought.active;
    }));
    desk.moveTo(desk.away());
  }
}

}  // namespace
}  // namespace tarnwick::testing
