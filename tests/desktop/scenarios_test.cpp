// The dock under a real pointer, on every window system alike: where each layout is, when it comes and goes, what
// opens beside it, and what is dropped on it.
#include <linux/input-event-codes.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <algorithm>

#include "app/DockPresenter.h"
#include "app/Orders.h"
#include "desktop/ShellTest.h"
#include "views/dock/LiveDock.h"
#include "views/panels/PanelPresentation.h"
#include "views/panels/TilePanel.h"
#include "views/settings/SettingsWindow.h"
#include "views/window/Cards.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

constexpr DockLayout kLayouts[] = {DockLayout::Fixed,     DockLayout::Swap,    DockLayout::RevealBottom,
                                   DockLayout::RevealTop, DockLayout::Replace, DockLayout::ReplaceAutoHide,
                                   DockLayout::Floating};
constexpr double kStarterWidth = 797;
constexpr double kHeight = 84;
constexpr double kGap = 8;
constexpr double kSides = 24;
constexpr int kBar = 40;

class ShellScenario : public ShellTest {
 protected:
  QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  QAction* entry(const QString& text) {
    const QList<QAction*> entries = menu()->actions();
    return *std::ranges::find(entries, text, &QAction::text);
  }
  /// The widgets whose panels are seen.
  QList<QUuid> panels() {
    QList<QUuid> widgets;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      const auto* shown = qobject_cast<const PanelPresentation*>(window);
      if (shown && shown->isVisible()) widgets << static_cast<const TilePanel&>(shown->content()).widget().id;
    }
    return widgets;
  }
  /// A drag of any program over the dock.
  struct DragListener final : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      sawMotion = sawMotion || event->type() == QEvent::DragMove;
      return false;
    }
    bool sawMotion = false;
  };
  /// Takes what the other program at `away()` offers over a place of the dock. It begins the drag in its own time; a
  /// pointer that is on its way meanwhile goes on moving.
  bool dragOver(QPoint target) {
    desk.moveTo(desk.away());
    desk.button(true);
    return dragOn(view(), target);
  }
  /// Takes it on to a place of one of our windows.
  bool dragOn(QWidget& over, QPoint target) {
    DragListener listener;
    over.installEventFilter(&listener);
    return comesTrue([&, way = 0]() mutable {
      way = (way + 1) % 4;
      desk.moveTo(target + QPoint(way, -way));
      return listener.sawMotion;
    });
  }
  QPoint edge() { return {desk.display(0).center().x(), desk.display(0).bottom()}; }
};

TEST_F(ShellScenario, EachLayoutStandsWhereItsRuleSays) {
  desk.showTwo();
  // A bar of another program at the foot of the first display: layouts that own the edge do not mind it.
  const auto bar = desk.bar(kBar);
  for (const DockLayout layout : kLayouts) {
    SCOPED_TRACE(static_cast<int>(layout));
    DockConfiguration config;
    config.layout = layout;
    config.display = u"all"_s;
    start(config);
    const bool owns =
        layout == DockLayout::Replace || layout == DockLayout::ReplaceAutoHide || layout == DockLayout::Swap;
    for (const int number : {0, 1}) {
      const QRectF display = desk.display(number);
      const double width = std::min(kStarterWidth, display.width() - kSides);
      const double free = display.bottom() - (number == 0 && !owns ? kBar : 0);
      const double top = layout == DockLayout::RevealTop ? display.top() + kGap : free - kGap - kHeight;
      const QRectF expected(display.center().x() - width / 2, top, width, kHeight);
      EXPECT_TRUE(inTime([&] { return dock().frame(idOn(number)) == expected; })) << number;
      const QPoint inside = expected.center().toPoint();
      const bool hides = DockVisibility::reveals(layout);
      EXPECT_TRUE(comesTrue([&] { return isPainted(inside) != hides; })) << number;
    }
    end();
  }
}

TEST_F(ShellScenario, AHiddenDockComesAtTheEdgeAfterItsDelayAndGoesAgain) {
  DockConfiguration config;
  config.layout = DockLayout::ReplaceAutoHide;
  start(config);
  const QPoint place = middle();
  EXPECT_FALSE(dock().isVisible(id()));
  EXPECT_FALSE(isPainted(place));
  EXPECT_FALSE(takesClicks(place));

  moveAndCount(edge(), true);
  time.advance(0.1);
  EXPECT_FALSE(dock().isVisible(id()));
  // Who leaves before it is over waits anew.
  moveAndCount(desk.away(), false);
  moveAndCount(edge(), true);
  time.advance(0.1);
  EXPECT_FALSE(dock().isVisible(id()));
  time.advance(0.05);
  EXPECT_TRUE(dock().isVisible(id()));
  EXPECT_TRUE(comesTrue([&] { return isIn() && isPainted(place) && takesClicks(place); }));

  // It stays while the pointer is on it, and while a panel of it is open.
  desk.moveTo(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return zones->zones(id()).inside && !zones->zones(id()).bottomEdge; }));
  time.advance(5);
  EXPECT_TRUE(dock().isVisible(id()));
  desk.click(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen(); }));
  desk.moveTo(desk.away());
  ASSERT_TRUE(comesTrue([&] { return !zones->zones(id()).inside; }));
  time.advance(5);
  EXPECT_TRUE(dock().isVisible(id()));

  const qsizetype before = time.waiting();
  desk.click(desk.away());
  ASSERT_TRUE(comesTrue([&] { return !isOpen() && time.waiting() > before; }));
  time.advance(0.5);
  EXPECT_TRUE(dock().isVisible(id()));
  time.advance(0.25);
  EXPECT_FALSE(dock().isVisible(id()));
  EXPECT_TRUE(comesTrue([&] { return !isPainted(place) && !takesClicks(place); }));
}

TEST_F(ShellScenario, SwapGivesWayAtTheEdgeAndComesBack) {
  DockConfiguration config;
  config.layout = DockLayout::Swap;
  start(config);
  const QPoint place = middle();
  EXPECT_TRUE(comesTrue([&] { return isPainted(place); }));
  desk.moveTo(edge());
  EXPECT_TRUE(comesTrue([&] { return !dock().isVisible(id()) && !isPainted(place); }));
  desk.moveTo(desk.away());
  EXPECT_TRUE(comesTrue([&] { return dock().isVisible(id()) && isPainted(place); }));
  EXPECT_TRUE(comesTrue([&] { return takesClicks(place); }));
}

TEST_F(ShellScenario, APanelStandsBesideTheGlassUntilAClickElsewhere) {
  startShown(twoProfiles());
  desk.moveTo(tile(4).center());
  desk.settle();
  ASSERT_TRUE(inTime([&] { return glass().height() == 110; }));  // The tabs came.
  desk.click(tile(4).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen(); }));
  const QPoint tab(tile(4).center().x(), glass().top() + 18);
  const QPoint above(tile(4).center().x(), glass().top() - 14);
  EXPECT_TRUE(comesTrue([&] { return isPainted(above) && !takesClicks(above); }));
  EXPECT_TRUE(comesTrue([&] { return takesClicks(tab); }));
  // What the panel is attached to does not move while it is open.
  desk.moveTo(above);
  desk.settle();
  time.advance(1);
  EXPECT_EQ(glass().height(), 110);

  desk.click(desk.away());
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
  EXPECT_TRUE(inTime([&] { return glass().height() == 84; }));
  // Neither does what a menu is attached to, until it has gone.
  desk.moveTo(tile(4).center());
  desk.settle();
  ASSERT_TRUE(inTime([&] { return glass().height() == 110; }));
  desk.click(tile(4).center(), Qt::RightButton);
  ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
  desk.click(desk.away());
  ASSERT_TRUE(comesTrue([&] { return !menu(); }));
  EXPECT_TRUE(inTime([&] { return glass().height() == 84; }));
  // A second click on its tile closes it too, and so does another profile.
  desk.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return isOpen(); }));
  time.advance(1);
  desk.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
  time.advance(1);
  desk.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return isOpen(); }));
  delegate->orders().perform({Order::Kind::Profile, 1});
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
}

TEST_F(ShellScenario, ATipNamesWhatThePointerRestsOnAndCoversNothingOfTheDock) {
  startShown(DockConfiguration());
  const auto above = [&](int widget) { return QPoint(tile(widget).center().x(), glass().top() - 20); };
  ASSERT_FALSE(isPainted(above(1)));
  desk.moveTo(tile(1).center());
  ASSERT_TRUE(comesTrue([&] { return time.waiting() > 0 && view().underMouse(); }));
  ASSERT_TRUE(inTime([&] { return view().tip().has_value(); }));
  const QString first = view().tip()->text;
  EXPECT_TRUE(comesTrue([&] { return isPainted(above(1)); }));
  EXPECT_FALSE(takesClicks(above(1)));
  // At once along the row; what it stood over is free again.
  desk.moveTo(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return view().tip() && view().tip()->text != first; }));
  EXPECT_TRUE(comesTrue([&] { return isPainted(above(4)) && !isPainted(above(1)); }));
  // A click on the tile is the tile's, and takes the tip away.
  desk.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return isOpen() && !view().tip(); }));
  desk.click(desk.away());
  EXPECT_TRUE(comesTrue([&] { return !isOpen() && !isPainted(above(4)); }));

  desk.moveTo(tile(1).center());
  desk.settle();
  ASSERT_TRUE(inTime([&] { return view().tip().has_value(); }));
  EXPECT_TRUE(comesTrue([&] { return isPainted(above(1)); }));
  desk.moveTo(desk.away());
  desk.settle();
  EXPECT_TRUE(inTime([&] { return !view().tip(); }));
  EXPECT_TRUE(comesTrue([&] { return !isPainted(above(1)); }));
}

TEST_F(ShellScenario, ARowLongerThanTheScreenKeepsTheAppsAtItsEndsAndScrollsByItsArrows) {
  constexpr qsizetype kFirst = 2, kBetween = 40, kAll = kFirst + kBetween + 2;
  DockConfiguration config;
  QList<DockWidget>& widgets = config.profiles[0].widgets;
  widgets.clear();
  for (qsizetype i = 0; i < kAll; ++i) {
    const bool isApp = i < kFirst || i >= kFirst + kBetween;
    widgets << DockWidget{QUuid::createUuid(), isApp ? u"appLauncher"_s : u"digitalClock"_s, {}, {}};
  }
  startShown(config);
  EXPECT_LT(glass().width(), desk.display(0).width());
  const QList<QRect> ends{tile(0), tile(1), tile(kAll - 2), tile(kAll - 1)};
  for (const QRect& end : ends) {
    EXPECT_TRUE(glass().contains(end));
    EXPECT_TRUE(takesClicks(end.center()));
  }
  const auto standFast = [&] { return QList<QRect>{tile(0), tile(1), tile(kAll - 2), tile(kAll - 1)} == ends; };
  const QRect atFirst = tile(kFirst);
  const auto scrolled = [&] { return atFirst.left() - tile(kFirst).left(); };
  // Where an arrow lies over a tile that would open a panel.
  const auto over = [&](int from) {
    for (int x = from; x < from + 16; ++x) {
      for (qsizetype i = kFirst; i < kFirst + kBetween; ++i) {
        if (tile(i).adjusted(2, 0, -2, 0).contains(QPoint(x, glass().center().y())))
          return QPoint(x, glass().center().y());
      }
    }
    return QPoint();
  };
  const auto onwards = [&] { return over(ends[2].left() - 20); };
  const auto back = [&] { return over(ends[1].right() + 5); };

  for (int page = 0; page < 2; ++page) {
    SCOPED_TRACE(page);
    ASSERT_TRUE(comesTrue([&] { return !view().isMoving(); }));
    const int before = scrolled();
    const QPoint arrow = onwards();
    ASSERT_FALSE(arrow.isNull());
    desk.click(arrow);
    EXPECT_TRUE(comesTrue([&] { return scrolled() > before && !view().isMoving(); }));
    desk.settle();
    EXPECT_TRUE(!isOpen() && panels().isEmpty() && standFast());
  }
  // What was far out of sight can be clicked on, and the row has its beginning again.
  ASSERT_TRUE(comesTrue([&] { return !view().isMoving(); }));
  for (int page = 0; scrolled() > 0 && page < 9; ++page) {
    const int before = scrolled();
    const QPoint arrow = back();
    ASSERT_FALSE(arrow.isNull());
    desk.click(arrow);
    EXPECT_TRUE(comesTrue([&] { return scrolled() < before && !view().isMoving(); }));
    desk.settle();
    EXPECT_TRUE(!isOpen() && panels().isEmpty() && standFast());
  }
  EXPECT_EQ(scrolled(), 0);
  desk.click(tile(kFirst + 1).center());
  EXPECT_TRUE(comesTrue([&] { return panels() == QList{store().widgets()[kFirst + 1].id}; }));
}

TEST_F(ShellScenario, APanelGoesWithItsTile) {
  startShown(DockConfiguration());
  const auto panel = [&]() -> const QWidget* {
    for (const QWidget* window : QApplication::topLevelWidgets())
      if (qobject_cast<const PanelPresentation*>(window) && window->isVisible()) return window;
    return nullptr;
  };
  const auto aside = [&] { return panel() ? panel()->geometry().center().x() - tile(1).center().x() : 0; };
  desk.click(tile(1).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen() && panel(); }));
  const int before = tile(1).center().x();
  const int wasAside = aside();
  store().edit([](DockConfiguration& config) { config.profiles[0].widgets.resize(4); });
  ASSERT_TRUE(comesTrue([&] { return tile(1).center().x() > before + 40; }));
  EXPECT_TRUE(comesTrue([&] { return std::abs(aside() - wasAside) <= 1; }));
}

TEST_F(ShellScenario, AMenuStandsBesideTheGlassAndItsEntryActs) {
  startShown(DockConfiguration());
  const QUuid clock = store().widgets()[1].id;
  desk.click(tile(1).center(), Qt::RightButton);
  ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
  EXPECT_LE(menu()->geometry().bottom(), glass().top());
  const QPoint move = menu()->mapToGlobal(menu()->actionGeometry(entry(u"Move Right"_s)).center());
  ASSERT_TRUE(comesTrue([&] { return isPainted(move); }));
  desk.click(move);
  EXPECT_TRUE(comesTrue([&] { return store().widgets()[2].id == clock; }));
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));

  // Elsewhere: not the second of a double click.
  desk.click(QPoint(tile(3).right() + 4, glass().center().y()), Qt::RightButton);
  ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
  EXPECT_TRUE(entry(u"Settings…"_s)->isEnabled());
  menu()->close();
}

TEST_F(ShellScenario, EveryKindOfMenuOpensBesideTheGlassAndEscapeClosesIt) {
  const QString letters = folder.filePath(u"Letters"_s);
  ASSERT_TRUE(QDir().mkpath(letters));
  DockConfiguration config = twoProfiles();
  config.liveApps = true;
  config.profiles[0].widgets.prepend({QUuid::createUuid(), u"folderLauncher"_s, {}, {{u"path"_s, letters}}});
  config.profiles[0].widgets.prepend({QUuid::createUuid(), u"trash"_s, {}, {}});
  const auto other = desk.source(u"other"_s);
  ASSERT_TRUE(comesTrue([&] { return isPainted(desk.away()); }));
  startShown(config);
  const auto app = [&] {
    const QHash<quint64, QRectF> places = view().applicationPlaces();
    return places.isEmpty() ? QRect() : places.begin()->translated(dock().contentOrigin(id())).toRect();
  };
  ASSERT_TRUE(inTime([&] { return !app().isEmpty() && !view().isMoving(); }));
  const auto tab = [&] { return QRect(glass().left(), glass().top() + 6, glass().width(), 24); };
  const struct {
    const char* what;
    std::function<QRect()> place;
    QString entry;
  } cases[] = {{"the trash", [&] { return tile(0); }, u"Empty Trash…"_s},
               {"a folder", [&] { return tile(1); }, u"Show in Files"_s},
               {"a widget", [&] { return tile(3); }, u"Edit Widget…"_s},
               {"an app", app, u"Windows"_s},
               {"a profile's tab", tab, u"Add Widgets…"_s}};
  for (const auto& [what, place, text] : cases) {
    SCOPED_TRACE(what);
    desk.moveTo(place().center());
    desk.settle();
    ASSERT_TRUE(inTime([&] { return glass().height() == 110; }));
    desk.moveTo(place().center());
    desk.settle();
    const QPoint at = place().center();
    desk.click(at, Qt::RightButton);
    ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
    const QList<QAction*> entries = menu()->actions();
    EXPECT_TRUE(std::ranges::any_of(entries, [&](const QAction* each) { return each->text() == text; }));
    const QRect frame = menu()->geometry();
    EXPECT_LE(frame.bottom(), glass().top());
    EXPECT_TRUE(desk.display(0).contains(frame));
    const QPoint inside(frame.center().x(), frame.bottom() - 10);
    EXPECT_TRUE(comesTrue([&] { return isPainted(inside) && QGuiApplication::focusWindow(); }));
    // What the pointer rests on then answers it again, also where it went while the menu was open.
    const QPoint rest = text == u"Windows"_s || text == u"Edit Widget…"_s ? tile(4).center() : at;
    if (rest != at) desk.moveTo(rest);
    desk.settle();
    desk.tap(KEY_ESC);
    EXPECT_TRUE(comesTrue([&] { return !menu() && !isOpen(); }));
    desk.settle();
    EXPECT_TRUE(comesTrue([&] { return view().hoveredItem() == view().itemAt(view().mapFromGlobal(rest)); }));
  }
}

TEST_F(ShellScenario, AClickOnAnAppInFrontWithSeveralWindowsOffersThem) {
  DockConfiguration config;
  config.liveApps = true;
  startShown(config);
  const ClientWindows& windows = adapters->services().windows;
  // A compositor adds to the title of a window whose program got no time to answer it.
  const auto own = [](const QString& title) { return title.section(u" ("_s, 0, 0); };
  const auto front = [&] {
    const QList<ClientWindow> all = windows.all();
    const auto active = std::ranges::find_if(all, &ClientWindow::active);
    return active == all.end() ? QString() : own(active->title);
  };
  const auto isInFront = [&](const QString& title) {
    return comesTrue([&] {
      const RunningApp app = store().unpinnedRunningApps(id()).value(0);
      return app.windows.size() == 2 && app.active && front() == title;
    });
  };
  const auto first = desk.source(u"first"_s);
  ASSERT_TRUE(comesTrue([&] { return front() == u"first"_s; }));
  const auto second = desk.source(u"second"_s);
  ASSERT_TRUE(isInFront(u"second"_s));
  const auto place = [&] {
    return view().applicationPlaces().value(store().unpinnedRunningApps(id()).value(0).identity);
  };
  ASSERT_TRUE(inTime([&] { return !place().isEmpty() && !view().isMoving(); }));
  const auto click = [&] {
    time.advance(1);  // The next click is no double click.
    desk.click(place().translated(dock().contentOrigin(id())).center().toPoint());
  };
  const auto choiceOpens = [&] {
    click();
    return comesTrue([&] { return menu() && menu()->isVisible() && QGuiApplication::focusWindow(); });
  };

  ASSERT_TRUE(choiceOpens());
  QStringList titles;
  for (const QAction* each : menu()->actions()) titles << own(each->text());
  std::ranges::sort(titles);
  ASSERT_EQ(titles, (QStringList{u"first"_s, u"second"_s}));
  const auto chosen = [&] {
    return menu() && menu()->activeAction() ? own(menu()->activeAction()->text()) : QString();
  };
  desk.tap(KEY_DOWN);
  ASSERT_TRUE(comesTrue([&] { return !chosen().isEmpty(); }));
  if (chosen() != u"first"_s) desk.tap(KEY_DOWN);
  ASSERT_TRUE(comesTrue([&] { return chosen() == u"first"_s; }));
  desk.tap(KEY_ENTER);
  EXPECT_TRUE(comesTrue([&] { return !menu(); }));
  ASSERT_TRUE(isInFront(u"first"_s));

  ASSERT_TRUE(choiceOpens());
  desk.tap(KEY_ESC);
  EXPECT_TRUE(comesTrue([&] { return !menu() && !isOpen(); }));
  ASSERT_TRUE(isInFront(u"first"_s)) << "nothing was chosen";

  ASSERT_TRUE(choiceOpens());
  click();
  EXPECT_TRUE(comesTrue([&] { return !menu(); }));
  desk.settle();
  EXPECT_FALSE(menu()) << "the click that closes it does not open it again";
}

TEST_F(ShellScenario, AMenuHigherThanTheScreenStaysOnItAndScrolls) {
  startShown(DockConfiguration());
  QMenu menu;
  for (int i = 1; i <= 100; ++i) menu.addAction(u"Window %1 of an application"_s.arg(i));
  dock().panel(id())->openMenu(menu, view().besideRect(store().widgets()[1].id));
  ASSERT_TRUE(comesTrue([&] { return menu.isVisible() && isPainted(menu.geometry().center()); }));
  EXPECT_TRUE(desk.display(0).contains(menu.geometry()));
  for (QAction* entry : {menu.actions().last(), menu.actions().first()}) {
    menu.setActiveAction(entry);
    EXPECT_TRUE(menu.rect().contains(menu.actionGeometry(entry)));
  }
  menu.close();
}

TEST_F(ShellScenario, OneClickOnAnotherTileClosesThePanelAndDoesWhatItDoesThere) {
  startShown(DockConfiguration());
  const QUuid clock = store().widgets()[1].id;
  // Whether the keyboard leaves the panel before the menu comes or after it is chance.
  for (const qsizetype place : {1, 2, 3}) {
    SCOPED_TRACE(place);
    desk.click(tile(5).center());
    ASSERT_TRUE(comesTrue([&] { return panels() == QList{store().widgets()[5].id}; }));
    desk.click(tile(4).center());
    ASSERT_TRUE(comesTrue([&] { return panels() == QList{store().widgets()[4].id}; }));
    desk.settle();
    desk.click(tile(place).center(), Qt::RightButton);
    ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible() && panels().isEmpty(); }));
    desk.settle();
    ASSERT_TRUE(menu());
    desk.click(menu()->mapToGlobal(menu()->actionGeometry(entry(u"Move Right"_s)).center()));
    ASSERT_TRUE(comesTrue([&] { return store().widgets()[place + 1].id == clock && !isOpen(); }));
    desk.moveTo(desk.away());
  }
}

TEST_F(ShellScenario, AFullScreenWindowHidesTheDockOfItsDisplayOnly) {
  desk.showTwo();
  DockConfiguration config;
  config.display = u"all"_s;
  start(config);
  ASSERT_TRUE(inTime([&] { return !idOn(0).isEmpty() && !idOn(1).isEmpty(); }));
  const auto shownOn = [&](int number) { return dock().isVisible(idOn(number)); };
  {
    const auto film = desk.film();
    EXPECT_TRUE(comesTrue([&] { return !shownOn(0) && shownOn(1); }));
    // It is not seen on every workspace.
    desk.turnToEmpty(true);
    EXPECT_TRUE(comesTrue([&] { return shownOn(0) && shownOn(1); }));
    desk.turnToEmpty(false);
    EXPECT_TRUE(comesTrue([&] { return !shownOn(0) && shownOn(1); }));
  }
  EXPECT_TRUE(comesTrue([&] { return shownOn(0) && shownOn(1); }));
  end();
}

TEST_F(ShellScenario, AFloatingDockStaysUnderThePointerThatMovesIt) {
  DockConfiguration config;
  config.layout = DockLayout::Floating;
  startShown(config);
  const QPointF before = dock().frame(id()).topLeft();
  const QPoint held(tile(0).right() + 4, glass().center().y());
  constexpr QPoint kStep(-3, -7);
  constexpr int kSteps = 30;
  desk.moveTo(held);
  desk.button(true);
  desk.settle();
  for (int step = 1; step <= kSteps; ++step) {
    desk.moveTo(held + kStep * step);
    QCoreApplication::processEvents();
  }
  EXPECT_TRUE(comesTrue([&] { return dock().frame(id()).topLeft() == before + kStep * kSteps; }))
      << dock().frame(id()).left() << ", " << dock().frame(id()).top() << " from " << before.x() << ", " << before.y();
  desk.button(false);
  const QPoint glassNow = (before + kStep * kSteps).toPoint() + (middle() - dock().frame(id()).topLeft().toPoint());
  EXPECT_TRUE(comesTrue([&] { return store().config().floatingPositions.contains(id()) && isPainted(glassNow); }));
}

TEST_F(ShellScenario, ATileThatIsLetGoFarFromTheDockIsRemovedAndCanComeBack) {
  startShown(DockConfiguration());
  const QList<DockWidget> before = store().widgets();
  const QPoint held = tile(1).center();
  const QPoint far(held.x(), glass().top() - 150);
  const QPoint sign = far - QPoint(0, 20);
  const auto carry = [&](QPoint place) {
    desk.moveTo(held);
    desk.button(true);
    desk.settle();
    desk.moveTo(held - QPoint(0, 20));
    desk.settle();
    desk.moveTo(place);
    desk.settle();
  };
  ASSERT_FALSE(isPainted(sign));
  carry(far);
  EXPECT_TRUE(comesTrue([&] { return isPainted(sign); })) << "what letting go does is said at the pointer";
  desk.moveTo(held);
  EXPECT_TRUE(comesTrue([&] { return !isPainted(sign); }));
  desk.button(false);
  EXPECT_TRUE(comesTrue([&] { return !view().isHeld(); }));
  EXPECT_EQ(store().widgets(), before);

  carry(far);
  EXPECT_TRUE(comesTrue([&] { return isPainted(sign); }));
  desk.button(false);
  ASSERT_TRUE(comesTrue([&] { return store().widgets().size() == before.size() - 1; }));
  EXPECT_TRUE(std::ranges::none_of(store().widgets(), [&](const DockWidget& left) { return left.id == before[1].id; }));
  EXPECT_TRUE(comesTrue([&] { return !isPainted(sign); }));
  Q_EMIT view().undoRequested();
  EXPECT_EQ(store().widgets(), before);
}

TEST_F(ShellScenario, ATileThatIsLetGoOnTheDockOfAnotherDisplayMovesThere) {
  desk.showTwo();
  DockConfiguration config = twoProfiles();
  config.display = u"all"_s;
  startShown(config);
  ASSERT_TRUE(inTime([&] { return !idOn(0).isEmpty() && !idOn(1).isEmpty(); }));
  const QString from = idOn(0), to = idOn(1);
  store().pinDisplay(from, store().config().profiles[0].id);
  store().pinDisplay(to, store().config().profiles[1].id);
  const auto place = [&](const QString& display, const QUuid& widget) {
    const DockView& shown = static_cast<LiveDock*>(dock().content(display))->view();
    return shown.tileRect(widget).translated(dock().contentOrigin(display)).toRect();
  };
  const auto widgets = [&](qsizetype profile) { return store().config().profiles[profile].widgets; };
  const QList<DockWidget> left = widgets(0), right = widgets(1);
  ASSERT_TRUE(inTime([&] { return !place(from, left[1].id).isEmpty() && !place(to, right[0].id).isEmpty(); }));
  const QPoint held = place(from, left[1].id).center();
  const QRect first = place(to, right[0].id);
  ASSERT_TRUE(comesTrue([&] {
    return desk.takesClicks(first.center(), *dock().content(to)->window()) &&
           desk.takesClicks(held, *dock().content(from)->window());
  }));

  desk.moveTo(held);
  desk.button(true);
  desk.settle();
  desk.moveTo(held - QPoint(0, 20));
  desk.settle();
  desk.moveTo({first.left() + 4, first.center().y()});
  desk.settle();
  desk.button(false);
  ASSERT_TRUE(comesTrue([&] { return widgets(1).size() == right.size() + 1; }));
  EXPECT_EQ(widgets(1).first(), left[1]);
  EXPECT_EQ(widgets(0).size(), left.size() - 1);
  Q_EMIT view().undoRequested();
  EXPECT_EQ(widgets(0), left) << "one step";
  EXPECT_EQ(widgets(1), right);
}

TEST_F(ShellScenario, WhatTheDesktopDoesNotTellIsSaidInSettingsAndNotPretended) {
  DockConfiguration config;
  config.layout = DockLayout::RevealBottom;
  DeskOptions options;
  options.dodge = u"any"_s;
  config.setDesk(options);
  start(config);
  const TestDesk::Abilities desktop = desk.abilities();
  // Where no window's place is told the dock hides as it does otherwise, though nothing covers it.
  EXPECT_TRUE(inTime([&] { return dock().isVisible(id()) == desktop.tellsFrames; }));

  delegate->commands().showSettings();
  const auto settings = [] {
    SettingsWindow* found = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* each = qobject_cast<SettingsWindow*>(window)) found = each;
    return found;
  };
  ASSERT_TRUE(settings());
  const auto row = [&](const char* section, const char* label) -> FormRow* {
    settings()->showSection(QString::fromLatin1(section));
    for (FormRow* each : settings()->findChildren<FormRow*>())
      if (each->isVisible() && each->label() == QString::fromLatin1(label)) return each;
    return nullptr;
  };
  const auto says = [](const FormRow& of, const char* words) {
    const auto labels = of.findChildren<QLabel*>();
    return std::ranges::any_of(labels, [&](const QLabel* each) {
      return each->isVisible() && each->text().remove(QChar(0x2060)).contains(QString::fromUtf8(words));
    });
  };
  const struct {
    const char* section;
    const char* label;
    bool isThere;
    const char* otherwise;
  } rows[] = {
      {"layout", "Hide only when a window would be covered", desktop.tellsFrames,
       "This desktop does not tell other apps where windows are."},
      {"runningApps", "Only windows of this workspace", desktop.tellsWorkspaces,
       "This desktop does not let apps see which workspace a window is on."},
      {"shortcuts", "Apps by number", desktop.givesKeys, "Only where apps can register shortcuts."},
      {"shortcuts", "Hide and Show Dock", desktop.givesKeys, "“tarnwick --toggle” hides and shows the dock"},
  };
  for (const auto& each : rows) {
    SCOPED_TRACE(each.label);
    EXPECT_TRUE(comesTrue([&] {
      const FormRow* found = row(each.section, each.label);
      return found && says(*found, each.otherwise) != each.isThere;
    }));
    const FormRow* found = row(each.section, each.label);
    ASSERT_TRUE(found);
    auto controls = found->findChildren<QWidget*>();
    controls.removeIf([](const QWidget* child) {
      return !qobject_cast<const QAbstractButton*>(child) && !qobject_cast<const QComboBox*>(child);
    });
    ASSERT_FALSE(controls.isEmpty());
    for (const QWidget* control : controls) EXPECT_EQ(control->isEnabled(), each.isThere);
  }
  const FormRow* peep = row("layout", "Show the dock when something needs you");
  ASSERT_TRUE(peep);
  EXPECT_NE(says(*peep, "does not tell which windows ask for attention"), desktop.tellsAttention);
  const FormRow* numbers = row("shortcuts", "Apps by number");
  EXPECT_EQ(says(*numbers, "Hold Super for a moment"), desktop.tellsHeldKeys);
  settings()->close();
}

TEST_F(ShellScenario, AMessageOfTheFirstLayoutStandsAboveTheDock) {
  DockConfiguration config;
  config.layout = DockLayout::Replace;  // There is no dock that it could replace.
  start(config);
  ASSERT_EQ(store().error(), u"No dock that can be hidden was found."_s);
  EXPECT_TRUE(inTime([&] { return isPainted({glass().center().x(), glass().top() - 30}); }));
  EXPECT_TRUE(comesTrue([&] { return takesClicks(glass().center()); }));
}

TEST_F(ShellScenario, AFolderOfAnotherProgramBecomesATile) {
  startShown(DockConfiguration());
  const QString dropped = folder.filePath(u"Letters"_s);
  ASSERT_TRUE(QDir().mkpath(dropped));
  const auto source = desk.source(dropped);
  ASSERT_TRUE(comesTrue([&] { return isPainted(desk.away()); }));
  const qsizetype before = store().widgets().size();
  EXPECT_TRUE(dragOver(tile(1).center()));
  desk.settle();
  desk.button(false);
  ASSERT_TRUE(inTime([&] { return store().widgets().size() == before + 1; }));
  EXPECT_TRUE(std::ranges::any_of(
      store().widgets(), [&](const DockWidget& widget) { return widget.options.value(u"path"_s) == dropped; }));
}

TEST_F(ShellScenario, AFileIsLetGoInTheFolderThatOpenedBelowIt) {
  const QString letters = folder.filePath(u"Letters"_s);
  const QString carried = folder.filePath(u"note.txt"_s);
  ASSERT_TRUE(QDir().mkpath(letters) && QFile(carried).open(QIODevice::WriteOnly));
  DockConfiguration config;
  config.profiles[0].widgets.prepend({QUuid::createUuid(), u"folderLauncher"_s, {}, {{u"path"_s, letters}}});
  startShown(config);
  const auto source = desk.source(carried);
  ASSERT_TRUE(comesTrue([&] { return isPainted(desk.away()); }));
  ASSERT_TRUE(dragOver(tile(0).center()));
  ASSERT_TRUE(inTime([&] { return !panels().isEmpty(); }));
  PanelPresentation* opened = nullptr;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* each = qobject_cast<PanelPresentation*>(window); each && each->isVisible()) opened = each;
  ASSERT_TRUE(opened);
  const QPoint inside = opened->geometry().center();
  ASSERT_TRUE(comesTrue([&] { return isPainted(inside); }));
  ASSERT_TRUE(dragOn(opened->content(), inside));
  desk.settle();
  desk.button(false);
  EXPECT_TRUE(inTime([&] { return QFile::exists(letters + u"/note.txt"_s); }));
  UndoStack& undo = delegate->presenter().undoStack();
  ASSERT_TRUE(inTime([&] { return undo.size() == 1; }));
  EXPECT_EQ(undo.latest()->sentence, u"“note.txt” was copied to “Letters”."_s);
}

TEST_F(ShellScenario, WhatIsDraggedPastAnOpenPanelReachesOthersAndClosesIt) {
  const QString letters = folder.filePath(u"Letters"_s);
  const QString carried = folder.filePath(u"note.txt"_s);
  ASSERT_TRUE(QDir().mkpath(letters));
  DockConfiguration config;
  config.profiles[0].widgets.prepend({QUuid::createUuid(), u"folderLauncher"_s, {}, {{u"path"_s, letters}}});
  startShown(config);
  const auto source = desk.source(carried);
  ASSERT_TRUE(comesTrue([&] { return isPainted(desk.away()); }));
  ASSERT_TRUE(dragOver(tile(0).center()));
  ASSERT_TRUE(inTime([&] { return !panels().isEmpty(); }));
  QFile::remove(carried);  // It was made as the drag began there.
  // Back where it came from, which takes what is dropped.
  EXPECT_TRUE(comesTrue([&, way = 0]() mutable {
    way = (way + 1) % 4;
    desk.moveTo(desk.away() + QPoint(way, -way));
    return QFile::exists(carried);
  }));
  desk.button(false);
  EXPECT_TRUE(comesTrue([&] { return QFileInfo(carried).size() > 0; }));
  if (!desk.passesClicksOn()) {
    EXPECT_TRUE(inTime([&] { return panels().isEmpty(); }));
  }
}

TEST_F(ShellScenario, AFolderOrAnAppMayVanishWhileAFileIsHeldOverIt) {
  const QString letters = folder.filePath(u"Letters"_s), entry = folder.filePath(u"gone.desktop"_s);
  const QString carried = folder.filePath(u"note.txt"_s);
  const auto write = [](const QString& path, const char* text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) > 0;
  };
  ASSERT_TRUE(write(carried, "note"));
  DockConfiguration config;
  config.profiles[0].widgets.prepend({QUuid::createUuid(), u"appLauncher"_s, {}, {{u"path"_s, entry}}});
  config.profiles[0].widgets.prepend({QUuid::createUuid(), u"folderLauncher"_s, {}, {{u"path"_s, letters}}});
  ASSERT_TRUE(QDir().mkpath(letters) &&
              write(entry, "[Desktop Entry]\nType=Application\nName=Gone\nExec=/nowhere/gone\n"));
  startShown(config);
  const auto source = desk.source(carried);
  ASSERT_TRUE(comesTrue([&] { return isPainted(desk.away()); }));
  const QList<DockWidget> before = store().widgets();
  for (const bool opened : {false, true}) {
    SCOPED_TRACE(opened ? "once its panel is open" : "before it opens");
    ASSERT_TRUE(QDir().mkpath(letters));
    ASSERT_TRUE(dragOver(tile(0).center()));
    const auto opens = [&] { return inTime([&] { return panels() == QList{before[0].id}; }); };
    ASSERT_TRUE(!opened || opens());
    ASSERT_TRUE(QDir(letters).removeRecursively());
    EXPECT_TRUE(opened || opens()) << "it says what became of the folder";
    desk.moveTo(tile(0).center() + QPoint(6, 0));
    desk.settle();
    desk.button(false);
    EXPECT_TRUE(inTime([&] { return store().error() == u"“Letters” no longer exists."_s; }));
    EXPECT_TRUE(store().widgets() == before && QFile::exists(carried));
    store().clearError();
    time.advance(1);
    desk.click(tile(0).center());
    ASSERT_TRUE(inTime([&] { return panels().isEmpty() && !isOpen(); }));
  }

  ASSERT_TRUE(dragOver(tile(1).center()));
  ASSERT_TRUE(QFile::remove(entry));
  EXPECT_TRUE(inTime([&] { return !store().error().isEmpty(); })) << "what cannot be opened is said";
  desk.button(false);
  desk.settle();
  EXPECT_TRUE(store().widgets() == before && QFile::exists(carried));
}

}  // namespace
}  // namespace tarnwick::testing
