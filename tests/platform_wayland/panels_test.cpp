#include <gtest/gtest.h>

#include <QMenu>
#include <QSignalSpy>
#include <QToolTip>

#include "Desk.h"
#include "platform/wayland/PlainPanels.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

const QColor kGround(0x20, 0x40, 0x60);
const QRect kPlace(300, 700, 400, 60);

TEST(WaylandPanel, StandsWhereItIsPutOnDisplaysOfDifferentScale) {
  Desk desk;
  PaintedPanel one(desk, Qt::red);
  one.panel->setShown(true);
  EXPECT_FALSE(one.panel->isShown()) << "without a place";
  one.panel->place({.screen = kFirst, .rectangle = kPlace, .margins = QMargins(10, 20, 10, 0)});
  one.panel->setShown(true);
  EXPECT_TRUE(desk.shows({290, 680}, Qt::red));
  EXPECT_TRUE(desk.shows({709, 759}, Qt::red));
  EXPECT_EQ(desk.sway.pixel({289, 680}), kGround);
  EXPECT_EQ(desk.sway.pixel({709, 760}), kGround);

  one.panel->place({.screen = kFirst, .rectangle = QRect(0, 740, 100, 120), .margins = {}});
  EXPECT_TRUE(desk.shows({0, 799}, Qt::red));
  EXPECT_TRUE(desk.shows({290, 680}, kGround));

  one.panel->place({.screen = kSecond, .rectangle = QRect(50, 350, 200, 50), .margins = QMargins(0, 10, 0, 0)});
  EXPECT_TRUE(desk.shows({100, 680}, Qt::red, kSecond)) << "in pixels of the device";
  EXPECT_TRUE(desk.shows({499, 799}, Qt::red, kSecond));
  EXPECT_EQ(desk.sway.pixel({99, 700}, kSecond), kGround);
  EXPECT_EQ(desk.sway.pixel({500, 700}, kSecond), kGround);
  EXPECT_EQ(one.content->devicePixelRatio(), 2);
  EXPECT_TRUE(desk.shows({0, 799}, kGround));

  one.panel->setShown(false);
  EXPECT_TRUE(desk.shows({100, 700}, kGround, kSecond));
  one.panel->setShown(true);
  EXPECT_TRUE(desk.shows({100, 700}, Qt::red, kSecond));
}

TEST(WaylandPanel, MakesDoWithTheFirstVersionOfLayers) {
  Desk desk(1);
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = kPlace, .margins = {}});
  one.panel->setShown(true);
  EXPECT_TRUE(desk.shows({350, 730}, Qt::red));
  one.panel->setAboveFullscreen(false);
  one.panel->setKeyboard(Keyboard::Exclusive);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->isActiveWindow(); }));
  one.panel->setKeyboard(Keyboard::None);
  one.panel->place({.screen = kFirst, .rectangle = kPlace.translated(0, -300), .margins = {}});
  EXPECT_TRUE(desk.shows({350, 430}, Qt::red));
  const auto popup = one.panel->popup(std::make_unique<Paint>(Qt::blue, QSize(80, 80)), QRect(0, 0, 50, 50), {});
  EXPECT_TRUE(desk.shows({325, 350}, Qt::blue));
}

TEST(PlainPanel, IsAnOrdinaryWindowWithAllThatBelongsToIt) {
  Desk desk(0);
  ASSERT_EQ(desk.screens.all().size(), 2);
  EXPECT_EQ(desk.screens.all()[0].usable, QRectF(0, 0, 1280, 800));
  PlainPanels panels(desk.screens);
  auto made = std::make_unique<Paint>(Qt::red);
  Paint& content = *made;
  const auto panel = panels.make(std::move(made));
  panel->setShown(true);
  EXPECT_FALSE(panel->isShown()) << "without a place";
  panel->place({.screen = kFirst, .rectangle = kPlace, .margins = {}});
  panel->setInputRegion(QRect(100, 0, 300, 60));
  panel->setShown(true);
  // A window that cannot be stretched floats in the middle of the display that has the focus.
  const QString order = u"[app_id=\".*\"] focus, move position 300 400"_s;
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.sway.order(order); }));
  ASSERT_TRUE(desk.shows({310, 410}, Qt::red));
  {
    QMenu menu;
    const QSignalSpy chosen(menu.addAction(u"Plain"_s), &QAction::triggered);
    content.pressed = [&] { panel->openMenu(menu, QRect(100, 0, 60, 60)); };
    desk.sway.click({450, 430});
    constexpr QPoint kEntry(430, 381);
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] {
      const QColor seen = desk.sway.pixel(kEntry);
      return seen.isValid() && seen != kGround;
    }));
    desk.sway.click(kEntry);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return chosen.size() == 1 && !menu.isVisible(); }));
  }

  std::unique_ptr<Popup> popup;
  int closed = 0;
  content.pressed = [&] {
    popup = panel->popup(std::make_unique<Paint>(Qt::blue, QSize(220, 180)), QRect(100, 0, 60, 60), {});
    QObject::connect(popup.get(), &Popup::closed, [&] { ++closed; });
  };
  desk.sway.click({450, 430});
  EXPECT_TRUE(desk.shows({430, 380}, Qt::blue)) << "above its rectangle";
  desk.sway.click({100, 100});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return closed == 1; }));
  popup.reset();
  const int presses = content.presses;
  desk.sway.click({350, 430});
  desk.settle();
  EXPECT_EQ(content.presses, presses) << "outside of what takes clicks";
  // A popup that takes no clicks lets them through to what lies below.
  content.pressed = {};
  popup = panel->popup(std::make_unique<Paint>(Qt::green, QSize(220, 180)), QRect(100, 0, 60, 60),
                       {.takesKeys = false, .closesOutside = false, .takesClicks = false});
  EXPECT_TRUE(desk.shows({430, 380}, Qt::green));
  popup.reset();
  panel->setShown(false);
  EXPECT_TRUE(desk.shows({310, 410}, kGround));
}

TEST(WaylandPanel, TakesTheClicksOfItsRegionAndTheKeyboardOnlyWhenRequested) {
  Desk desk;
  const auto left = desk.sway.terminal(u"left"_s);
  const auto right = desk.sway.terminal(u"right"_s);
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = kPlace, .margins = {}});
  one.panel->setInputRegion(QRect(100, 0, 300, 60));
  one.panel->setShown(true);
  ASSERT_TRUE(desk.shows({350, 730}, Qt::red));

  desk.sway.click({450, 730});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->presses == 1; }));
  EXPECT_EQ(desk.sway.focused(), u"right"_s);
  desk.sway.click({350, 730});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.sway.focused() == u"left"_s; }));
  desk.sway.click({1000, 100});
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.sway.focused() == u"right"_s; }));
  one.panel->setInputRegion({});
  desk.settle();
  desk.sway.click({450, 730});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.sway.focused() == u"left"_s; }));
  EXPECT_EQ(one.content->presses, 1);

  one.panel->setKeyboard(Keyboard::Exclusive);
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->isActiveWindow(); }));
  desk.sway.type({u"hello"_s});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->typed == u"hello"_s; }));
  one.panel->setKeyboard(Keyboard::None);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !one.content->isActiveWindow(); }));
}

TEST(WaylandPanel, KeepsSpaceThatOnlyOthersLose) {
  Desk desk;
  const auto terminal = desk.sway.terminal(u"below"_s);
  const auto height = [&] {
    const QJsonDocument spaces = desk.sway.ask(u"get_workspaces"_s);
    return spaces[0][u"rect"]["height"_L1].toInt();
  };
  ASSERT_EQ(height(), 800);
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = kPlace, .margins = {}});
  one.panel->reserve(Edge::Bottom, 70);
  one.panel->setShown(true);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return height() == 730; }));
  {
    // To another set of adapters our bar is a stranger's.
    Desk other;
    EXPECT_EQ(other.screens.all().value(0).usable, QRectF(0, 0, 1280, 730));
    one.panel->reserve(Edge::Top, 40);
    EXPECT_TRUE(
        VirtualDisplay::waitUntil([&] { return other.screens.all().value(0).usable == QRectF(0, 40, 1280, 760); }));
  }
  EXPECT_EQ(desk.screens.all().value(0).usable, QRectF(0, 0, 1280, 800));
  one.panel->setShown(false);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return height() == 800; }));
}

TEST(WaylandPanel, OpensPopupsThatCloseOnAClickOutside) {
  Desk desk;
  const auto below = desk.sway.terminal(u"below"_s);
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = kPlace, .margins = {}});
  one.panel->setShown(true);
  ASSERT_TRUE(desk.shows({350, 730}, Qt::red));
  const QRect beside(100, 0, 60, 60);
  const QColor blue = Qt::blue;
  const struct {
    const char* name;
    std::function<void()> act;
    bool closes;
  } rows[] = {{"on the other display",
               [&] {
                 desk.sway.click({1500, 200});
               },
               true},
              {"on the desktop",
               [&] {
                 desk.sway.click({100, 100});
               },
               true},
              {"on another tile",
               [&] {
                 desk.sway.click({650, 730});
               },
               true},
              {"on its own tile",
               [&] {
                 desk.sway.click({430, 730});
               },
               false},
              {"inside",
               [&] {
                 desk.sway.click({430, 600});
               },
               false},
              {"Escape",
               [&] {
                 desk.sway.type({u"-k"_s, u"Escape"_s});
               },
               true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const int presses = one.content->presses;
    auto content = std::make_unique<Paint>(blue, QSize(220, 180));
    Paint& inner = *content;
    const auto popup = one.panel->popup(std::move(content), beside, {.margins = QMargins(10, 10, 10, 10), .gap = 10});
    const QSignalSpy closed(popup.get(), &Popup::closed);
    // Centred on the tile, with its outline ten pixels above the panel.
    ASSERT_TRUE(desk.shows({320, 699}, blue));
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return inner.isActiveWindow(); }));
    row.act();
    if (row.closes) {
      EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return closed.size() == 1; }));
      EXPECT_FALSE(inner.isVisible());
    } else {
      EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return inner.presses + one.content->presses > presses; }));
      QCoreApplication::processEvents();
      EXPECT_EQ(closed.size(), 0);
    }
  }
  EXPECT_EQ(one.content->presses, 2) << "a click on the dock is its own too";
  EXPECT_TRUE(desk.shows({320, 699}, desk.sway.pixel({320, 300}))) << "gone with its owner";
}

TEST(WaylandPanel, OpensMenusWithSubmenus) {
  Desk desk;
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kSecond, .rectangle = QRect(100, 340, 300, 60), .margins = {}});
  one.panel->setShown(true);
  ASSERT_TRUE(desk.shows({300, 740}, Qt::red, kSecond));
  QMenu menu;
  const QAction* const plain = menu.addAction(u"Plain"_s);
  QMenu* const more = menu.addMenu(u"More"_s);
  const QAction* const inner = more->addAction(u"Inner"_s);
  const QSignalSpy plainChosen(plain, &QAction::triggered);
  const QSignalSpy innerChosen(inner, &QAction::triggered);
  // The middle of an entry, once it is on the screen.
  const auto middle = [&](const QMenu& of, const QAction* action) {
    const QPoint place = of.mapToGlobal(of.actionGeometry(const_cast<QAction*>(action)).center());
    EXPECT_TRUE(
        VirtualDisplay::waitUntil([&] { return desk.sway.pixel((place - QPoint(1280, 0)) * 2, kSecond) != kGround; }));
    return place;
  };
  const auto opens = [&] {
    if (!desk.shows({300, 650}, kGround, kSecond)) return false;  // The last one is gone.
    one.panel->openMenu(menu, QRect(100, 0, 60, 60));
    return VirtualDisplay::waitUntil([&] { return menu.isActiveWindow(); });
  };

  ASSERT_TRUE(opens());
  EXPECT_EQ(menu.geometry().bottom() + 1, 334);
  EXPECT_TRUE(QRect(1280, 0, 640, 400).contains(menu.geometry()));
  desk.sway.click(middle(menu, plain));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return plainChosen.size() == 1; }));
  EXPECT_FALSE(menu.isVisible());

  ASSERT_TRUE(opens());
  desk.sway.click(middle(menu, more->menuAction()));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return more->isVisible(); }));
  desk.sway.click(middle(*more, inner));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return innerChosen.size() == 1; }));

  ASSERT_TRUE(opens());
  desk.sway.click(middle(menu, more->menuAction()));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return more->isVisible(); }));
  desk.sway.click({200, 200});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !more->isVisible() && !menu.isVisible(); }));
  ASSERT_TRUE(opens());
  desk.sway.type({u"-k"_s, u"Escape"_s});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !menu.isVisible(); }));
}

TEST(WaylandPanel, LetsClicksThroughAPopupThatTakesNone) {
  Desk desk;
  const auto below = desk.sway.terminal(u"left"_s);
  const auto other = desk.sway.terminal(u"right"_s);
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = kPlace, .margins = {}});
  one.panel->setShown(true);
  ASSERT_TRUE(desk.shows({350, 730}, Qt::red));
  ASSERT_EQ(desk.sway.focused(), u"right"_s);
  auto content = std::make_unique<Paint>(Qt::blue, QSize(220, 180));
  const Paint& inner = *content;
  const auto popup = one.panel->popup(std::move(content), QRect(0, 0, 60, 60),
                                      {.takesKeys = false, .closesOutside = false, .takesClicks = false});
  ASSERT_TRUE(desk.shows({320, 600}, Qt::blue));
  desk.sway.click({320, 600});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.sway.focused() == u"left"_s; }));
  EXPECT_EQ(inner.presses, 0);
}

TEST(WaylandPanel, ShowsTipsAboveItself) {
  Desk desk;
  desk.sway.moveTo({640, 300});
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = kPlace, .margins = {}});
  one.panel->setShown(true);
  ASSERT_TRUE(desk.shows({350, 730}, Qt::red));
  for (const QPoint place : {QPoint(320, 705), QPoint(500, 705)}) {
    QToolTip::showText(place, u"A long tip that covers a part of the panel"_s, one.content);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.sway.pixel(place + QPoint(10, 25)) != Qt::red; }));
    desk.sway.click(place + QPoint(10, 25));
  }
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->presses == 2; })) << "through the tip";
  QToolTip::hideText();
  EXPECT_TRUE(desk.shows({330, 730}, Qt::red));
}

}  // namespace
}  // namespace tarnwick::testing
