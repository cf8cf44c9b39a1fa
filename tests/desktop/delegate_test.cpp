// The whole program in this process, with real adapters and a clock that the test sets.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>
#include <algorithm>

#include "app/Adapters.h"
#include "app/AppDelegate.h"
#include "app/AppKeys.h"
#include "app/CommandBarHost.h"
#include "app/DockPresenter.h"
#include "app/HotKeyTable.h"
#include "app/Orders.h"
#include "app/StatusMenu.h"
#include "config/Persistence.h"
#include "desktop/Program.h"
#include "support/ForeignWindow.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "views/commandbar/CommandBarPane.h"
#include "views/dock/LiveDock.h"
#include "views/dock/UndoBubble.h"
#include "views/settings/SettingsWindow.h"
#include "views/theme/DesktopLook.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using tarnwick::testing::ForeignWindow;
using tarnwick::testing::VirtualDisplay;

class DelegateTest : public ::testing::Test {
 protected:
  QString file() const { return folder.filePath(u"Tarnwick/config.json"_s); }

  void start(const std::function<void(DelegateSetup&)>& setUp = {}) {
    adapters = std::make_unique<Adapters>(time, LaunchEnvironment::ofProcess(), QFileInfo(file()).path());
    StoreSetup store = adapters->storeSetup();
    store.storage = file();
    DelegateSetup setup = adapters->delegateSetup();
    setup.guards = false;
    if (setUp) setUp(setup);
    delegate = std::make_unique<AppDelegate>(std::move(store), adapters->services(), std::move(setup));
    delegate->didFinishLaunching();
    VirtualDisplay::current().settle();
  }
  ~DelegateTest() override {
    delegate.reset();
    adapters.reset();
  }

  AppStore& store() { return delegate->store(); }
  QRectF dock() {
    const QStringList displays = delegate->dock().displays();
    return displays.isEmpty() ? QRectF() : delegate->dock().frame(displays.first());
  }

  QTemporaryDir folder;
  test::TestScheduler time;
  std::unique_ptr<Adapters> adapters;
  std::unique_ptr<AppDelegate> delegate;
};

TEST_F(DelegateTest, ALayoutChangeMovesTheDockAndIsOnTheDiskInAQuarterOfASecond) {
  start();
  EXPECT_EQ(dock(), QRectF((1600 - 809) / 2.0, 900 - 8 - 84, 809, 84));
  store().edit([](DockConfiguration& config) {
    config.position = u"top"_s;
    config.alignment = u"right"_s;
  });
  time.advance(0.03);
  EXPECT_EQ(dock().bottom(), 892);
  time.advance(0.02);
  // The gap to the side is that of the glass, which ends 23 points within its slot.
  EXPECT_EQ(dock(), QRectF(1600 - 809 - 8 + 23, 8, 809, 84));
  EXPECT_FALSE(QFile::exists(file()));
  time.advance(0.2);
  EXPECT_EQ(Persistence::read(file()).alignment, u"right"_s);
  struct stat about = {};
  ASSERT_EQ(::stat(QFile::encodeName(file()).constData(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777u, 0600u);

  // Content that merely counts waits its ten seconds.
  const QUuid clock = store().widgets()[1].id;
  for (int second = 0; second < 8; ++second) {
    store().set(clock, u"elapsed"_s, QString::number(second));
    time.advance(1);
  }
  EXPECT_FALSE(Persistence::read(file()).profiles[0].widgets[1].options.contains(u"elapsed"_s));
  time.advance(2);
  EXPECT_EQ(Persistence::read(file()).profiles[0].widgets[1].options.value(u"elapsed"_s), u"7"_s);
}

TEST_F(DelegateTest, TheLoginEntryIsTheUsersUntilTheSwitchIsMoved) {
  const QString entry = folder.filePath(u"autostart.desktop"_s);
  const QByteArray users = "[Desktop Entry]\nType=Application\nName=My dock\nExec=tarnwick\nX-Mine=1\n";
  const auto text = [&] {
    QFile in(entry);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("none");
  };
  const auto write = [&](const QByteArray& bytes) {
    QFile out(entry);
    EXPECT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes);
  };
  write(users);
  // Settings that were lost say that it is not wanted.
  start([&](DelegateSetup& setup) { setup.autostartFile = entry; });
  time.advance(1);
  EXPECT_EQ(text(), users);
  EXPECT_TRUE(store().config().launchAtLogin);

  // A file of settings from another computer, and a change of the layout, leave it alone.
  DockConfiguration elsewhere = store().config();
  elsewhere.launchAtLogin = false;
  elsewhere.scale = 1.5;
  const QString file = folder.filePath(u"elsewhere.json"_s);
  Persistence::save(elsewhere, file);
  bool isImported = false;
  delegate->presenter().edits().importConfiguration(file, [&](bool taken) { isImported = taken; });
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return isImported; }));
  time.advance(1);
  EXPECT_EQ(store().config().scale, 1.5);
  EXPECT_TRUE(store().config().launchAtLogin);
  EXPECT_EQ(text(), users);

  const auto flip = [&](bool on) {
    delegate->presenter().edits().change([on](DockConfiguration& config) { config.launchAtLogin = on; });
  };
  flip(false);
  EXPECT_EQ(text(), "none");
  delegate->commands().undo();
  EXPECT_TRUE(text().contains("Exec="));
}

TEST_F(DelegateTest, FollowsTheDisplays) {
  VirtualDisplay& display = VirtualDisplay::current();
  start();
  store().edit([](DockConfiguration& config) { config.display = u"all"_s; });
  time.advance(0.05);
  EXPECT_EQ(delegate->dock().displays().size(), 1);
  display.setMonitor(u"L"_s, QRect(0, 0, 1000, 900), u"screen"_s);
  display.setMonitor(u"R"_s, QRect(1000, 0, 600, 900), u"none"_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    time.advance(0.05);
    return delegate->dock().displays().size() == 2;
  }));
  for (const QString& id : delegate->dock().displays()) {
    const QRectF frame = delegate->dock().frame(id);
    EXPECT_TRUE(QRectF(0, 0, 1000, 900).contains(frame) || QRectF(1000, 0, 600, 900).contains(frame));
  }
  display.deleteMonitor(u"R"_s);
  display.deleteMonitor(u"L"_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    time.advance(0.05);
    return delegate->dock().displays().size() == 1 && dock().width() == 809;
  }));
}

TEST_F(DelegateTest, WhatIsDoneOnADockIsMeantForItsDisplay) {
  start();
  const std::unique_ptr<DockContent> content = delegate->presenter().makeContent(u"L"_s);
  DockView& view = static_cast<LiveDock&>(*content).view();
  const std::pair<const char*, std::function<void()>> userActions[] = {
      {"a click", [&] { Q_EMIT view.tileActivated({}); }},
      {"the menu of a tile", [&] { Q_EMIT view.contextMenuRequested(store().widgets()[1].id, {}); }},
      {"the menu of the dock", [&] { Q_EMIT view.contextMenuRequested({}, {}); }},
      {"the menu of an application", [&] { Q_EMIT view.applicationMenuRequested(0, {}); }},
      {"an empty dock", [&] { Q_EMIT view.addWidgetsRequested(); }},
      {"a move", [&] { Q_EMIT view.reorderRequested(0, 0); }},
      {"files", [&] { Q_EMIT view.filesDropped({}); }},
      {"a widget's text", [&] { Q_EMIT view.widgetTextDropped({}, 0); }},
      {"a click on an application", [&] { Q_EMIT view.applicationActivated(0); }},
      {"a new window", [&] { Q_EMIT view.newWindowRequested({}, 0); }},
      {"a part of a tile", [&] { Q_EMIT view.tilePartActivated(store().widgets()[1].id, 0); }},
      {"a profile's tab", [&] { Q_EMIT view.tabActivated(0); }},
  };
  for (const auto& [name, act] : userActions) {
    store().setActiveDisplay(u"R"_s);
    act();
    EXPECT_EQ(store().activeDisplay(), u"L"_s) << name;
  }
}

TEST_F(DelegateTest, ATakenKeyIsSaidAndTheOthersWork) {
  VirtualDisplay& display = VirtualDisplay::current();
  // Another program takes the key of the dock: Ctrl+Alt+Super+D.
  constexpr quint16 kAll = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
  constexpr quint8 kKeyD = 40;
  constexpr quint8 kKey0 = 19;
  xcb_grab_key(display.connection(), 1, display.root(), kAll, kKeyD, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  xcb_flush(display.connection());
  display.settle();
  start();
  EXPECT_EQ(store().error(),
            u"A Tarnwick shortcut is already used by another app. Choose a different shortcut in Settings."_s);

  store().newProfile(u"Work"_s, false);
  const QUuid first = store().config().profiles[0].id;
  ASSERT_NE(store().config().activeProfileID, first);
  constexpr quint8 kControl = 37;
  constexpr quint8 kAlt = 64;
  constexpr quint8 kSuper = 133;
  display.tap(kKey0, {kControl, kAlt, kSuper});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return store().config().activeProfileID == first; }));
  // A key without a profile does nothing.
  constexpr quint8 kKey5 = 14;
  display.tap(kKey5, {kControl, kAlt, kSuper});
  display.settle();
  EXPECT_EQ(store().config().activeProfileID, first);
  xcb_ungrab_key(display.connection(), kKeyD, display.root(), kAll);
  xcb_flush(display.connection());
}

TEST_F(DelegateTest, AMessageStandsAboveTheDockUntilItIsDismissed) {
  VirtualDisplay& display = VirtualDisplay::current();
  start();
  const auto takesClicks = [&](int y) { return display.topLevelAt(QPoint(800, y)) != XCB_WINDOW_NONE; };
  const auto bubble = [&] { return takesClicks(static_cast<int>(dock().top()) - 30); };
  // Until the window manager knows what the dock's window lets through, all of it takes clicks.
  ASSERT_TRUE(
      VirtualDisplay::waitUntil([&] { return takesClicks(static_cast<int>(dock().center().y())) && !bubble(); }));
  store().setError(u"Settings could not be saved: The disk is full."_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil(bubble));
  store().clearError();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !bubble(); }));

  // One that goes by itself stays while it is read.
  const auto isPointedAt = [] {
    for (QWidget* each : QApplication::allWidgets())
      if (qobject_cast<MessageBubble*>(each) && each->isVisible()) return each->underMouse();
    return false;
  };
  Q_EMIT adapters->services().opener.failed(u"No installed app opens “x”."_s);
  ASSERT_TRUE(VirtualDisplay::waitUntil(bubble));
  display.moveTo(QPoint(800, static_cast<int>(dock().top()) - 30));
  ASSERT_TRUE(VirtualDisplay::waitUntil(isPointedAt));
  time.advance(60);
  EXPECT_FALSE(store().error().isEmpty());
  display.moveTo(QPoint(800, 300));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return !isPointedAt(); }));
  time.advance(UndoBubble::kLife - 0.1);
  EXPECT_FALSE(store().error().isEmpty());
  time.advance(0.2);
  EXPECT_TRUE(store().error().isEmpty());
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !bubble(); }));

  // A panel that opens in its place has it beside itself.
  store().setError(u"Settings could not be saved: The disk is full."_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil(bubble));
  const xcb_window_t message = display.topLevelAt(QPoint(800, static_cast<int>(dock().top()) - 30));
  const QString id = delegate->dock().displays().first();
  Q_EMIT static_cast<LiveDock*>(delegate->dock().content(id))->view().tileActivated(store().widgets()[3].id);
  ASSERT_TRUE(delegate->dock().hasActivePanel(id));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    const QRect place = display.frame(message);
    return !place.contains(800, place.center().y()) && display.topLevelAt(place.center()) == message;
  }));
  delegate->presenter().closePanel();
  EXPECT_TRUE(VirtualDisplay::waitUntil(bubble));
  store().clearError();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !bubble(); }));

  // It goes where the dock goes.
  store().setError(u"Settings could not be saved: The disk is full."_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil(bubble));
  store().edit([](DockConfiguration& config) { config.position = u"top"_s; });
  time.advance(0.2);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return takesClicks(static_cast<int>(dock().bottom()) + 30); }));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !takesClicks(770); }));

  // A full-screen window that covers the display has it to itself.
  ForeignWindow film(display, QRect(100, 300, 300, 200));
  ASSERT_TRUE(film.show());
  film.addState("_NET_WM_STATE_FULLSCREEN");
  const auto below = [&] {
    time.advance(0.1);
    return display.topLevelAt({800, 122}) == display.topLevelAt({800, 600});
  };
  EXPECT_TRUE(VirtualDisplay::waitUntil(below));
}

TEST_F(DelegateTest, TheCommandBarsKeyGivesWayQuietlyUntilNoneIsLeft) {
  VirtualDisplay& display = VirtualDisplay::current();
  constexpr quint8 kSpace = 65;
  constexpr quint8 kControl = 37;
  constexpr quint8 kAlt = 64;
  constexpr quint8 kSuper = 133;
  struct Step {
    int takenNow;
    QString key;
    QList<quint8> held;
  };
  const Step steps[] = {
      {0, u"Alt+Space"_s, {kAlt}},
      {XCB_MOD_MASK_1, u"Super+Space"_s, {kSuper}},
      {XCB_MOD_MASK_4, u"Ctrl+Alt+Space"_s, {kControl, kAlt}},
      {XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, {}, {}},
  };
  DockConfiguration config;
  config.onboardingComplete = true;  // No window takes the keyboard.
  Persistence::save(config, file());
  start();
  test::RecordingCommands commands;
  for (const Step& step : steps) {
    if (step.takenNow != 0) {
      xcb_grab_key(display.connection(), 1, display.root(), static_cast<quint16>(step.takenNow), kSpace,
                   XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
      xcb_flush(display.connection());
      display.settle();
    }
    store().clearError();
    AppKeys keys(store(), adapters->services().hotKeys, commands);
    QSignalSpy pressed(&keys, &AppKeys::pressed);
    keys.follow();
    EXPECT_EQ(keys.commandBarKey(), step.key);
    EXPECT_EQ(store().error().isEmpty(), !step.key.isEmpty());
    if (!step.key.isEmpty()) {
      display.tap(kSpace, step.held);
      EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return pressed.count() == 1; })) << qPrintable(step.key);
      EXPECT_EQ(pressed.value(0).value(0).toUInt(), HotKeyTable::kCommandBar);
    }
    keys.release();
    display.settle();  // What it held is free.
  }
  xcb_ungrab_key(display.connection(), kSpace, display.root(), XCB_MOD_MASK_ANY);
  xcb_flush(display.connection());
}

TEST_F(DelegateTest, OpenedAgainAStaleCopyStartsItsNewBuildAsItWasStartedItself) {
  const QString build = folder.filePath(u"tarnwick"_s);
  const QString outputFile = folder.filePath(u"environment"_s);
  QFile script(build);
  ASSERT_TRUE(script.open(QIODevice::WriteOnly));
  script.write(u"#!/bin/sh\nenv > '%1.new' && mv '%1.new' '%1'\n"_s.arg(outputFile).toUtf8());
  script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  script.close();
  const auto settings = [] {
    const auto windows = QApplication::topLevelWidgets();
    return std::ranges::count_if(windows,
                                 [](const QWidget* each) { return qobject_cast<const SettingsWindow*>(each); });
  };
  start([&](DelegateSetup& setup) { setup.executable = build; });
  qputenv("TARNWICK_SET_FOR_THE_TOOLKIT", "1");
  delegate->orders().reopen();
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return QFile::exists(outputFile); }));
  qunsetenv("TARNWICK_SET_FOR_THE_TOOLKIT");
  QFile environment(outputFile);
  ASSERT_TRUE(environment.open(QIODevice::ReadOnly));
  const QByteArray variables = environment.readAll();
  EXPECT_TRUE(variables.contains("DISPLAY="));
  EXPECT_FALSE(variables.contains("TARNWICK_SET_FOR_THE_TOOLKIT"));
  EXPECT_EQ(settings(), 0);
  // Where there is nothing to start the user gets what was asked for.
  ASSERT_TRUE(QFile::remove(build));
  delegate->orders().reopen();
  EXPECT_EQ(settings(), 1);
}

TEST_F(DelegateTest, AWindowThatTheDesktopDestroyedOpensAnew) {
  start();
  const auto shown = [] {
    for (QWidget* each : QApplication::topLevelWidgets())
      if (auto* window = qobject_cast<SettingsWindow*>(each); window && window->isVisible()) return window;
    return static_cast<SettingsWindow*>(nullptr);
  };
  delegate->commands().showSettings();
  ASSERT_TRUE(shown());
  VirtualDisplay& display = VirtualDisplay::current();
  display.settle();
  xcb_destroy_window(display.connection(), static_cast<xcb_window_t>(shown()->winId()));
  xcb_flush(display.connection());
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !shown(); }));
  EXPECT_FALSE(delegate->dock().hasOpenWindow()) << "no dock stays out for it";
  delegate->commands().showSettings();
  EXPECT_TRUE(shown());
}

TEST_F(DelegateTest, AMenuOffersWhatThereIs) {
  test::RecordingCommands commands;
  commands.missing = {Commands::Optional::CommandBar};
  const std::unique_ptr<QMenuBar> bar = makeApplicationMenu(commands);
  QMenu& program = *bar->actions().first()->menu();
  const QList<QAction*> entries = program.actions();
  const auto named = [&](const QString& text) { return *std::ranges::find(entries, text, &QAction::text); };
  EXPECT_FALSE(named(u"Command Bar"_s)->isEnabled());
  commands.missing.clear();
  Q_EMIT program.aboutToShow();
  EXPECT_TRUE(named(u"Command Bar"_s)->isEnabled());
  for (const QString& entry : {u"Command Bar"_s, u"Add Widgets…"_s, u"Quit Tarnwick"_s}) named(entry)->trigger();
  EXPECT_EQ(commands.asked, (QStringList{u"command bar"_s, u"library "_s, u"quit"_s}));

  // The end waits until the menu has done with the choice.
  start();
  delegate->commands().quit();
  EXPECT_FALSE(delegate->dock().displays().isEmpty());
}

TEST_F(DelegateTest, WhatTheBusBringsIsChecked) {
  start();
  store().newProfile(u"Work"_s, false);
  const QUuid work = store().profile().id;
  for (const QVariantList& parameter : {QVariantList{}, QVariantList{u"one"_s}, QVariantList{-1}, QVariantList{7}}) {
    Q_EMIT adapters->session().actionRequested(u"profile"_s, parameter);
    EXPECT_EQ(store().profile().id, work);
  }
  Q_EMIT adapters->session().actionRequested(u"profile"_s, {0});
  EXPECT_NE(store().profile().id, work);
}

TEST_F(DelegateTest, WhoseSettingsWereLostIsNotGreetedAsNew) {
  const auto greets = [] {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
      return window->isVisible() && window->inherits("tarnwick::OnboardingWindow");
    });
  };
  start();
  EXPECT_TRUE(greets());
  delegate.reset();
  adapters.reset();
  ASSERT_TRUE(QDir().mkpath(QFileInfo(file()).path()));
  QFile damaged(file());
  ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
  damaged.write("{ this is not");
  damaged.close();
  start();
  EXPECT_FALSE(greets());
  EXPECT_FALSE(store().error().isEmpty());
}

TEST_F(DelegateTest, HighContrastComesAndGoesAndANewUserHasTheDesktopsAppearance) {
  start();
  EXPECT_EQ(store().config().appAppearance, u"auto"_s);
  const auto text = [] { return QApplication::palette().color(QPalette::WindowText); };
  const QColor usual = text();
  const auto chooseContrast = [this](const QString& word) {
    store().edit([&word](DockConfiguration& config) {
      DeskOptions desk = config.desk();
      desk.contrast = word;
      config.setDesk(desk);
    });
    VirtualDisplay::current().settle();
  };
  chooseContrast(u"on"_s);
  EXPECT_TRUE(DesktopLook::now().highContrast);
  EXPECT_NE(text(), usual);
  EXPECT_TRUE(text() == QColor(Qt::black) || text() == QColor(Qt::white));
  chooseContrast(u"off"_s);
  EXPECT_FALSE(DesktopLook::now().highContrast);
  EXPECT_EQ(text(), usual);
  // A word that is not known counts as the desktop's, which wants nothing here.
  chooseContrast(u"later"_s);
  EXPECT_FALSE(DesktopLook::now().highContrast);
}

TEST_F(DelegateTest, TheCommandBarOpensAThirdOfTheWayDownAndTakesTheKeyboard) {
  VirtualDisplay& display = VirtualDisplay::current();
  start();
  Q_EMIT adapters->session().actionRequested(u"command-bar"_s, {});
  CommandBarHost& bar = delegate->commandBar();
  ASSERT_TRUE(bar.isShown());
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return bar.pane() && bar.pane()->isActiveWindow(); }));
  const QRect glass = bar.pane()->window()->geometry().marginsRemoved(bar.pane()->margins());
  EXPECT_EQ(glass, QRect((1600 - 640) / 2, 300, 640, 58));

  display.tap(11);  // The key 2.
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return bar.model()->query() == u"2"_s; }));
  bar.model()->setQuery(u"2+2"_s);
  ASSERT_FALSE(bar.model()->results().isEmpty());
  EXPECT_EQ(bar.model()->results().first().title, u"4"_s);
  constexpr quint8 kReturn = 36;
  display.tap(kReturn);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !bar.isShown(); }));
  EXPECT_EQ(bar.model()->query(), QString());

  constexpr quint8 kEscape = 9;
  bar.show();
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return bar.pane() && bar.pane()->isActiveWindow(); }));
  display.tap(kEscape);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !bar.isShown(); }));
  bar.toggle();
  EXPECT_TRUE(bar.isShown());
  bar.toggle();
  EXPECT_FALSE(bar.isShown());
}

TEST_F(DelegateTest, WhatThisVersionLacksIsSaid) {
  start();
  delegate->orders().open({u"https://example.org/"_s});
  EXPECT_EQ(
      store().error(),
      u"“https://example.org/” was not opened. Tarnwick only opens the desktop entries of apps (.desktop files)."_s);
  delegate->orders().open({u"file:///tmp/notes.txt"_s});
  EXPECT_EQ(store().error(),
            u"“notes.txt” was not opened. Tarnwick only opens the desktop entries of apps (.desktop files)."_s);
  delegate->orders().open({u"file:///tmp/gone.desktop"_s});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return store().error() == u"“gone.desktop” no longer exists."_s; }))
      << qPrintable(store().error());
  delegate->orders().open({u"file:///tmp/a%20look.tarnwickspace"_s});
  EXPECT_EQ(store().error(), u"“a look.tarnwickspace” was not opened. Spaces come with a later version of Tarnwick."_s);
}

}  // namespace
}  // namespace tarnwick
