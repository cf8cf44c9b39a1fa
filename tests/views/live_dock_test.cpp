#include <gtest/gtest.h>

#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "views/dock/LiveDock.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct StillToggles final : Toggles {
  ToggleState state(Toggle) const override { return {}; }
  void set(Toggle, bool) override {}
  void start() override {}
};

struct QuietHost final : DockHost {
  void activateTile(const QString&, const QUuid&) override {}
  void openNewWindow(const QUuid&, quint64) override {}
  void cycleWindows(quint64, int) override {}
  void openTileMenu(const QString&, const QUuid&, const QRect&) override {}
  void openApplicationMenu(const QString&, quint64, const QRect&) override {}
  void openWindowMenu(const QString&, quint64, const QRect&) override {}
  void openDockMenu(const QString&, const QRect&) override {}
  QList<ItemCommand> commandsOf(const QString&, const QUuid&, quint64, const QRect&) override { return {}; }
  void dropFiles(const DockFileDrop&) override {}
  void dropWidget(const QString&, const QString&, qsizetype) override {}
  void moveTile(const QString&, qsizetype, qsizetype) override {}
  void removeTile(const QString&, const QUuid&) override {}
  void applicationsPlaced(const QString&) override {}
  bool holdsProfile() const override { return false; }
  void moveDock(const QString&, const QPoint&) override {}
  void finishMove(const QString&) override {}
  void dismissPanel() override {}
  void leaveKeyboard() override {}
};

struct CountedServices final : TileServices {
  std::optional<ApplicationFacts> applicationAt(const QString&) const override { return application; }
  /// Asked once whenever everything that tiles may show is gathered.
  std::shared_ptr<const CalendarDigest> calendar() const override {
    ++gathered;
    return std::make_shared<const CalendarDigest>();
  }
  QList<TileSource*> sources() const override { return others; }

  std::optional<ApplicationFacts> application;
  QList<TileSource*> others;
  mutable int gathered = 0;
};

struct BusyProcessor final : SystemCounters {
  std::optional<ProcessorTicks> processorTicks() override {
    ticks.user += 30;
    ticks.idle += 70;
    return ticks;
  }
  std::optional<MemoryReading> memory() override { return std::nullopt; }
  std::optional<NetworkReading> network() override { return std::nullopt; }
  std::optional<DiskReading> disk() override { return std::nullopt; }
  std::optional<double> batteryCharge() override { return std::nullopt; }
  ProcessorTicks ticks;
};

class LiveDockTest : public testing::Test {
 protected:
  LiveDockTest() : store(setup()) {
    store.edit([](DockConfiguration& config) { config.profiles[0].widgets.clear(); });
  }

  StoreSetup setup() {
    StoreSetup setup;
    setup.diagnostic = true;
    setup.platformReads = false;
    setup.scheduler = &time;
    setup.counters = std::make_unique<BusyProcessor>();
    return setup;
  }
  void show(const QStringList& kinds) {
    for (const QString& kind : kinds) store.add(kind);
    dock = std::make_unique<LiveDock>(store, toggles, commands, host, u"L"_s, DockView::IconProvider(), services);
    dock->resize(900, 140);
    dock->configure({});
    dock->show();
    services.gathered = 0;
  }
  void beat(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      time.advance(1);
      store.heartbeat();
    }
  }
  QString shown(qsizetype item) { return dock->view().itemText(item).value; }
  QImage picture(qsizetype item) { return dock->view().grab(dock->view().itemRect(item).toAlignedRect()).toImage(); }

  test::TestScheduler time{QDateTime(QDate(2026, 11, 24), QTime(10, 24, 0), QTimeZone::utc())};
  StillToggles toggles;
  test::RecordingCommands commands;
  QuietHost host;
  CountedServices services;
  AppStore store;
  std::unique_ptr<LiveDock> dock;
};

TEST_F(LiveDockTest, AnEmptyOneOffersTheLibraryForItsOwnDisplay) {
  show({});
  Q_EMIT dock->view().addWidgetsRequested();
  EXPECT_EQ(commands.asked, QStringList{u"library L"_s});
}

TEST_F(LiveDockTest, TilesAreMadeAnewAsOftenAsTheyTick) {
  show({u"timeSeconds"_s, u"digitalClock"_s, u"cpu"_s});
  const QImage seconds = picture(0);
  const QString minutes = shown(1);
  beat(1);
  EXPECT_NE(picture(0), seconds);
  EXPECT_EQ(services.gathered, 0) << "a second changes nothing but the time";
  const QString before = shown(2);
  beat(3);
  EXPECT_NE(shown(2), before) << "a reading comes with its sample, not with the clock";
  EXPECT_EQ(shown(1), minutes);
  services.gathered = 0;
  beat(56);
  EXPECT_NE(shown(1), minutes);
  EXPECT_EQ(services.gathered, 1) << "for the minute; a sample brings its own part alone";

  // The wall clock may go back within a minute's beat.
  time.jump(-3600);
  beat(1);
  EXPECT_EQ(shown(1), QString(minutes).replace(u"10:24"_s, u"09:25"_s));
}

TEST_F(LiveDockTest, AnEntryThatIsOverriddenStandsForTheApplicationThatRuns) {
  RunningApp app;
  app.identity = 7;
  app.path = u"/mine/editor.desktop"_s;
  app.windows = {1};
  const QString held = u"/all/editor.desktop"_s;
  store.edit([&](DockConfiguration& config) {
    config.profiles[0].widgets = {{QUuid::createUuid(), u"appLauncher"_s, {}, {{u"path"_s, held}}}};
  });
  services.application = ApplicationFacts{u"Editor"_s, {}, 7, {}};
  show({});
  EXPECT_FALSE(dock->sources().applications.value(held).marks.running);
  store.apply({app});
  EXPECT_TRUE(dock->sources().applications.value(held).marks.running);
}

TEST_F(LiveDockTest, WithoutSecondsItWorksOnceAMinute) {
  show({u"digitalClock"_s, u"trash"_s, u"dockSeparator"_s});
  beat(59);
  EXPECT_EQ(services.gathered, 0);
  beat(1);
  EXPECT_EQ(services.gathered, 1);
}

TEST_F(LiveDockTest, NothingThatTicksMakesNoWork) {
  show({u"trash"_s, u"timer"_s});
  beat(130);
  EXPECT_EQ(services.gathered, 0);
  store.toggleTimer(store.widgets()[1].id);
  const QImage running = picture(1);
  beat(1);
  EXPECT_NE(picture(1), running);
}

TEST_F(LiveDockTest, AHiddenDockIsFrozenAndCatchesUpAtOnce) {
  show({u"timeSeconds"_s, u"cpu"_s});
  dock->hide();
  const QImage frozen = picture(0);
  beat(90);
  EXPECT_EQ(services.gathered, 0);
  EXPECT_EQ(picture(0), frozen);
  dock->show();
  EXPECT_EQ(services.gathered, 1);
  EXPECT_NE(picture(0), frozen);
}

/// Counts, for any widget that is asked for.
class CountingSource final : public TileSource {
 public:
  void fill(TileSources& sources, const QList<DockWidget>&) override { sources.shelfItems = ++count; }
  int count = 0;
};

TEST_F(LiveDockTest, AValueOfOneWidgetReachesItsTileAlone) {
  CountingSource source;
  services.others = {&source};
  show({u"fileShelf"_s, u"fileShelf"_s});
  const QStringList before{shown(0), shown(1)};
  Q_EMIT source.widgetChanged(store.widgets()[1].id);
  EXPECT_EQ(shown(0), before[0]);
  EXPECT_NE(shown(1), before[1]);
  EXPECT_EQ(services.gathered, 0) << "no other source was asked";
  Q_EMIT source.changed({Family::Files});
  EXPECT_NE(shown(0), before[0]);
  const int asked = source.count;
  Q_EMIT source.widgetChanged(QUuid::createUuid());
  dock->hide();
  Q_EMIT source.changed({Family::Files});
  EXPECT_EQ(source.count, asked) << "neither for a widget of another dock nor while nobody looks";
  dock.reset();
}

}  // namespace
}  // namespace tarnwick
