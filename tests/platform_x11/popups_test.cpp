#include <gtest/gtest.h>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>

#include "Desk.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

constexpr quint8 kEscape = 9;
constexpr quint8 kReturn = 36;
constexpr quint8 kA = 38;
constexpr quint8 kRight = 114;
constexpr quint8 kDown = 116;
const QRect kMenuPlace(300, 720, 400, 60);
const QRect kTile(180, 0, 40, 60);  // of the panel

/// A content with a line to type into.
struct Form final : QWidget {
  Form() {
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(line);
  }
  QSize sizeHint() const override { return {220, 120}; }

  QLineEdit* line = new QLineEdit;
};

/// A panel at the bottom with a form on it, over a window of another program that has the keyboard.
class X11PanelKeys : public ::testing::Test {
 protected:
  void SetUp() override {
    desk.display.moveTo({640, 10});
    ASSERT_TRUE(below.show());
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.display.focus() == below.id(); }));
    auto made = std::make_unique<Form>();
    form = made.get();
    panel = desk.panels.make(std::move(made));
    panel->place({.screen = desk.screens.mainId(), .rectangle = kMenuPlace, .margins = {}});
    panel->setShown(true);
    ASSERT_TRUE(isSeen(form->winId()));
  }
  bool isSeen(WId window) const {
    return VirtualDisplay::waitUntil([&] {
      xcb_connection_t* connection = desk.display.connection();
      const auto cookie = xcb_get_window_attributes(connection, static_cast<xcb_window_t>(window));
      xcb_get_window_attributes_reply_t* answer = xcb_get_window_attributes_reply(connection, cookie, nullptr);
      const bool isViewable = answer && answer->map_state == XCB_MAP_STATE_VIEWABLE;
      std::free(answer);
      return isViewable;
    });
  }
  bool focusComesTo(WId window) const {
    return VirtualDisplay::waitUntil([&] { return desk.display.focus() == window; });
  }
  /// Opens a form beside the tile.
  Form* open(const PopupStyle& style) {
    auto made = std::make_unique<Form>();
    Form* content = made.get();
    popup = panel->popup(std::move(made), kTile, style);
    closings = std::make_unique<QSignalSpy>(popup.get(), &Popup::closed);
    EXPECT_TRUE(isSeen(content->winId()));
    return content;
  }

  Desk desk;
  ForeignWindow below{desk.display, QRect(100, 300, 1000, 500)};
  Form* form = nullptr;
  std::unique_ptr<Panel> panel;
  std::unique_ptr<Popup> popup;
  std::unique_ptr<QSignalSpy> closings;
};

TEST_F(X11PanelKeys, AnExclusivePanelIsTypedIntoAndGivesTheKeyboardBack) {
  enum class End { None, Hidden, Destroyed };
  for (const End end : {End::None, End::Hidden, End::Destroyed}) {
    desk.display.tap(kA);
    panel->setKeyboard(Keyboard::Exclusive);
    panel->setShown(true);
    ASSERT_TRUE(focusComesTo(form->winId()));
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return form->isActiveWindow(); })) << static_cast<int>(end);
    form->line->clear();
    form->line->setFocus();
    desk.display.tap(kA);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return form->line->text() == u"a"; })) << static_cast<int>(end);
    if (end == End::None) panel->setKeyboard(Keyboard::None);
    if (end == End::Hidden) panel->setShown(false);
    if (end == End::Destroyed) panel.reset();
    EXPECT_TRUE(focusComesTo(below.id())) << static_cast<int>(end);
  }
}

TEST_F(X11PanelKeys, AnExclusivePanelLetsTheUserTakeTheKeyboardElsewhere) {
  ForeignWindow another(desk.display, QRect(0, 0, 80, 80));
  panel->setKeyboard(Keyboard::Exclusive);
  ASSERT_TRUE(focusComesTo(form->winId()));
  ASSERT_TRUE(another.show());
  desk.display.click({40, 40});
  ASSERT_TRUE(focusComesTo(another.id()));
  panel->setKeyboard(Keyboard::None);
  desk.display.settle();
  EXPECT_EQ(desk.display.focus(), another.id());
}

TEST_F(X11PanelKeys, APopupStandsBesideItsTileAndTakesTheKeys) {
  Form* content = open({.margins = QMargins(10, 20, 10, 30)});
  EXPECT_EQ(desk.display.frame(static_cast<xcb_window_t>(content->winId())), QRect(390, 620, 220, 120));
  EXPECT_NE(desk.display.topLevelAt({395, 650}), content->winId()) << "its shadow takes no clicks";
  EXPECT_EQ(desk.display.topLevelAt({400, 640}), content->winId());
  ASSERT_TRUE(focusComesTo(content->winId()));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content->isActiveWindow(); }));
  content->line->setFocus();
  desk.display.tap(kA);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return content->line->text() == u"a"; }));
  desk.display.tap(kEscape);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return closings->size() == 1; }));
  EXPECT_FALSE(content->isVisible());
  EXPECT_TRUE(focusComesTo(below.id()));

  open({});
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.display.focus() != below.id(); }));
  popup.reset();
  EXPECT_TRUE(focusComesTo(below.id()));
  open({.takesKeys = false});
  desk.display.settle();
  EXPECT_EQ(desk.display.focus(), below.id());
}

TEST_F(X11PanelKeys, AClickOutsideClosesAPopupAndReachesItsTarget) {
  ForeignWindow another(desk.display, QRect(0, 0, 80, 80));
  ASSERT_TRUE(another.show());
  const Form* content = open({});
  ASSERT_TRUE(focusComesTo(content->winId()));
  const QPoint inside(content->geometry().center());
  const QPoint tile(500, 750);
  desk.display.click(inside);
  desk.settle();
  desk.display.click(tile);
  desk.settle();
  desk.display.moveTo({150, 350});
  desk.display.button(5, true);
  desk.display.button(5, false);
  desk.settle();
  EXPECT_EQ(closings->size(), 0) << "inside, on its tile, with the wheel";

  desk.display.click({40, 40});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return closings->size() == 1; }));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return another.clicks() == 1; }));
  EXPECT_TRUE(focusComesTo(another.id())) << "not to the window that had the keyboard before";

  open({.takesKeys = false, .closesOutside = false});
  desk.display.click({40, 40});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return another.clicks() == 2; }));
  desk.settle();
  EXPECT_EQ(closings->size(), 0);
}

/// Counts how often a window lost the keyboard.
struct Losses final : QObject {
  explicit Losses(QWidget& window) : QObject(&window) { window.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::WindowDeactivate) ++count;
    return false;
  }
  int count = 0;
};

TEST_F(X11PanelKeys, APopupThatKeepsTheKeysLosesThemToTheUserOnly) {
  Form* content = open({.closesOutside = false, .keepsKeys = true});
  ASSERT_TRUE(focusComesTo(content->winId()));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content->isActiveWindow(); }));
  const auto* losses = new Losses(*content);
  ForeignWindow another(desk.display, QRect(0, 0, 80, 80));
  ASSERT_TRUE(another.show());
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return losses->count == 1; })) << "the window manager's choice";
  EXPECT_TRUE(focusComesTo(content->winId()));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content->isActiveWindow(); }));

  desk.display.click({40, 40});
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return losses->count == 2; }));
  desk.settle();
  EXPECT_EQ(desk.display.focus(), another.id());
}

TEST_F(X11PanelKeys, APopupWithoutClicksLetsThemThrough) {
  const Form* content = open({.takesKeys = false, .closesOutside = false, .takesClicks = false});
  const QPoint inside = content->geometry().center();
  EXPECT_NE(desk.display.topLevelAt(inside), content->winId());
  desk.display.click(inside);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return below.clicks() == 1; }));
  // Also where it is after a move.
  popup->moveBeside(kTile.translated(40, 0));
  desk.settle();
  EXPECT_NE(content->geometry().center(), inside);
  EXPECT_NE(desk.display.topLevelAt(content->geometry().center()), content->winId());
}

TEST_F(X11PanelKeys, AMenuTakesKeysAndClicksAndSwallowsTheClickThatClosesIt) {
  QMenu menu;
  menu.addAction(u"First"_s);
  QMenu* more = menu.addMenu(u"More"_s);
  const QAction* deep = more->addAction(u"Deep"_s);
  const QSignalSpy chosen(deep, &QAction::triggered);
  panel->openMenu(menu, kTile);
  ASSERT_TRUE(isSeen(menu.winId()));
  EXPECT_LE(menu.geometry().bottom(), kMenuPlace.top());
  for (const quint8 key : {kDown, kDown, kRight, kReturn}) desk.display.tap(key);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return chosen.size() == 1; }));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !menu.isVisible(); }));

  panel->openMenu(menu, kTile);
  ASSERT_TRUE(isSeen(menu.winId()));
  desk.display.click({150, 350});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !menu.isVisible(); }));
  desk.display.settle();
  EXPECT_EQ(below.clicks(), 0);
  desk.display.click({150, 350});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return below.clicks() == 1; })) << "no grab is left behind";
  EXPECT_EQ(desk.display.focus(), below.id());
}

}  // namespace
}  // namespace tarnwick::testing
