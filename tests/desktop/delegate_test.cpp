// The whole program in this process, with real adapters and a clock that the test sets.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTemporaryDir>

#include "app/Adapters.h"
#include "app/AppDelegate.h"
#include "app/HotKeyTable.h"
#include "config/Persistence.h"
#include "desktop/Program.h"
#include "support/ForeignWindow.h"
#include "support/TestScheduler.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using tarnwick::testing::VirtualDisplay;

class DelegateTest : public ::testing::Test {
 protected:
  QString file() const { return folder.filePath(u"Tarnwick/config.json"_s); }

  void start() {
    adapters = std::make_unique<Adapters>(time, LaunchEnvironment::ofProcess());
    StoreSetup store = adapters->storeSetup();
    store.storage = file();
    DelegateSetup setup = adapters->delegateSetup();
    setup.guards = false;
    delegate = std::make_unique<AppDelegate>(std::move(store), std::move(setup));
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
  EXPECT_EQ(dock(), QRectF((1600 - 797) / 2.0, 900 - 8 - 84, 797, 84));
  store().edit([](DockConfiguration& config) {
    config.position = u"top"_s;
    config.alignment = u"right"_s;
  });
  time.advance(0.03);
  EXPECT_EQ(dock().bottom(), 892);
  time.advance(0.02);
  EXPECT_EQ(dock(), QRectF(1600 - 797 - 8, 8, 797, 84));
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
    return delegate->dock().displays().size() == 1 && dock().width() == 797;
  }));
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
  const auto bubble = [&] { return display.topLevelAt(QPoint(800, static_cast<int>(dock().top()) - 30)); };
  const xcb_window_t nothing = bubble();
  store().setError(u"Settings could not be saved: The disk is full."_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return bubble() != nothing; }));
  store().clearError();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return bubble() == nothing; }));
}

TEST_F(DelegateTest, HandedOverSpaceFilesReachTheImport) {
  start();
  QStringList imported;
  delegate->importSpace = [&](const QString& path) { imported << path; };
  delegate->open({u"file:///tmp/a%20look.tarnwickspace"_s, u"file:///tmp/notes.txt"_s, u"https://example.org/"_s});
  EXPECT_EQ(imported, QStringList{u"/tmp/a look.tarnwickspace"_s});
}

}  // namespace
}  // namespace tarnwick
