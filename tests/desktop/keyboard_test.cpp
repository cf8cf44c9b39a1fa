// The dock by the keyboard alone, and under a user who is quicker or slower than the dock.
#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QWindow>

#include "app/Orders.h"
#include "desktop/ShellTest.h"
#include "support/ForeignWindow.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class X11Input : public ShellTest {
 protected:
  bool menuIsOpen() const {
    return QApplication::activePopupWidget() && QApplication::activePopupWidget()->isVisible();
  }
  QString firstEntry() const {
    const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    return menu ? menu->actions().first()->text() : QString();
  }
  /// With the settings as they were left, but for a change.
  void startAgain(const std::function<void(DockConfiguration&)>& change) {
    DockConfiguration config = store().config();
    end();
    change(config);
    startShown(config);
  }

  VirtualDisplay& display = VirtualDisplay::current();
};

TEST_F(X11Input, ReachEveryTileAndItsMenuByTheKeyboardAlone) {
  DockConfiguration config;
  config.layout = DockLayout::RevealBottom;
  ForeignWindow editor(display, QRect(600, 100, 300, 200));
  ASSERT_TRUE(editor.show());
  ASSERT_TRUE(comesTrue([&] { return display.focus() == editor.id(); }));
  start(config);
  constexpr quint8 kEscape = 9, kReturn = 36, kControl = 37, kD = 40, kShift = 50, kAlt = 64, kLeft = 113, kRight = 114,
                   kSuper = 133, kMenu = 135;
  const auto standsOn = [&](qsizetype item) { return comesTrue([&] { return view().focusedItem() == item; }); };
  display.tap(kD, {kControl, kAlt, kSuper, kShift});
  ASSERT_TRUE(comesTrue([&] { return dock().isVisible(id()) && view().hasFocus(); }));
  EXPECT_TRUE(standsOn(0));
  for (const quint8 key : {kRight, kRight, kLeft, kRight, kRight, kRight}) display.tap(key);
  EXPECT_TRUE(standsOn(4));
  display.tap(kMenu);
  ASSERT_TRUE(comesTrue([&] { return menuIsOpen(); }));
  EXPECT_TRUE(firstEntry().startsWith(u"Open "_s)) << qPrintable(firstEntry());
  display.tap(kEscape);
  ASSERT_TRUE(comesTrue([&] { return !menuIsOpen() && !isOpen(); }));
  EXPECT_TRUE(standsOn(4));
  display.tap(kReturn);
  ASSERT_TRUE(comesTrue([&] { return isOpen() && !view().hasFocus(); }));
  display.tap(kEscape);
  ASSERT_TRUE(comesTrue([&] { return !isOpen() && view().hasFocus(); }));
  time.advance(DockController::kKeyboardGrace * 2);
  display.tap(kLeft);
  EXPECT_TRUE(standsOn(3)) << "the keyboard that a panel gave back";

  // Two keys at once: the second one is there before the panel is.
  for (const quint8 key : {kReturn, kEscape}) display.tap(key);
  display.settle();
  EXPECT_TRUE(inTime([&] { return !isOpen() && view().hasFocus(); }));
  EXPECT_TRUE(dock().isVisible(id()));
  display.tap(kEscape);
  EXPECT_TRUE(inTime([&] { return !dock().isVisible(id()); }));
  EXPECT_EQ(display.focus(), editor.id());

  // A click opens one, and the program does nothing else until Escape is pressed.
  dock().focus();
  dock().leaveKeyboard();
  ASSERT_TRUE(comesTrue([&] { return isIn() && display.focus() == editor.id(); }));
  Q_EMIT view().tileActivated(store().widgets()[3].id);
  ASSERT_TRUE(isOpen());
  display.tap(kEscape);
  EXPECT_TRUE(comesTrue([&] { return !isOpen() && display.focus() == editor.id(); }));
}

TEST_F(X11Input, APanelGivesTheKeyboardBackHoweverItIsClosed) {
  ForeignWindow editor(display, QRect(600, 100, 300, 200));
  ASSERT_TRUE(editor.show());
  ASSERT_TRUE(comesTrue([&] { return display.focus() == editor.id(); }));
  startShown(twoProfiles());
  constexpr quint8 kEscape = 9;
  const QPoint clock = tile(1).center();
  const struct {
    const char* name;
    std::function<void()> close;
  } ways[] = {
      {"Escape", [&] { display.tap(kEscape); }},
      {"a click on its tile",
       [&] {
         time.advance(1);  // Not the second of a double click.
         display.click(clock);
       }},
      {"a click on the desktop", [&] { display.click(desk.away()); }},
      {"another panel, and Escape",
       [&] {
         const QPointer<QWindow> first = QGuiApplication::focusWindow();
         display.click(tile(4).center());
         ASSERT_TRUE(comesTrue([&] {
           const QWindow* second = QGuiApplication::focusWindow();
           return isOpen() && second && second != first;
         }));
         display.tap(kEscape);
       }},
      {"a menu that is closed",
       [&] {
         display.click(clock, 3);
         ASSERT_TRUE(comesTrue([&] { return menuIsOpen(); }));
         display.tap(kEscape);
       }},
      {"another profile",
       [&] {
         delegate->orders().perform({Order::Kind::Profile, 1});
         ASSERT_TRUE(comesTrue([&] { return !isOpen(); }));
         delegate->orders().perform({Order::Kind::Profile, 0});
       }},
      {"its widget's end", [&] { store().remove(store().widgets()[1].id); }},
  };
  for (const auto& [name, close] : ways) {
    SCOPED_TRACE(name);
    time.advance(1);
    ASSERT_TRUE(inTime([&] { return takesClicks(clock); }));
    display.click(clock);
    ASSERT_TRUE(comesTrue([&] { return isOpen() && QGuiApplication::focusWindow(); }));
    EXPECT_NE(display.focus(), editor.id());
    close();
    EXPECT_TRUE(inTime([&] { return !isOpen() && !menuIsOpen() && display.focus() == editor.id(); }));
    desk.moveTo(desk.away());
  }

  // One that the dock had opened by the keyboard gives it back to the dock.
  constexpr quint8 kReturn = 36;
  dock().focus();
  ASSERT_TRUE(comesTrue([&] { return view().hasFocus(); }));
  display.tap(kReturn);
  ASSERT_TRUE(comesTrue([&] { return isOpen() && !view().hasFocus(); }));
  delegate->orders().perform({Order::Kind::Profile, 1});
  ASSERT_TRUE(comesTrue([&] { return !isOpen(); }));
  time.advance(DockController::kKeyboardGrace * 2);
  EXPECT_TRUE(comesTrue([&] { return view().hasFocus(); }));
  EXPECT_EQ(view().focusedItem(), 0);
}

TEST_F(X11Input, TwoQuickClicksWithTheRightButtonOpenTheMenuAnew) {
  startShown(DockConfiguration());
  const QPoint between(tile(0).right() + 4, glass().center().y());
  for (const char* which : {"the first", "the second of a double click"}) {
    display.click(between, 3);
    ASSERT_TRUE(comesTrue([&] { return menuIsOpen(); })) << which;
    QApplication::activePopupWidget()->close();
    ASSERT_TRUE(comesTrue([&] { return !isOpen(); }));
  }
}

TEST_F(X11Input, DragAFloatingDockThatIsKeptAndBroughtBackInside) {
  DockConfiguration config;
  config.layout = DockLayout::Floating;
  startShown(config);
  const QRect before = glass();
  const QPoint grip(tile(0).right() + 4, before.center().y());
  display.moveTo(grip);
  display.button(1, true);
  // A pointer that has gone far in one go and then rests.
  for (const int share : {1, 2, 4}) display.moveTo(grip - QPoint(25, 75) * share);
  EXPECT_TRUE(comesTrue([&] { return glass() == before.translated(-100, -300); }));
  EXPECT_TRUE(store().config().floatingPositions.isEmpty());
  // It goes in the middle of the move, and comes back where it was by then.
  dock().toggle();
  display.button(1, false);
  EXPECT_EQ(store().config().floatingPositions.size(), 1);
  dock().toggle();
  EXPECT_TRUE(inTime([&] { return dock().isVisible(id()) && glass() == before.translated(-100, -300); }));

  startAgain([](DockConfiguration& saved) { saved.floatingPositions.first() = {-4000, 5000}; });
  EXPECT_TRUE(QRect(0, 0, 1600, 900).contains(glass())) << "a place outside every display";
}

}  // namespace
}  // namespace tarnwick::testing
