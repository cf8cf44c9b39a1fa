// The dock under a real pointer: where each layout stands, when it comes and goes, and what opens beside it.
#include <gtest/gtest.h>
#include <signal.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFileInfo>
#include <QMenu>
#include <QTemporaryDir>
#include <algorithm>

#include "app/Adapters.h"
#include "app/AppDelegate.h"
#include "config/Persistence.h"
#include "desktop/Program.h"
#include "handover/Docks.h"
#include "support/ForeignWindow.h"
#include "support/TestScheduler.h"
#include "views/dock/LiveDock.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using tarnwick::testing::dconfDump;
using tarnwick::testing::ForeignWindow;
using tarnwick::testing::Program;
using tarnwick::testing::VirtualDisplay;

constexpr QPoint kAway(800, 300);
constexpr DockLayout kLayouts[] = {DockLayout::Fixed,     DockLayout::Swap,    DockLayout::RevealBottom,
                                   DockLayout::RevealTop, DockLayout::Replace, DockLayout::ReplaceAutoHide,
                                   DockLayout::Floating};

DockConfiguration twoProfiles() {
  DockConfiguration config;
  config.profiles.append(DockProfile::initial());
  config.profiles[1].id = QUuid::createUuid();
  config.profiles[1].name = u"Work"_s;
  for (DockWidget& widget : config.profiles[1].widgets) widget.id = QUuid::createUuid();
  return config;
}

class ShellTest : public ::testing::Test {
 protected:
  QString file() const { return folder.filePath(u"Tarnwick/config.json"_s); }

  void start(const DockConfiguration& config) {
    display.moveTo(kAway);
    Persistence::save(config, file());
    adapters = std::make_unique<Adapters>(time, LaunchEnvironment::ofProcess());
    StoreSetup store = adapters->storeSetup();
    store.storage = file();
    DelegateSetup setup = adapters->delegateSetup(QFileInfo(file()).path());
    setup.guards = false;
    zones = setup.ports.zones;
    delegate = std::make_unique<AppDelegate>(std::move(store), std::move(setup));
    delegate->didFinishLaunching();
    display.settle();
  }
  /// The same, and waits until the dock can be clicked on.
  void startShown(const DockConfiguration& config) {
    start(config);
    ASSERT_TRUE(comesTrue([&] { return takesClicks(glass().center()); }));
  }
  void end() {
    delegate.reset();
    adapters.reset();
  }
  ~ShellTest() override {
    end();
    display.moveTo(kAway);
  }

  AppStore& store() { return delegate->store(); }
  DockController& dock() { return delegate->dock(); }
  QString id() { return dock().displays().value(0); }
  DockView& view() { return static_cast<LiveDock*>(dock().content(id()))->view(); }
  QRect tile(qsizetype widget) {
    const QRectF place = view().tileRect(store().widgets()[widget].id);
    return place.translated(dock().contentOrigin(id())).toRect();
  }
  QRect glass() { return view().glassRect().translated(dock().contentOrigin(id())).toRect(); }
  /// Whether a click there is the dock's.
  bool takesClicks(QPoint place) { return QApplication::topLevelAt(place) == dock().content(id())->window(); }
  bool isPainted(QPoint place) { return display.pixel(place) != display.pixel({5, 5}); }
  bool comesTrue(const std::function<bool()>& predicate) { return VirtualDisplay::waitUntil(predicate); }
  /// Lets the clock run until something is so.
  bool inTime(const std::function<bool()>& predicate) {
    return VirtualDisplay::waitUntil([&] {
      time.advance(0.05);
      return predicate();
    });
  }
  bool isOpen() { return dock().hasActivePanel(id()); }
  /// Moves the pointer, and waits until that has set a delay going or stopped it.
  void moveAndCount(QPoint way, bool counts) {
    const qsizetype before = time.waiting();
    display.moveBy(way);
    EXPECT_TRUE(comesTrue([&] { return counts ? time.waiting() > before : time.waiting() < before; }));
  }

  VirtualDisplay& display = VirtualDisplay::current();
  QTemporaryDir folder;
  test::TestScheduler time;
  std::unique_ptr<Adapters> adapters;
  std::unique_ptr<AppDelegate> delegate;
  ZoneSensor* zones = nullptr;
};

TEST_F(ShellTest, EachLayoutStandsWhereItsRuleSays) {
  display.setMonitor(u"L"_s, QRect(0, 0, 1000, 900), u"screen"_s);
  display.setMonitor(u"R"_s, QRect(1000, 0, 600, 700), u"none"_s);
  {
    // A bar of another program at the foot of the left display: layouts that own the edge do not mind it.
    ForeignWindow bar(display, QRect(0, 860, 1000, 40));
    bar.setWords("_NET_WM_WINDOW_TYPE", "ATOM", {display.atom("_NET_WM_WINDOW_TYPE_DOCK")});
    bar.setWords("_NET_WM_STRUT_PARTIAL", "CARDINAL", {0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 999});
    ASSERT_TRUE(bar.show());
    for (const DockLayout layout : kLayouts) {
      SCOPED_TRACE(static_cast<int>(layout));
      DockConfiguration config;
      config.layout = layout;
      config.display = u"all"_s;
      start(config);
      const bool owns =
          layout == DockLayout::Replace || layout == DockLayout::ReplaceAutoHide || layout == DockLayout::Swap;
      const bool top = layout == DockLayout::RevealTop;
      const double left = top ? 8 : (owns ? 900 : 860) - 8 - 84;
      ASSERT_TRUE(inTime([&] { return dock().displays().size() == 2; }));
      QList<QRectF> frames;
      for (const QString& screen : dock().displays()) frames << dock().frame(screen);
      std::ranges::sort(frames, {}, &QRectF::left);
      EXPECT_EQ(frames[0], QRectF((1000 - 797) / 2.0, left, 797, 84));
      EXPECT_EQ(frames[1], QRectF(1012, top ? 8 : 700 - 8 - 84, 576, 84));
      const bool hides = DockVisibility::reveals(layout);
      for (const QRectF& frame : frames) {
        const QPoint middle = frame.center().toPoint();
        EXPECT_TRUE(comesTrue([&] { return isPainted(middle) != hides; }));
      }
      end();
    }
  }
  display.deleteMonitor(u"R"_s);
  display.deleteMonitor(u"L"_s);
}

TEST_F(ShellTest, AHiddenDockComesAtTheEdgeAfterItsDelayAndGoesAgain) {
  DockConfiguration config;
  config.layout = DockLayout::ReplaceAutoHide;
  start(config);
  const QPoint place(800, 850);
  EXPECT_FALSE(dock().isVisible(id()));
  EXPECT_FALSE(isPainted(place));
  EXPECT_FALSE(takesClicks(place));

  moveAndCount(QPoint(0, 599), true);
  time.advance(0.1);
  EXPECT_FALSE(dock().isVisible(id()));
  // Who leaves before it is over waits anew.
  moveAndCount(QPoint(0, -300), false);
  moveAndCount(QPoint(0, 300), true);
  time.advance(0.1);
  EXPECT_FALSE(dock().isVisible(id()));
  time.advance(0.05);
  EXPECT_TRUE(dock().isVisible(id()));
  EXPECT_TRUE(comesTrue([&] { return isPainted(place) && takesClicks(place); }));

  // It stays while the pointer is on it, and while a panel of it is open.
  display.moveTo(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return zones->zones(id()).inside && !zones->zones(id()).bottomEdge; }));
  time.advance(5);
  EXPECT_TRUE(dock().isVisible(id()));
  display.click(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen(); }));
  display.moveTo(kAway);
  ASSERT_TRUE(comesTrue([&] { return !zones->zones(id()).inside; }));
  time.advance(5);
  EXPECT_TRUE(dock().isVisible(id()));

  const qsizetype before = time.waiting();
  display.click(kAway);
  ASSERT_TRUE(comesTrue([&] { return !isOpen() && time.waiting() > before; }));
  time.advance(0.5);
  EXPECT_TRUE(dock().isVisible(id()));
  time.advance(0.25);
  EXPECT_FALSE(dock().isVisible(id()));
  EXPECT_TRUE(comesTrue([&] { return !isPainted(place) && !takesClicks(place); }));
}

TEST_F(ShellTest, SwapGivesWayAtTheEdgeAndComesBack) {
  DockConfiguration config;
  config.layout = DockLayout::Swap;
  start(config);
  const QPoint place(800, 850);
  EXPECT_TRUE(comesTrue([&] { return isPainted(place); }));
  display.moveBy(QPoint(0, 599));
  EXPECT_TRUE(comesTrue([&] { return !dock().isVisible(id()) && !isPainted(place) && !takesClicks(place); }));
  display.moveBy(QPoint(0, -400));
  EXPECT_TRUE(comesTrue([&] { return dock().isVisible(id()) && isPainted(place) && takesClicks(place); }));
}

TEST_F(ShellTest, APanelStandsBesideTheGlassUntilAClickElsewhere) {
  startShown(twoProfiles());
  display.moveTo(tile(4).center());
  display.settle();
  ASSERT_TRUE(inTime([&] { return glass().height() == 110; }));  // The tabs came.
  display.click(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen(); }));
  const QPoint tab(tile(4).center().x(), glass().top() + 18);
  const QPoint above(tile(4).center().x(), glass().top() - 14);
  EXPECT_TRUE(comesTrue([&] { return isPainted(above) && QApplication::topLevelAt(above) != nullptr; }));
  EXPECT_FALSE(takesClicks(above));
  EXPECT_TRUE(takesClicks(tab));
  // What the panel stands on does not move while it is open.
  display.moveTo(above);
  display.settle();
  time.advance(1);
  EXPECT_EQ(glass().height(), 110);

  display.click(kAway);
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
  EXPECT_TRUE(inTime([&] { return glass().height() == 84; }));
  // A second click on its tile closes it too, and so does another profile.
  display.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return isOpen(); }));
  display.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
  display.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return isOpen(); }));
  delegate->perform({Order::Kind::Profile, 1});
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
}

TEST_F(ShellTest, AMenuStandsBesideTheGlassAndItsEntryActs) {
  startShown(DockConfiguration());
  const QUuid clock = store().widgets()[1].id;
  const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
  const auto entry = [&](const QString& text) {
    const QList<QAction*> entries = menu()->actions();
    return *std::ranges::find(entries, text, &QAction::text);
  };
  display.click(tile(1).center(), 3);
  ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
  EXPECT_LE(menu()->geometry().bottom(), glass().top());
  QAction* move = entry(u"Move Right"_s);
  display.click(menu()->mapToGlobal(menu()->actionGeometry(move).center()));
  EXPECT_TRUE(comesTrue([&] { return store().widgets()[2].id == clock; }));
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));

  // Entries whose windows there are not yet say so.
  display.click(QPoint(tile(0).right() + 4, glass().center().y()), 3);
  ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
  EXPECT_FALSE(entry(u"Settings…"_s)->isEnabled());
  menu()->close();
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
  delegate->showSettings = [] {};
  display.click(QPoint(tile(3).right() + 4, glass().center().y()), 3);  // Elsewhere: not the second of a double click.
  ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
  EXPECT_TRUE(entry(u"Settings…"_s)->isEnabled());
  menu()->close();
}

TEST_F(ShellTest, TheKeyboardGoesBackToTheWindowThatHadIt) {
  startShown(DockConfiguration());
  ForeignWindow other(display, QRect(100, 100, 300, 200));
  ASSERT_TRUE(other.show());
  ASSERT_TRUE(comesTrue([&] { return display.focus() == other.id(); }));
  // A panel by the pointer, the dock by name, another panel by the keyboard.
  display.click(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen() && display.focus() != other.id(); }));
  const xcb_window_t panel = display.focus();
  delegate->perform({Order::Kind::Focus, 0});
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

TEST_F(ShellTest, AFullScreenWindowHidesTheDockOfItsDisplayOnly) {
  display.setMonitor(u"L"_s, QRect(0, 0, 1000, 900), u"screen"_s);
  display.setMonitor(u"R"_s, QRect(1000, 0, 600, 900), u"none"_s);
  DockConfiguration config;
  config.display = u"all"_s;
  start(config);
  ASSERT_TRUE(inTime([&] { return dock().displays().size() == 2; }));
  const QStringList ids = dock().displays();
  const auto shownOn = [&](int x) {
    return std::ranges::any_of(ids, [&](const QString& each) {
      return dock().frame(each).contains(QPointF(x, 850)) && dock().isVisible(each);
    });
  };
  {
    ForeignWindow film(display, QRect(100, 100, 300, 200));
    ASSERT_TRUE(film.show());
    film.addState("_NET_WM_STATE_FULLSCREEN");
    EXPECT_TRUE(comesTrue([&] { return !shownOn(500) && shownOn(1300); }));
  }
  EXPECT_TRUE(comesTrue([&] { return shownOn(500) && shownOn(1300); }));
  end();
  display.deleteMonitor(u"R"_s);
  display.deleteMonitor(u"L"_s);
}

TEST_F(ShellTest, AMessageOfTheFirstLayoutStandsAboveTheDock) {
  DockConfiguration config;
  config.layout = DockLayout::Replace;  // There is no dock that it could replace.
  start(config);
  ASSERT_EQ(store().error(), u"No dock that can be hidden was found."_s);
  EXPECT_TRUE(inTime([&] { return isPainted({800, glass().top() - 30}); }));
  EXPECT_TRUE(takesClicks(glass().center()));
}

TEST_F(ShellTest, ARealDockIsAsItWasHoweverTheProgramEnds) {
  const auto plankRuns = [] {
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(u"net.launchpad.plank"_s).value();
  };
  const auto plank = tarnwick::testing::ChildProcess::start({u"plank"_s});
  ASSERT_TRUE(comesTrue([&] { return plankRuns() && dconfDump().contains("dock-items"); }));
  tarnwick::testing::output(
      {u"dconf"_s, u"write"_s, u"/net/launchpad/plank/docks/dock1/hide-mode"_s, u"'window-dodge'"_s});
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
}  // namespace tarnwick
