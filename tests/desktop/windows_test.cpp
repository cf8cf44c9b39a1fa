// The program's own windows on a real display: what a person does to a dock with the keyboard alone, and what a screen
// reader does.
#include <gtest/gtest.h>
#include <signal.h>

#include <QApplication>
#include <QFile>
#include <QLayout>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>
#include <algorithm>

#include "app/Adapters.h"
#include "app/AppDelegate.h"
#include "app/DockPresenter.h"
#include "app/MenuBarPopup.h"
#include "app/Orders.h"
#include "app/StatusItem.h"
#include "app/WindowPlaces.h"
#include "app/Windows.h"
#include "config/Persistence.h"
#include "desktop/AtSpi.h"
#include "desktop/Program.h"
#include "support/TestScheduler.h"
#include "views/dock/DockView.h"
#include "views/window/AppWindow.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

DockConfiguration twoTiles() {
  DockConfiguration config;
  config.onboardingComplete = true;
  config.profiles[0].widgets.resize(2);
  return config;
}

QStringList kinds(const DockConfiguration& config) {
  QStringList result;
  for (const DockWidget& widget : config.profiles[0].widgets) result << widget.kind;
  return result;
}

class WindowsTest : public ::testing::Test {
 protected:
  QString file() const { return folder.filePath(u"Tarnwick/config.json"_s); }

  void start(const DockConfiguration& config) {
    Persistence::save(config, file());
    adapters = std::make_unique<Adapters>(time, LaunchEnvironment::ofProcess(), QFileInfo(file()).path());
    StoreSetup store = adapters->storeSetup();
    store.storage = file();
    DelegateSetup setup = adapters->delegateSetup();
    setup.guards = false;
    delegate = std::make_unique<AppDelegate>(std::move(store), adapters->services(), std::move(setup));
    delegate->didFinishLaunching();
    ASSERT_TRUE(comesTrue([&] { return !delegate->dock().displays().isEmpty(); }));
  }
  ~WindowsTest() override {
    delegate.reset();
    adapters.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  AppStore& store() { return delegate->store(); }
  Commands& commands() { return delegate->commands(); }
  Windows& windows() { return delegate->windows(); }
  QStringList tiles() { return kinds(store().config()); }
  /// Lets the clock and the event loop run until something is so.
  bool comesTrue(const std::function<bool()>& predicate) {
    return VirtualDisplay::waitUntil([&] {
      time.advance(0.02);
      return predicate();
    });
  }
  bool isInFront(const QString& title) {
    return comesTrue([&] {
      const QWidget* active = QApplication::activeWindow();
      return active && active->windowTitle() == title && QApplication::focusWidget();
    });
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : QApplication::activeWindow(), key, modifiers);
  }
  /// Gives the dock the keyboard, and opens the menu of a tile, counted from the end.
  QMenu* menuOfTile(int fromTheEnd) {
    time.advance(1);  // The dock has noticed where the keyboard went.
    delegate->orders().perform({Order::Kind::Focus, 0});
    if (!comesTrue([] { return qobject_cast<DockView*>(QApplication::focusWidget()) != nullptr; })) return nullptr;
    press(Qt::Key_End);
    for (int i = 0; i < fromTheEnd; ++i) press(Qt::Key_Left);
    press(Qt::Key_F10, Qt::ShiftModifier);
    QMenu* menu = nullptr;
    comesTrue([&] { return (menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) != nullptr; });
    return menu;
  }
  void choose(QMenu* menu, const QString& entry) {
    ASSERT_NE(menu, nullptr);
    const auto isThere = [&](const QAction* action) { return action->text() == entry && action->isEnabled(); };
    ASSERT_TRUE(std::ranges::any_of(menu->actions(), isThere)) << qPrintable(entry);
    do QTest::keyClick(menu, Qt::Key_Down);
    while (!menu->activeAction() || menu->activeAction()->text() != entry);
    QTest::keyClick(menu, Qt::Key_Return);
    ASSERT_TRUE(comesTrue([] { return QApplication::activePopupWidget() == nullptr; }));
  }

  QTemporaryDir folder;
  test::TestScheduler time;
  std::unique_ptr<Adapters> adapters;
  std::unique_ptr<AppDelegate> delegate;
};

TEST_F(WindowsTest, AClockIsAddedEditedMovedRemovedAndBroughtBackByTheKeyboardAlone) {
  start(twoTiles());
  delegate->orders().reopen();
  ASSERT_TRUE(isInFront(u"Tarnwick Settings"_s));
  press(Qt::Key_N, Qt::ControlModifier);
  ASSERT_TRUE(isInFront(u"Add Widgets"_s));
  QTest::keyClicks(QApplication::focusWidget(), u"Flip Clock"_s);
  press(Qt::Key_Return);
  const QStringList before = kinds(twoTiles());
  ASSERT_EQ(tiles().size(), 3);
  const QString clock = tiles().last();
  EXPECT_EQ(clock, u"flipClock"_s);
  press(Qt::Key_W, Qt::ControlModifier);
  ASSERT_TRUE(isInFront(u"Tarnwick Settings"_s));

  ASSERT_NO_FATAL_FAILURE(choose(menuOfTile(0), u"Edit Widget…"_s));
  ASSERT_TRUE(isInFront(u"Edit “Flip Clock”"_s));
  for (int i = 0; i < 20 && QApplication::focusWidget()->accessibleName() != u"Title"_s; ++i) press(Qt::Key_Tab);
  QTest::keyClicks(QApplication::focusWidget(), u"Mine"_s);
  press(Qt::Key_Return);
  EXPECT_EQ(store().widgets().last().title, u"Mine"_s);

  ASSERT_NO_FATAL_FAILURE(choose(menuOfTile(0), u"Move Left"_s));
  EXPECT_EQ(tiles(), (QStringList{before[0], clock, before[1]}));
  const DockWidget kept = store().widgets()[1];
  ASSERT_NO_FATAL_FAILURE(choose(menuOfTile(1), u"Remove Widget"_s));
  EXPECT_EQ(tiles(), before);
  delegate->orders().reopen();
  ASSERT_TRUE(isInFront(u"Tarnwick Settings"_s));
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(comesTrue([&] { return store().widgets().size() == 3 && store().widgets()[1] == kept; }));
}

TEST_F(WindowsTest, ImportOfABrokenFileChangesNothing) {
  start(twoTiles());
  delegate->orders().reopen();
  ASSERT_TRUE(isInFront(u"Tarnwick Settings"_s));
  const DockConfiguration before = store().config();
  QFile broken(folder.filePath(u"broken.json"_s));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write(Persistence::encode(before).chopped(40));
  broken.close();
  bool isOver = false;
  delegate->presenter().edits().importConfiguration(broken.fileName(), [&](bool) { isOver = true; });
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return isOver; }));
  EXPECT_FALSE(store().error().isEmpty());
  EXPECT_EQ(store().config(), before);
  time.advance(20);
  EXPECT_EQ(Persistence::read(file()).profiles, before.profiles);
}

TEST_F(WindowsTest, EachOpensOnceAndAClosedOneIsGone) {
  start(twoTiles());
  const auto open = [] {
    qsizetype count = 0;
    for (const QWidget* each : QApplication::topLevelWidgets())
      count += qobject_cast<const AppWindow*>(each) != nullptr;
    return count;
  };
  const std::function<void()> all[] = {
      [&] { commands().showSettings(); },  [&] { commands().showLibrary({}); },
      [&] { commands().continueSetup(); }, [&] { commands().showAbout(); },
      [&] { commands().showHelp(); },      [&] { commands().openEditor(store().widgets().last().id); }};
  for (const auto& show : all) {
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_Q}) {
      const qsizetype before = open();
      show();
      show();
      ASSERT_EQ(open(), before + 1);
      ASSERT_TRUE(comesTrue([] { return QApplication::activeWindow() != nullptr; }));
      press(key, Qt::ControlModifier);
      EXPECT_TRUE(comesTrue([&] { return open() == before; }));
      EXPECT_FALSE(delegate->dock().displays().isEmpty()) << "the dock stays";
    }
  }
}

TEST(WindowPlacesTest, AWindowIsSeenWholeAndHidesNoneOfItsLike) {
  const QRect bounds(1600, 30, 1000, 800);
  struct Case {
    const char* what;
    QSize size;
    QRect over;
    QList<QRect> taken;
    QPoint place;
  };
  for (const Case& each :
       {Case{"in the middle", {400, 200}, {1700, 130, 600, 400}, {}, {1800, 230}},
        Case{"at the edge", {400, 200}, {2500, 700, 600, 400}, {}, {2200, 630}},
        Case{"from elsewhere", {400, 200}, {-900, -900, 10, 10}, {}, {1600, 30}},
        Case{"larger than the room", {1400, 900}, bounds, {}, {1600, 30}},
        Case{"on its like", {400, 200}, {1700, 130, 600, 400}, {{1798, 233, 9, 9}}, {1828, 258}},
        Case{"on its like in the corner", {400, 200}, {2500, 700, 600, 400}, {{2200, 630, 9, 9}}, {1600, 30}}})
    EXPECT_EQ(WindowPlaces::centred(each.size, each.over, bounds, each.taken).topLeft(), each.place) << each.what;
}

TEST(WindowPlacesTest, AWindowStandsBesideTheDockUnlessThatLeavesTooLittle) {
  const QRect bounds(1600, 30, 1000, 800);
  const QRect above(QPoint(1600, 30), QPoint(2599, 688));
  const QRect below(QPoint(1600, 145), QPoint(2599, 829));
  struct Case {
    const char* what;
    QRect dock;
    QRect place;
  };
  for (const Case& each :
       {Case{"none", {}, bounds}, Case{"of another display", {100, 700, 600, 84}, bounds},
        Case{"at the bottom", {1800, 700, 600, 84}, above}, Case{"at the top", {1800, 50, 600, 84}, below},
        Case{"in the middle", {1800, 380, 600, 84}, bounds}})
    EXPECT_EQ(WindowPlaces::beside(each.dock, bounds), each.place) << each.what;
  // Where windows are put in the middle whatever is asked.
  EXPECT_EQ(WindowPlaces::evenly(above, bounds), QRect(QPoint(1600, 171), QPoint(2599, 688)));
  EXPECT_EQ(WindowPlaces::evenly(bounds, bounds), bounds);
  EXPECT_EQ(WindowPlaces::evenly(QRect(1600, 30, 1000, 600), bounds), QRect(1600, 30, 1000, 600)) << "too little";
}

TEST_F(WindowsTest, OneThatFillsTheDisplayKeepsWhatStandsInItBesideTheDock) {
  start(twoTiles());
  delegate->orders().reopen();
  ASSERT_TRUE(isInFront(u"Tarnwick Settings"_s));
  QWidget* window = QApplication::activeWindow();
  const auto below = [&] { return window->layout()->contentsMargins().bottom(); };
  const double dock = delegate->dock().frame(delegate->dock().displays().first()).top();
  EXPECT_EQ(below(), 0);
  window->showMaximized();
  EXPECT_TRUE(
      comesTrue([&] { return window->geometry().bottom() > dock && window->geometry().bottom() - below() < dock; }));
  window->showNormal();
  EXPECT_TRUE(comesTrue([&] { return below() == 0; }));
}

TEST_F(WindowsTest, AFormOpensOverItsWindowOrWhereItsLikeWasLeft) {
  start(twoTiles());
  const auto form = [&](int tile) {
    commands().openEditor(store().widgets()[tile].id);
    EXPECT_TRUE(isInFront(u"Edit “%1”"_s.arg(Catalog::find(store().widgets()[tile].kind).name)));
    return QApplication::activeWindow();
  };
  // A widget may learn its frame late.
  const auto placeOf = [](const QWidget* window) { return window->windowHandle()->framePosition(); };
  commands().showLibrary({});
  ASSERT_TRUE(isInFront(u"Add Widgets"_s));
  QWidget* library = QApplication::activeWindow();
  QWidget* first = form(0);
  EXPECT_TRUE(comesTrue(
      [&] { return (first->frameGeometry().center() - library->frameGeometry().center()).manhattanLength() < 8; }));
  // A window manager brings a window forward for a click, not for a program that had none.
  VirtualDisplay::current().click(library->mapToGlobal(QPoint(4, 4)));
  ASSERT_TRUE(isInFront(u"Add Widgets"_s));
  QWidget* second = form(1);
  EXPECT_TRUE(comesTrue([&] { return !second->frameGeometry().contains(first->pos()); })) << "a step aside";
  // Only a window that has its frame can be moved by it.
  ASSERT_TRUE(comesTrue([&] { return !second->windowHandle()->frameMargins().isNull(); }));
  second->windowHandle()->setFramePosition({100, 120});
  ASSERT_TRUE(comesTrue([&] { return placeOf(second) == QPoint(100, 120); }));
  press(Qt::Key_Escape);
  library->close();
  ASSERT_TRUE(comesTrue([] { return QApplication::activeWindow() && QApplication::activeWindow()->isVisible(); }));
  EXPECT_TRUE(first->isVisible()) << "a form outlives the window that it was asked from";
  second = form(1);
  EXPECT_TRUE(comesTrue([&] { return placeOf(second) == QPoint(100, 120); }));
}

TEST_F(WindowsTest, ADockStaysOutForAsLongAsAWindowAboutItIsOpen) {
  DockConfiguration config = twoTiles();
  config.layout = DockLayout::RevealBottom;
  start(config);
  const QString display = delegate->dock().displays().first();
  delegate->orders().perform({Order::Kind::Focus, 0});
  delegate->orders().reopen();
  ASSERT_TRUE(isInFront(u"Tarnwick Settings"_s));
  time.advance(5);
  EXPECT_TRUE(delegate->dock().isVisible(display));
  press(Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(comesTrue([&] { return !delegate->dock().isVisible(display); }));
}

TEST_F(WindowsTest, ThePanelOfTheStatusItemOpensAndClosesOutside) {
  start(twoTiles());
  const auto isOpen = [&] { return windows().statusPanel() && windows().statusPanel()->isShown(); };
  StatusItem& item = delegate->statusItem();
  VirtualDisplay& display = VirtualDisplay::current();
  display.moveTo({1500, 20});
  display.settle();
  Q_EMIT item.panelToggled();
  EXPECT_TRUE(isOpen());
  display.settle();
  display.click({300, 300});
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
  time.advance(1);
  Q_EMIT item.panelToggled();
  EXPECT_TRUE(isOpen());
  Q_EMIT item.panelDismissed();
  EXPECT_FALSE(isOpen());
}

/// The real program, seen through the accessibility bus only.
class ScreenReaderTest : public ::testing::Test {
 protected:
  ~ScreenReaderTest() override { Program::resetVariables(); }

  void start() {
    Persistence::save(twoTiles(), file());
    Program::setVariable(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    reader = std::make_unique<AtSpi>();
    program = std::make_unique<Program>(home.path());
    ASSERT_TRUE(program->shows(1));
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return (root = reader->program(program->pid())).has_value(); }));
  }
  QString file() const { return home.filePath(u"Tarnwick/config.json"_s); }
  QList<DockWidget> stored() const { return Persistence::read(file()).profiles[0].widgets; }

  /// Waits for something shown with a name, and with an action if one is asked for.
  std::optional<AtSpi::Node> shown(const QString& name, const QString& action = {}) {
    std::optional<AtSpi::Node> found;
    VirtualDisplay::waitUntil([&] {
      found = reader->find(*root, [&](const AtSpi::Node& node) {
        return reader->name(node) == name && reader->has(node, AtSpi::kShowing) &&
               (action.isEmpty() || reader->actions(node).contains(action));
      });
      return found.has_value();
    });
    return found;
  }
  /// All that is shown, for a test that misses something.
  std::string everything() {
    QStringList lines;
    for (const AtSpi::Node& node : reader->shown(*root))
      lines << reader->role(node) + u" “"_s + reader->name(node) + u"” "_s + reader->actions(node).join(u',');
    return lines.join(u'\n').toStdString();
  }
  void act(const QString& name, const QString& action = u"Press"_s) {
    const auto node = shown(name, action);
    ASSERT_TRUE(node) << qPrintable(name) << " is not among\n" << everything();
    EXPECT_TRUE(reader->act(*node, action)) << qPrintable(name);
  }
  void write(const QString& name, const QString& text) {
    std::optional<AtSpi::Node> field;
    VirtualDisplay::waitUntil([&] {
      field = reader->find(*root, [&](const AtSpi::Node& node) {
        return reader->name(node) == name && reader->has(node, AtSpi::kEditable) && reader->has(node, AtSpi::kShowing);
      });
      return field.has_value();
    });
    ASSERT_TRUE(field) << qPrintable(name) << " is not among\n" << everything();
    EXPECT_TRUE(reader->write(*field, text)) << qPrintable(name);
  }
  void expectNames(const QString& where) {
    for (const AtSpi::Node& node : reader->shown(*root)) {
      if (!reader->has(node, AtSpi::kFocusable) || !reader->name(node).isEmpty()) continue;
      ADD_FAILURE() << qPrintable(where) << ": a control without a name, a " << qPrintable(reader->role(node));
    }
  }

  QTemporaryDir home;
  std::unique_ptr<AtSpi> reader;
  std::unique_ptr<Program> program;
  std::optional<AtSpi::Node> root;
};

TEST_F(ScreenReaderTest, AClockIsAddedEditedMovedRemovedAndBroughtBackAndEveryControlHasAName) {
  ASSERT_NO_FATAL_FAILURE(start());
  const QStringList before = kinds(twoTiles());
  const QStringList after = before + QStringList{u"flipClock"_s};
  const auto become = [&](const QStringList& wanted) {
    return VirtualDisplay::waitUntil([&] { return kinds(Persistence::read(file())) == wanted; });
  };
  EXPECT_EQ(runToEnd(home.path(), {}).status, 0);  // Opened again, it shows its settings.
  ASSERT_TRUE(shown(u"Tarnwick Settings"_s));
  expectNames(u"Settings"_s);
  ASSERT_NO_FATAL_FAILURE(write(u"Search"_s, u"library"_s));
  ASSERT_NO_FATAL_FAILURE(act(u"Add Widgets…"_s));
  ASSERT_NO_FATAL_FAILURE(write(u"Search %1 widgets"_s.arg(Catalog::items().size()), u"Flip Clock"_s));
  expectNames(u"Library"_s);
  ASSERT_NO_FATAL_FAILURE(act(u"Add Flip Clock"_s));
  EXPECT_TRUE(become(after));
  ASSERT_NO_FATAL_FAILURE(act(u"Undo"_s));
  EXPECT_TRUE(become(before));

  ASSERT_NO_FATAL_FAILURE(act(u"Add Flip Clock"_s));
  ASSERT_NO_FATAL_FAILURE(act(u"Edit…"_s));
  ASSERT_NO_FATAL_FAILURE(write(u"Title"_s, u"Mine"_s));
  expectNames(u"Editor"_s);
  ASSERT_NO_FATAL_FAILURE(act(u"Save"_s));
  EXPECT_TRUE(become(after));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return stored().last().title == u"Mine"_s; }));

  // On the dock, where all that a menu offers is done without opening it.
  ASSERT_NO_FATAL_FAILURE(act(u"Mine"_s, u"Move Left"_s));
  const QStringList moved{before[0], after[2], before[1]};
  EXPECT_TRUE(become(moved));
  ASSERT_NO_FATAL_FAILURE(act(u"Mine"_s, u"Remove Widget"_s));
  EXPECT_TRUE(become(before));
  ASSERT_NO_FATAL_FAILURE(act(u"“Mine” was removed from the dock."_s));
  EXPECT_TRUE(become(moved));

  // An open menu is there with all its entries: that of a tile, and in its place that of the dock.
  ASSERT_NO_FATAL_FAILURE(act(u"Mine"_s, u"ShowMenu"_s));
  EXPECT_TRUE(shown(u"Edit Widget…"_s, u"Press"_s)) << everything();
  ASSERT_NO_FATAL_FAILURE(act(u"Dock"_s, u"ShowMenu"_s));
  ASSERT_NO_FATAL_FAILURE(act(u"Layout"_s, u"ShowMenu"_s));
  EXPECT_TRUE(shown(u"Floating"_s, u"Press"_s)) << everything();
  const auto quit = shown(u"Quit Tarnwick"_s, u"Press"_s);
  ASSERT_TRUE(quit) << everything();
  EXPECT_EQ(reader->role(*quit), u"menu item"_s);
  EXPECT_TRUE(reader->act(*quit, u"Press"_s));
  EXPECT_EQ(program->end(), 0);
}

}  // namespace
}  // namespace tarnwick::testing
