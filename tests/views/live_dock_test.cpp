#include <gtest/gtest.h>

#include <utility>

#include "store/NoDesktop.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "views/dock/LiveDock.h"
#include "views/dock/StoreSources.h"

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
  void actOn(const QString&) override {}
  void openNewWindow(const QString&, const QUuid&, quint64) override {}
  void cycleWindows(const QString&, quint64, int) override {}
  void openTileMenu(const QString&, const QUuid&, const QRect&) override {}
  void openApplicationMenu(const QString&, quint64, const QRect&) override {}
  void openWindowMenu(const QString&, quint64, const QRect&) override {}
  void openDockMenu(const QString&, const QRect&) override {}
  QList<ItemCommand> commandsOf(const QString&, const QUuid&, quint64, const QRect&) override { return {}; }
  void dropFiles(const DockFileDrop&) override {}
  void dropWidget(const QString&, const QString&, qsizetype) override {}
  void moveTile(const QString&, qsizetype, qsizetype) override {}
  bool isOverOtherDock(const QString&, QPointF) const override { return false; }
  void moveTileAcross(const QString&, const QUuid&, QPointF) override {}
  void removeTile(const QString&, const QUuid&) override {}
  void applicationsPlaced(const QString&) override {}
  bool holdsProfile() const override { return false; }
  void moveDock(const QString&, const QPoint&) override {}
  void finishMove(const QString&) override {}
  void dismissPanel() override {}
  void leaveKeyboard() override {}
};

struct CountedServices final : TileServices {
  std::optional<ApplicationFacts> applicationAt(const QString&) const override {
    ++looked;
    return application;
  }
  std::optional<qint64> trashItems() const override {
    ++counted;
    return trashed;
  }
  /// Asked once whenever everything that tiles may show is gathered.
  std::shared_ptr<const CalendarDigest> calendar() const override {
    ++gathered;
    return std::make_shared<const CalendarDigest>();
  }
  void addReadings(ReadingFacts&, const QList<DockWidget>& widgets) const override {
    for (const DockWidget& widget : widgets) read << widget.kind;
  }
  QList<TileSource*> sources() const override { return others; }

  std::optional<ApplicationFacts> application;
  QList<TileSource*> others;
  qint64 trashed = 0;
  mutable int counted = 0;  ///< How often the trash was.
  mutable int gathered = 0;
  mutable int looked = 0;
  mutable QStringList read;
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

class LiveDockTest : public ::testing::Test {
 protected:
  LiveDockTest() : store(setup()) {
    store.edit([](DockConfiguration& config) { config.profiles[0].widgets.clear(); });
  }

  StoreSetup setup() {
    StoreSetup setup = desktop.diagnosticSetup();
    setup.counters = std::make_unique<BusyProcessor>();
    return setup;
  }
  void show(const QStringList& kinds) {
    for (const QString& kind : kinds) store.add(kind);
    dock = std::make_unique<LiveDock>(store, toggles, commands, host, u"L"_s, DockView::IconProvider(), services);
    dock->resize(900, 140);
    dock->configure({});
    dock->show();
    services.gathered = services.looked = 0;
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
  NoDesktop desktop{time};
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

TEST_F(LiveDockTest, AnAppIsInFrontOnTheDockOfItsDisplayAlone) {
  const QString held = u"/all/editor.desktop"_s;
  store.edit([&](DockConfiguration& config) {
    DeskOptions desk = config.desk();
    desk.displayWindows = true;
    config.setDesk(desk);
    config.profiles[0].widgets = {{QUuid::createUuid(), u"appLauncher"_s, {}, {{u"path"_s, held}}}};
  });
  services.application = ApplicationFacts{u"Editor"_s, {}, 7, {}};
  show({});
  RunningApp pinned;
  pinned.identity = 7;
  pinned.path = held;
  pinned.windows = {1, 2};
  pinned.active = true;
  RunningApp other = pinned;
  other.identity = 8;
  other.path = u"/all/player.desktop"_s;
  const struct {
    QString front, behind;
    bool marked;
  } rows[] = {{u"L"_s, u"R"_s, true}, {u"R"_s, u"L"_s, false}, {u"L"_s, u"L"_s, true}};
  for (const auto& row : rows) {
    for (RunningApp* app : {&pinned, &other}) app->places = {{1, {false, {row.front}}}, {2, {false, {row.behind}}}};
    store.apply({pinned, other});
    const AppMarks& marks = dock->sources().applications.value(held).marks;
    EXPECT_TRUE(marks.running);
    EXPECT_EQ(marks.front, row.marked) << row.front.toStdString();
    const QList<RunningApp> unpinned = store.unpinnedRunningApps(u"L"_s);
    ASSERT_EQ(unpinned.size(), 1);
    EXPECT_EQ(unpinned[0].active, row.marked) << row.front.toStdString();
  }
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

/// The weather of each widget that was asked about.
class WeatherSource final : public TileSource {
 public:
  void fill(TileSources& sources, const QList<DockWidget>& widgets) override {
    ++asked;
    for (const DockWidget& widget : widgets) {
      RemoteReading reading;
      reading.value.value = answers.value(widget.id);
      if (answers.contains(widget.id)) sources.weather.set(widget.id, reading);
    }
  }
  QHash<QUuid, QString> answers;
  int asked = 0;
};

TEST_F(LiveDockTest, AValueOfOneWidgetReachesItsTileAlone) {
  WeatherSource source;
  services.others = {&source};
  show({u"weatherCurrent"_s, u"weatherCurrent"_s, u"fileShelf"_s});
  store.edit([](DockConfiguration& config) {
    for (DockWidget& widget : config.profiles[0].widgets) widget.options.insert(u"city"_s, u"Kendal"_s);
  });
  const QStringList before{shown(0), shown(1)};
  source.answers.insert(store.widgets()[1].id, u"6°"_s);
  Q_EMIT source.widgetChanged(store.widgets()[1].id);
  EXPECT_EQ(shown(0), before[0]);
  EXPECT_EQ(shown(1), u"Kendal, 6°"_s);
  EXPECT_EQ(services.gathered, 0) << "no other source was asked";
  source.answers.insert(store.widgets()[0].id, u"7°"_s);
  Q_EMIT source.changed({Family::Weather});
  EXPECT_EQ(shown(0), u"Kendal, 7°"_s);
  const int asked = source.asked;
  Q_EMIT source.widgetChanged(QUuid::createUuid());
  Q_EMIT source.changed({Family::Habit});
  dock->hide();
  Q_EMIT source.changed({Family::Weather});
  EXPECT_EQ(source.asked, asked) << "neither for tiles of another dock nor while nobody looks";
  dock.reset();
}

TEST_F(LiveDockTest, WhatChangesIsAskedOfItsOwnSourceAlone) {
  show({u"trash"_s, u"quickTodo"_s, u"notesLatest"_s, u"scratchNote"_s, u"appLauncher"_s});
  store.edit(
      [](DockConfiguration& config) { config.profiles[0].widgets.last().options.insert(u"path"_s, u"/a.desktop"_s); });
  const auto asked = [&] {
    return std::pair(std::exchange(services.gathered, 0) > 0, std::exchange(services.looked, 0) > 0);
  };
  asked();
  const auto nobody = std::pair(false, false);

  services.trashed = 3;
  Q_EMIT services.trashChanged();
  EXPECT_TRUE(shown(0).contains(u'3')) << qPrintable(shown(0));
  EXPECT_EQ(asked(), nobody);

  const QString todos = shown(1);
  store.edit([](DockConfiguration& config) { config.todos.append({QUuid::createUuid(), u"Post"_s, false}); });
  EXPECT_NE(shown(1), todos);
  EXPECT_EQ(asked(), nobody);

  store.edit([](DockConfiguration& config) { config.spacing += 2; });
  EXPECT_EQ(asked(), nobody) << "no tile shows it";

  Q_EMIT services.applicationsChanged();
  EXPECT_EQ(asked(), std::pair(false, true));
  store.edit([](DockConfiguration& config) { config.desktop.customAppIcons.insert(u"a"_s, u"b"_s); });
  EXPECT_EQ(asked(), std::pair(false, true));
  Q_EMIT services.readingsChanged({Family::Temperature});
  EXPECT_EQ(asked(), nobody) << "no such tile is shown";
  Q_EMIT services.habitsChanged();
  EXPECT_EQ(asked(), std::pair(true, true));

  // An edited note is shown by its own tile and by that of the latest one.
  const QStringList notes{shown(2), shown(3)};
  store.edit(
      [](DockConfiguration& config) { config.profiles[0].widgets[3].options.insert(u"text"_s, u"Buy bread"_s); });
  EXPECT_NE(shown(2), notes[0]);
  EXPECT_NE(shown(3), notes[1]);
  EXPECT_EQ(asked(), nobody);
  store.edit(
      [](DockConfiguration& config) { config.profiles[0].widgets.last().options.insert(u"path"_s, u"/b.desktop"_s); });
  EXPECT_EQ(asked(), std::pair(false, true)) << "another application";
}

TEST_F(LiveDockTest, TheTrashIsCountedOnlyWhereItIsShown) {
  show({u"digitalClock"_s, u"recentFiles"_s});
  EXPECT_EQ(services.counted, 0);
  show({u"digitalClock"_s, u"trash"_s});
  EXPECT_GT(services.counted, 0);
}

TEST_F(LiveDockTest, TheClipboardsTileFollowsItsSwitch) {
  show({u"clipboard"_s});
  const QString off = shown(0);
  store.edit([](DockConfiguration& config) { config.clipboardEnabled = true; });
  EXPECT_NE(shown(0), off);
  store.edit([](DockConfiguration& config) { config.clipboardEnabled = false; });
  EXPECT_EQ(shown(0), off);
}

TEST_F(LiveDockTest, AChartBeginsWithWhatWasMeasured) {
  show({u"systemChart"_s});
  const auto taken = [this] {
    const std::unique_ptr<KeptSources> kept = keepStoreSources(store, toggles, services, {});
    kept->takeAll();
    return kept->values();
  };
  qsizetype samples = 0;
  while (samples < SystemMetrics::depth) {
    beat(2);
    const TileSources sources = taken();
    ASSERT_EQ(store.system().cpuHistory().size(), ++samples);
    EXPECT_EQ(sources.cpuHistory, QList<double>(samples - 1, 30)) << "the first look at the counters is no load";
    EXPECT_EQ(sources.downloadHistory.size(), samples - 1);
    EXPECT_EQ(sources.networkHistory.size(), samples - 1);
    EXPECT_EQ(sources.memoryHistory.size(), samples) << "one look tells all";
  }
  beat(2);
  EXPECT_EQ(taken().cpuHistory, QList<double>(samples, 30));
}

TEST_F(LiveDockTest, AReadingIsTakenForTheTilesThatShowIt) {
  show({u"processTopApps"_s, u"temperature"_s, u"recentFiles"_s, u"bookmarks"_s});
  services.read.clear();
  Q_EMIT services.readingsChanged({Family::Processes});
  EXPECT_EQ(std::exchange(services.read, {}), QStringList{u"processTopApps"_s});
  Q_EMIT services.readingsChanged({Family::Files, Family::Bookmarks});
  EXPECT_EQ(std::exchange(services.read, {}), (QStringList{u"recentFiles"_s, u"bookmarks"_s}));
  Q_EMIT services.calendarChanged();
  EXPECT_EQ(services.read, QStringList()) << "no tile of calendars is shown";
  EXPECT_EQ(services.gathered, 0);
}

}  // namespace
}  // namespace tarnwick
