#include "dock/DockController.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>

#include "base/DomainError.h"
#include "base/HandoverLock.h"
#include "dock/DockContentContainer.h"
#include "handover/FakeDock.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestFrameClock.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestFrameClock;

struct FakeScreens final : Screens {
  QList<Screen> all() const override { return list; }
  QString mainId() const override { return list.isEmpty() ? QString() : list.first().id; }
  void show(const QList<Screen>& screens) {
    list = screens;
    Q_EMIT changed();
  }
  QList<Screen> list;
};

struct FakePanel final : Panel {
  explicit FakePanel(std::unique_ptr<QWidget> widget) : content(std::move(widget)) { content->winId(); }
  void place(const PanelPlacement& wanted) override {
    placement = wanted;
    content->resize(wanted.rectangle.marginsAdded(wanted.margins).size());
  }
  void setShown(bool shown) override { content->setVisible(shown); }
  bool isShown() const override { return content->isVisible(); }
  void setInputRegion(const QRegion& region) override { input = region; }
  void setOutline(const QRegion&) override {}
  void setBlurBehind(const QRegion&) override {}
  void reserve(Edge, int thickness) override { reserved = thickness; }
  void setKeyboard(Keyboard wanted) override { keyboard = wanted; }
  void setAboveFullscreen(bool above) override { aboveFullscreen = above; }
  void setHiddenFromCapture(bool) override {}
  std::unique_ptr<Popup> popup(std::unique_ptr<QWidget>, const QRect&, const PopupStyle&) override { return {}; }
  void openMenu(QMenu&, const QRect&) override {}
  QWindow* window() const { return content->windowHandle(); }

  std::unique_ptr<QWidget> content;
  PanelPlacement placement;
  QRegion input;
  int reserved = 0;
  bool aboveFullscreen = true;
  Keyboard keyboard = Keyboard::None;
};

struct FakePanels final : Panels {
  std::unique_ptr<Panel> make(std::unique_ptr<QWidget> content) override {
    return std::make_unique<FakePanel>(std::move(content));
  }
  bool isComposited() const override { return true; }
  bool canBlur() const override { return false; }
  Capability captureProtection() const override { return Capability::yes(); }
};

struct FakeZones final : ZoneSensor {
  Capability edges() const override { return canFeel; }
  void watch(const QList<ZoneRequest>& requests) override { watched = requests; }
  PointerZones zones(const QString& screen) const override { return pointer.value(screen); }
  bool isDragging() const override { return false; }
  void put(const PointerZones& where) {
    pointer[u"A"_s] = where;
    Q_EMIT changed();
  }
  Capability canFeel;
  QList<ZoneRequest> watched;
  QHash<QString, PointerZones> pointer;
};

struct FakeClocks final : FrameClocks {
  std::unique_ptr<FrameClock> make(const QString&) override {
    auto clock = std::make_unique<TestFrameClock>();
    latest = clock.get();
    return clock;
  }
  TestFrameClock* latest = nullptr;
};

struct PlainContent final : DockContent {
  void configure(const DockGeometry& applied) override { geometry = applied; }
  QMargins margins() const override { return {20, 20, 20, 20}; }
  QRegion outline() const override { return rect(); }
  QRegion inputRegion() const override { return rect().adjusted(20 + beside, 0, -20 - std::max(0, beside - 1), 0); }
  int beside = 0;  ///< The glass is so much narrower on the left, and one less on the right.
  DockGeometry geometry;
};

struct DockControllerTest : testing::Test {
  DockControllerTest() {
    screens.list = {{.id = u"A"_s, .legacyId = {}, .name = u"Left"_s, .frame = {0, 0, 1000, 800}, .usable = kUsable}};
    controller.hasActivePanel = [this](const QString&) { return panelIsOpen; };
    controller.setMayShow(true);
  }
  AppStore& makeStore() {
    StoreSetup setup = desktop.diagnosticSetup();
    setup.storage = folder.filePath(u"config.json"_s);
    store = std::make_unique<AppStore>(std::move(setup));
    return *store;
  }
  void settle(const std::function<void(DockConfiguration&)>& change) {
    store->edit(change);
    controller.refresh();
    time.advance(DockController::kRefreshDelay);
  }
  void useLayout(DockLayout layout) {
    settle([layout](DockConfiguration& config) { config.layout = layout; });
  }
  void cover(bool covered) {
    windows.windows.clear();
    if (covered) {
      ClientWindow film;
      film.fullscreen = true;
      film.frame = screens.list.first().frame;
      windows.windows << film;
    }
    Q_EMIT windows.changed();
  }
  FakePanel& panel() { return *static_cast<FakePanel*>(controller.panel(u"A"_s)); }

  static constexpr QRectF kUsable{0, 30, 1000, 770};
  static constexpr PointerZones kAway{};
  static constexpr PointerZones kAtTheBottom{false, true, false};

  QTemporaryDir folder;
  test::TestScheduler time;
  NoDesktop desktop{time};
  FakeScreens screens;
  FakePanels panels;
  FakeZones zones;
  FakeClocks clocks;
  test::TestServices rest{time, AppEnvironment()};
  test::FakeWindows& windows = rest.windows;
  const Services services = rest.with(screens, panels, zones, clocks);
  FakeDock system{folder.filePath(u"dock"_s)};
  bool panelIsOpen = false;
  std::unique_ptr<AppStore> store;
  DockController controller{makeStore(), services, system, system,
                            [](const QString&) { return std::make_unique<PlainContent>(); }};
};

TEST_F(DockControllerTest, WhatStandsBesideADockGoesWithIt) {
  QSignalSpy gone(&controller, &DockController::goesAway);
  useLayout(DockLayout::Swap);
  zones.put(kAtTheBottom);
  EXPECT_EQ(gone.size(), 1) << "given way";
  zones.put(kAway);
  cover(true);
  EXPECT_EQ(gone.size(), 2) << "covered";
  EXPECT_TRUE(controller.isCovered(u"A"_s) && !panel().aboveFullscreen);
  cover(false);
  EXPECT_TRUE(!controller.isCovered(u"A"_s) && panel().aboveFullscreen);
  controller.toggle();
  EXPECT_EQ(gone.size(), 3) << "hidden by hand";
  EXPECT_TRUE(zones.watched.isEmpty());
  controller.toggle();
  time.advance(DockController::kRefreshDelay);
  EXPECT_TRUE(controller.isVisible(u"A"_s));
  screens.show({});
  time.advance(DockController::kRefreshDelay);
  EXPECT_EQ(gone.size(), 4) << "without a display";
  EXPECT_TRUE(controller.displays().isEmpty());
}

TEST_F(DockControllerTest, TheSystemsDockIsTheEdgeWhileItIsOut) {
  const auto put = [this](const QRectF& frame) {
    ClientWindow bar;
    bar.dock = true;
    bar.frame = frame;
    windows.windows = {bar};
    Q_EMIT windows.changed();
  };
  const auto edge = [this] { return zones.watched.value(0).systemDock; };
  put({200, 798, 600, 2});
  useLayout(DockLayout::Swap);
  EXPECT_EQ(edge(), QRectF());
  zones.put(kAtTheBottom);
  EXPECT_EQ(edge(), QRectF(200, 798, 600, 2));
  put({200, 720, 600, 72});  // It comes out only now, and is off the screen's edge.
  EXPECT_EQ(edge(), QRectF(200, 720, 600, 80));
  put({0, 0, 1000, 30});  // A bar at the top is none of ours.
  EXPECT_EQ(edge(), QRectF());
  put({200, 720, 600, 80});
  zones.put(kAway);
  EXPECT_TRUE(controller.isVisible(u"A"_s));
  EXPECT_EQ(edge(), QRectF());
  EXPECT_EQ(zones.watched.value(0).triggerSize, 3);
}

TEST_F(DockControllerTest, ADockGoesADelayAfterItsUseEndedHoweverLongThatWas) {
  useLayout(DockLayout::RevealBottom);
  const auto goes = [this] {
    time.advance(0.6);
    const bool stays = controller.isVisible(u"A"_s);
    time.advance(0.15);
    return stays && !controller.isVisible(u"A"_s);
  };
  const auto come = [this] {
    zones.put(kAtTheBottom);
    time.advance(0.2);
    ASSERT_TRUE(controller.isVisible(u"A"_s));
  };
  come();
  zones.put({true, false, false});
  time.advance(30);
  zones.put(kAway);
  EXPECT_TRUE(goes());
  come();
  panelIsOpen = true;
  zones.put(kAway);
  time.advance(30);
  panelIsOpen = false;
  controller.checkEdge();
  EXPECT_TRUE(goes());
}

TEST_F(DockControllerTest, ADockThatIsNotSeenComesByAToggleAndOneThatIsSeenGoes) {
  const auto isOut = [this] { return panel().isShown() && controller.isVisible(u"A"_s); };
  const auto toggle = [this] {
    controller.toggle();
    time.advance(20);
  };
  for (const DockLayout layout : {DockLayout::RevealBottom, DockLayout::RevealTop, DockLayout::ReplaceAutoHide}) {
    useLayout(layout);
    EXPECT_FALSE(isOut());
    toggle();
    EXPECT_TRUE(isOut()) << "it waits for its user";
    EXPECT_FALSE(controller.isManuallyHidden());
    zones.put({true, false, false});
    time.advance(5);
    zones.put(kAway);
    time.advance(0.6);
    EXPECT_TRUE(isOut());
    time.advance(0.15);
    EXPECT_FALSE(isOut()) << "used and left";

    toggle();
    EXPECT_TRUE(isOut());
    toggle();
    EXPECT_TRUE(controller.isManuallyHidden() && !panel().isShown());
    toggle();
    EXPECT_TRUE(isOut()) << "what was hidden by hand comes too";
    cover(true);
    EXPECT_FALSE(isOut());
    cover(false);
    EXPECT_FALSE(isOut()) << "as the layout has it after a film";
    for (int asked = 0; asked < 2; ++asked) {
      controller.show();
      EXPECT_TRUE(isOut()) << "nothing to hide";
    }
    cover(true);
    cover(false);
  }
}

TEST_F(DockControllerTest, APressAtTheEdgeCallsAHiddenDockAtOnceWhereItMayCome) {
  useLayout(DockLayout::RevealBottom);
  zones.put(kAtTheBottom);
  EXPECT_FALSE(controller.isVisible(u"A"_s));
  Q_EMIT zones.edgePressed(u"A"_s);
  EXPECT_TRUE(controller.isVisible(u"A"_s));
  time.advance(5);
  EXPECT_TRUE(controller.isVisible(u"A"_s));
  zones.put(kAway);
  time.advance(0.6);
  EXPECT_TRUE(controller.isVisible(u"A"_s));
  time.advance(0.15);
  EXPECT_FALSE(controller.isVisible(u"A"_s));

  // Under a film nothing comes, so that the film has its edge to itself; it counts again as soon as the film is over.
  cover(true);
  EXPECT_TRUE(zones.watched.isEmpty());
  Q_EMIT zones.edgePressed(u"A"_s);
  EXPECT_FALSE(controller.isVisible(u"A"_s));
  zones.pointer[u"A"_s] = kAtTheBottom;
  cover(false);
  EXPECT_EQ(zones.watched.size(), 1);
  time.advance(0.2);
  EXPECT_TRUE(controller.isVisible(u"A"_s));
}

TEST_F(DockControllerTest, ADockThatIsCalledWhileItFadesTakesClicksAgain) {
  rest.motion.reduces = true;
  useLayout(DockLayout::RevealBottom);
  const std::function<void()> calls[] = {[this] { Q_EMIT zones.edgePressed(u"A"_s); }, [this] { controller.toggle(); }};
  for (const auto& call : calls) {
    zones.put(kAtTheBottom);
    time.advance(0.2);
    clocks.latest->beat(5);
    EXPECT_FALSE(panel().input.isEmpty());
    zones.put(kAway);
    time.advance(1);
    EXPECT_TRUE(panel().input.isEmpty());
    call();
    EXPECT_FALSE(panel().input.isEmpty());
  }
}

TEST_F(DockControllerTest, ADockWithTheKeyboardStaysUntilTheUserTurnsAway) {
  useLayout(DockLayout::RevealBottom);
  const auto hasDone = [this] {
    time.advance(5);
    return panel().keyboard == Keyboard::None && !controller.isVisible(u"A"_s);
  };
  ASSERT_FALSE(controller.isVisible(u"A"_s));
  cover(true);
  controller.focus();
  Q_EMIT qGuiApp->focusWindowChanged(panel().window());
  EXPECT_FALSE(hasDone()) << "nothing hides what takes the keys";
  cover(false);

  // A panel of the dock's own borrows the keyboard.
  panelIsOpen = true;
  Q_EMIT qGuiApp->focusWindowChanged(nullptr);
  EXPECT_FALSE(hasDone());
  panelIsOpen = false;
  Q_EMIT qGuiApp->focusWindowChanged(nullptr);
  Q_EMIT qGuiApp->focusWindowChanged(panel().window());
  EXPECT_FALSE(hasDone());
  Q_EMIT qGuiApp->focusWindowChanged(nullptr);
  EXPECT_TRUE(hasDone());

  // Asked for a second time, the dock gives it back.
  controller.focus();
  Q_EMIT qGuiApp->focusWindowChanged(panel().window());
  controller.focus();
  EXPECT_TRUE(hasDone());

  // A display that went with the keyboard comes back without it.
  controller.focus();
  const QList<Screen> both = screens.list;
  screens.show({});
  time.advance(DockController::kRefreshDelay);
  screens.show(both);
  time.advance(DockController::kRefreshDelay);
  EXPECT_TRUE(hasDone());
}

TEST_F(DockControllerTest, ADockMakesRoomOnlyForWindowsThatWouldCoverIt) {
  constexpr QRectF clear{100, 100, 800, 500}, onIt{100, 100, 800, 690};
  windows.open(1, u"editor"_s);
  windows.move(1, onIt);
  EXPECT_FALSE(windows.watchesFrames);
  settle([](DockConfiguration& config) {
    config.layout = DockLayout::RevealBottom;
    DeskOptions desk;
    desk.dodge = u"any"_s;
    config.setDesk(desk);
  });
  const auto isOut = [this] { return controller.isVisible(u"A"_s); };
  EXPECT_TRUE(windows.watchesFrames && !isOut());
  windows.move(1, clear);
  EXPECT_TRUE(isOut());
  const qsizetype atRest = time.waiting();
  windows.move(1, clear.translated(5, 5));
  EXPECT_EQ(time.waiting(), atRest) << "nothing counts while nothing is in the way";
  windows.move(1, onIt);
  EXPECT_FALSE(isOut()) << "at once";
  EXPECT_EQ(time.waiting(), atRest);

  // With a window in the way it comes and goes as it always did.
  zones.put(kAtTheBottom);
  EXPECT_FALSE(isOut());
  time.advance(0.2);
  EXPECT_TRUE(isOut());
  zones.put({true, false, false});
  windows.move(1, clear);
  windows.move(1, onIt);
  EXPECT_TRUE(isOut()) << "the pointer is on it";
  zones.put(kAway);
  time.advance(0.6);
  EXPECT_TRUE(isOut());
  time.advance(0.15);
  EXPECT_FALSE(isOut());

  // What hides it all the same: a film, and the hand.
  windows.windows.clear();
  cover(true);
  EXPECT_FALSE(isOut());
  cover(false);
  EXPECT_TRUE(isOut());
  controller.toggle();
  EXPECT_FALSE(windows.watchesFrames || isOut());
  controller.toggle();
  time.advance(DockController::kRefreshDelay);
  EXPECT_TRUE(windows.watchesFrames && isOut());
  useLayout(DockLayout::Fixed);
  EXPECT_FALSE(windows.watchesFrames);
  windows.tellsFrames = Capability::no(u"No frames."_s);
  useLayout(DockLayout::RevealBottom);
  time.advance(1);
  EXPECT_FALSE(windows.watchesFrames || isOut()) << "as the layout alone has it";
  windows.tellsFrames = Capability::yes();
  controller.refresh();
  time.advance(DockController::kRefreshDelay);
  controller.shutdown();
  EXPECT_FALSE(windows.watchesFrames);
}

TEST_F(DockControllerTest, EachDockMakesRoomForTheWindowsOverItAlone) {
  screens.list << Screen{
      .id = u"B"_s, .legacyId = {}, .name = u"Right"_s, .frame = {1000, 0, 1000, 800}, .usable = {1000, 0, 1000, 800}};
  windows.open(1, u"editor"_s);
  settle([](DockConfiguration& config) {
    config.layout = DockLayout::RevealBottom;
    config.display = u"all"_s;
    DeskOptions desk;
    desk.dodge = u"any"_s;
    config.setDesk(desk);
  });
  windows.move(1, {1100, 100, 800, 690});
  EXPECT_TRUE(controller.isVisible(u"A"_s) && !controller.isVisible(u"B"_s));
  windows.move(1, {100, 100, 800, 690});
  EXPECT_TRUE(!controller.isVisible(u"A"_s) && controller.isVisible(u"B"_s));
}

TEST_F(DockControllerTest, AHiddenDockIsSeenForAMomentWhereTheUserWantsThat) {
  settle([](DockConfiguration& config) {
    config.layout = DockLayout::RevealBottom;
    config.desktop.hideDuringFullscreen = false;
  });
  const auto peeps = [this] { return controller.isPeeping(u"A"_s); };
  const auto goesOut = [this] {
    return static_cast<const DockContentContainer*>(panel().content.get())->driver().spring().target == 1;
  };
  controller.peep(u"A"_s);
  EXPECT_FALSE(peeps()) << "off unless chosen";
  settle([](DockConfiguration& config) {
    DeskOptions desk;
    desk.peep = true;
    config.setDesk(desk);
  });
  time.advance(20);  // What is saved is saved.
  const qsizetype atRest = time.waiting();
  controller.peep(u"A"_s);
  clocks.latest->beat(5);
  EXPECT_TRUE(peeps() && goesOut());
  EXPECT_FALSE(controller.isVisible(u"A"_s));
  EXPECT_TRUE(panel().input.isEmpty()) << "clicks go to what lies below";
  zones.put({true, false, false});
  EXPECT_FALSE(controller.isVisible(u"A"_s)) << "the pointer is on what it does not take";
  zones.put(kAway);
  time.advance(2.9);
  EXPECT_TRUE(peeps());
  time.advance(0.2);
  EXPECT_FALSE(peeps() || goesOut());
  EXPECT_EQ(time.waiting(), atRest);

  controller.peep(u"A"_s);
  clocks.latest->beat(5);
  zones.put(kAtTheBottom);
  EXPECT_TRUE(controller.isVisible(u"A"_s) && !peeps()) << "without the delay";
  EXPECT_FALSE(panel().input.isEmpty());
  time.advance(5);
  EXPECT_TRUE(controller.isVisible(u"A"_s));
  zones.put(kAway);
  time.advance(1);
  EXPECT_FALSE(controller.isVisible(u"A"_s));

  controller.peep(u"A"_s);
  cover(true);
  EXPECT_FALSE(peeps() || goesOut()) << "a film begins";
  controller.peep(u"A"_s);
  EXPECT_FALSE(peeps());
  cover(false);
  controller.peep(u"A"_s);
  controller.toggle();
  EXPECT_FALSE(peeps());
  controller.peep(u"A"_s);
  EXPECT_FALSE(peeps() || goesOut()) << "hidden by hand it stays so";
  controller.toggle();
  time.advance(DockController::kRefreshDelay);
  EXPECT_TRUE(goesOut()) << "asked for by name it comes";
  useLayout(DockLayout::Fixed);
  controller.peep(u"A"_s);
  controller.peep(u"no such display"_s);
  EXPECT_FALSE(peeps());
}

TEST_F(DockControllerTest, AFloatingDockIsMovedByTheHandAlone) {
  useLayout(DockLayout::Floating);
  const QPointF start = controller.frame(u"A"_s).topLeft();
  controller.moveBy(u"A"_s, {-30, -100});
  EXPECT_EQ(controller.frame(u"A"_s).topLeft(), start + QPointF(-30, -100));
  // A pass in between leaves it dragged.
  controller.refresh();
  time.advance(DockController::kRefreshDelay);
  EXPECT_EQ(controller.frame(u"A"_s).topLeft(), start + QPointF(-30, -100));
  // Beyond the edge the pointer goes alone, and takes it along again where it left it.
  controller.moveBy(u"A"_s, {0, -5000});
  EXPECT_EQ(controller.frame(u"A"_s).top(), kUsable.top());
  controller.moveBy(u"A"_s, {0, 5000});
  EXPECT_EQ(controller.frame(u"A"_s).topLeft(), start + QPointF(-30, -100));
  controller.finishMove(u"A"_s);
  const QList<double> stored = store->config().floatingPositions.value(u"A"_s);
  EXPECT_EQ(stored, (QList<double>{start.x() - 30, start.y() - 100}));
  // What goes in the middle of a move comes back where it was held.
  controller.moveBy(u"A"_s, {-10, 0});
  const QList<Screen> both = screens.list;
  for (const QList<Screen>& list : {QList<Screen>(), both}) {
    screens.show(list);
    time.advance(DockController::kRefreshDelay);
  }
  EXPECT_EQ(controller.frame(u"A"_s).topLeft(), start + QPointF(-40, -100));
}

TEST_F(DockControllerTest, WhereNoEdgeIsFeltTheDockIsFixedAndSaysSoOnce) {
  zones.canFeel = Capability::no(u"No edges."_s);
  useLayout(DockLayout::Fixed);
  EXPECT_TRUE(store->error().isEmpty()) << "nothing else was wished for";
  for (const DockLayout layout : {DockLayout::ReplaceAutoHide, DockLayout::Swap, DockLayout::Floating}) {
    useLayout(layout);
    EXPECT_EQ(store->config().layout, layout);
    EXPECT_EQ(store->error(), layout == DockLayout::ReplaceAutoHide ? u"No edges."_s : QString());
    store->clearError();
    EXPECT_TRUE(controller.isVisible(u"A"_s) && zones.watched.isEmpty());
    EXPECT_EQ(controller.frame(u"A"_s).bottom(), kUsable.bottom() - 8);
    EXPECT_EQ(panel().placement.margins.bottom(), 8) << "no room to slide";
    controller.moveBy(u"A"_s, {-30, -100});
    EXPECT_EQ(controller.frame(u"A"_s).bottom(), kUsable.bottom() - 8);
  }
}

TEST_F(DockControllerTest, TheWindowEndsWhereItsScreenDoes) {
  settle([](DockConfiguration& config) {
    config.alignment = u"left"_s;
    config.edgeGap = 0;
    config.scale = 0.85;  // 71.4 high.
  });
  const PanelPlacement& placement = panel().placement;
  EXPECT_EQ(placement.rectangle.bottom(), 799);
  EXPECT_EQ(placement.rectangle.height(), 72);
  const QRect window = placement.rectangle.marginsAdded(placement.margins);
  EXPECT_EQ(window.left(), 0);
  EXPECT_EQ(window.bottom(), 799);
  EXPECT_EQ(controller.contentOrigin(u"A"_s), QPointF(-20, 708));
}

TEST_F(DockControllerTest, AFilmHidesAFixedDockOnlyWhereThatIsRequested) {
  for (const bool hides : {true, false}) {
    settle([&](DockConfiguration& config) {
      config.layout = DockLayout::Fixed;
      DesktopOptions options = config.desktopOptions();
      options.hideDuringFullscreen = hides;
      config.desktop = options;
    });
    cover(true);
    EXPECT_EQ(controller.isVisible(u"A"_s), !hides);
    cover(false);
    EXPECT_TRUE(controller.isVisible(u"A"_s));
  }
}

TEST_F(DockControllerTest, TheSystemsDockIsAskedWithEveryPassAndGivenBackOnDemand) {
  const auto isHidden = [this] { return system.values().value(u"autohide"_s).toBool(); };
  const auto pass = [this] { settle([](DockConfiguration&) {}); };
  system.answers = {false, false};
  useLayout(DockLayout::Replace);
  EXPECT_TRUE(store->error().startsWith("macOS Dock preferences could not be saved."_L1));
  EXPECT_TRUE(controller.isVisible(u"A"_s)) << "ours stands all the same";
  store->clearError();
  system.answers = {false, false};
  pass();
  EXPECT_TRUE(store->error().isEmpty()) << "what was dismissed";
  EXPECT_FALSE(isHidden());
  pass();
  EXPECT_TRUE(isHidden());

  controller.restoreSystemDock();
  EXPECT_EQ(store->error(), u"The macOS Dock settings have been restored."_s);
  EXPECT_FALSE(isHidden());
  pass();
  EXPECT_TRUE(isHidden());
}

TEST_F(DockControllerTest, TheSystemsDockThatAnotherProcessAskedForStaysUntilTheLayoutChanges) {
  const auto isHidden = [this] { return system.values().value(u"autohide"_s).toBool(); };
  const auto pass = [this] { settle([](DockConfiguration&) {}); };
  EXPECT_FALSE(controller.giveSystemDockBack()) << "nothing is held";
  EXPECT_TRUE(store->error().isEmpty());
  useLayout(DockLayout::Replace);
  EXPECT_TRUE(controller.giveSystemDockBack());
  EXPECT_EQ(store->error(), u"The macOS Dock settings have been restored."_s);
  pass();
  EXPECT_FALSE(isHidden());
  useLayout(DockLayout::Fixed);
  useLayout(DockLayout::Replace);
  EXPECT_TRUE(isHidden());
  system.answers = {false};
  EXPECT_THROW(controller.giveSystemDockBack(), DomainError);
  EXPECT_FALSE(isHidden()) << "written, but it did not reach the disk";
}

TEST_F(DockControllerTest, TheSystemsDockIsTriedAgainOnceOthersAreDoneWithIt) {
  const auto isHidden = [this] { return system.values().value(u"autohide"_s).toBool(); };
  HandoverLock others(store->dataDirectory());
  {
    const auto held = others.take({});
    useLayout(DockLayout::Replace);
    EXPECT_EQ(store->error(), u"Another process is restoring the system dock right now."_s);
    time.advance(2 * DockController::kOthersAreAtIt);
    EXPECT_FALSE(isHidden());
  }
  time.advance(DockController::kOthersAreAtIt + DockController::kRefreshDelay);
  EXPECT_TRUE(isHidden());
}

TEST_F(DockControllerTest, ADockThatIsMissingIsReportedUntilSeenAfterAChoiceAndOnceForAWhileAtAStart) {
  system.canHide = false;
  useLayout(DockLayout::Replace);
  time.advance(DockController::kRemark * 2);
  EXPECT_EQ(store->error(), u"No dock."_s);
  store->clearError();
  controller.shutdown();
  const auto startAgain = [this] {
    auto again = std::make_unique<DockController>(*store, services, system, system,
                                                  [](const QString&) { return std::make_unique<PlainContent>(); });
    again->setMayShow(true);
    return again;
  };
  startAgain();
  EXPECT_TRUE(store->error().isEmpty()) << "was told when it was chosen";
  for (const QString& other : {QString(), u"Something went wrong."_s}) {
    QDir(folder.path()).remove(u"told-remarks.json"_s);
    const auto first = startAgain();
    EXPECT_EQ(store->error(), u"No dock."_s);
    time.advance(DockController::kRemark - 1);
    EXPECT_EQ(store->error(), u"No dock."_s);
    if (!other.isEmpty()) store->setError(other);
    time.advance(2);
    EXPECT_EQ(store->error(), other);
  }
}

TEST_F(DockControllerTest, ADisplayThatComesBackHasItsDockAgain) {
  const Screen a = screens.list.first();
  Screen b = a;
  b.id = b.name = u"B"_s;
  b.frame.translate(1000, 0);
  b.usable.translate(1000, 0);
  const struct {
    QString choice;
    QStringList both, alone;
  } cases[] = {{u"main"_s, {u"A"_s}, {u"A"_s}}, {u"B"_s, {u"B"_s}, {u"A"_s}}, {u"all"_s, {u"A"_s, u"B"_s}, {u"A"_s}}};
  for (const auto& [choice, both, alone] : cases) {
    screens.show({a, b});
    settle([choice = choice](DockConfiguration& config) { config.display = choice; });
    for (const bool gone : {false, true, false}) {
      screens.show(gone ? QList{a} : QList{a, b});
      time.advance(DockController::kRefreshDelay);
      EXPECT_EQ(controller.displays(), gone ? alone : both) << qPrintable(choice) << gone;
    }
  }
}

TEST_F(DockControllerTest, TheGlassStandsWhereTheGapSaysHoweverWideItIs) {
  settle([](DockConfiguration& config) {
    config.layout = DockLayout::Fixed;
    config.alignment = u"left"_s;
  });
  EXPECT_EQ(controller.frame(u"A"_s).left(), 8);
  auto& content = static_cast<PlainContent&>(*controller.content(u"A"_s));
  for (const int beside : {18, 4}) {
    content.beside = beside;
    Q_EMIT content.shapeChanged();
    EXPECT_EQ(controller.frame(u"A"_s).left(), 8 - beside);
    EXPECT_EQ(panel().placement.rectangle.left(), 8 - beside);
    settle([](DockConfiguration&) {});
    EXPECT_EQ(controller.frame(u"A"_s).left(), 8 - beside) << "a further pass";
  }
  settle([](DockConfiguration& config) { config.alignment = u"right"_s; });
  EXPECT_EQ(panel().placement.rectangle.right(), 1000 - 1 - 8 + 3);
  useLayout(DockLayout::Floating);
  controller.moveBy(u"A"_s, {-900, 0});
  EXPECT_EQ(controller.frame(u"A"_s).left(), -4) << "flush";

  // Space for tabs, which is above the glass elsewhere, does not keep it from the top.
  const auto hangsAfter = [&](double down) {
    controller.moveBy(u"A"_s, {0, down});
    return content.geometry.atTop;
  };
  EXPECT_FALSE(hangsAfter(0));
  EXPECT_TRUE(hangsAfter(-900));
  EXPECT_EQ(controller.frame(u"A"_s).top(), kUsable.top());
  controller.finishMove(u"A"_s);
  settle([](DockConfiguration&) {});
  EXPECT_TRUE(hangsAfter(0)) << "a further pass";
  EXPECT_FALSE(hangsAfter(50));
}

TEST_F(DockControllerTest, RoomForTabsIsNotKeptFromOtherWindows) {
  for (const bool top : {false, true}) {
    settle([&](DockConfiguration& config) {
      config.layout = DockLayout::Fixed;
      config.position = top ? u"top"_s : u"bottom"_s;
      config.scale = 1.5;
      config.profiles = {DockProfile::initial(), DockProfile::initial()};
      config.activeProfileID = config.profiles[0].id;
      config.desktop.reserveSpace = true;
    });
    // The usable area begins 30 below the top of the screen.
    EXPECT_EQ(panel().reserved, 8 + 84 * 1.5 + (top ? 30 : 0));
  }
}

TEST_F(DockControllerTest, SpaceIsKeptOnlyWhereADockAlwaysStands) {
  struct Case {
    DockLayout layout;
    bool keeps;
    int bottom;
  };
  const Case cases[] = {{DockLayout::Fixed, true, 92},         {DockLayout::Fixed, false, 0},
                        {DockLayout::Replace, true, 92},       {DockLayout::Swap, true, 0},
                        {DockLayout::RevealBottom, true, 0},   {DockLayout::Floating, true, 0},
                        {DockLayout::ReplaceAutoHide, true, 0}};
  for (const Case& c : cases) {
    settle([&](DockConfiguration& config) {
      config.layout = c.layout;
      DesktopOptions options = config.desktopOptions();
      options.reserveSpace = c.keeps;
      config.desktop = options;
    });
    EXPECT_EQ(panel().reserved, c.bottom) << static_cast<int>(c.layout);
  }
}

}  // namespace
}  // namespace tarnwick
