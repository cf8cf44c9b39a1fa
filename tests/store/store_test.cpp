#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QSignalSpy>
#include <QTemporaryDir>

#include "base/DomainError.h"
#include "config/Persistence.h"
#include "store/AppStore.h"
#include "support/TestScheduler.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestScheduler;

/// What was asked of the collaborators, in order.
struct Journal {
  QStringList calls;
  int count(const QString& call) const { return static_cast<int>(calls.count(call)); }
};

struct FakeTemperature : TemperatureReadings {
  explicit FakeTemperature(Journal& j) : journal(j) {}
  void refresh() override { journal.calls << u"temperature"_s; }
  Journal& journal;
};
struct FakeProcesses : ProcessReadings {
  explicit FakeProcesses(Journal& j) : journal(j) {}
  void refresh() override { journal.calls << u"processes"_s; }
  Journal& journal;
};
struct FakeZoom : MeetingControl {
  explicit FakeZoom(Journal& j) : journal(j) {}
  void refresh() override { journal.calls << u"zoom"_s; }
  void disconnect() override { journal.calls << u"zoom.disconnect"_s; }
  Journal& journal;
};
struct FakeMedia : MediaControl {
  explicit FakeMedia(Journal& j) : journal(j) {}
  void refresh() override { journal.calls << u"media"_s; }
  void restore(const QString& source) override { journal.calls << u"media.restore "_s + source; }
  void disconnect(bool forgetting) override {
    journal.calls << (forgetting ? u"media.forget"_s : u"media.disconnect"_s);
  }
  Journal& journal;
};
struct FakeWindows : WindowKeeping {
  explicit FakeWindows(Journal& j) : journal(j) {}
  void restoreReservations(const QString&) override { journal.calls << u"windows.restore"_s; }
  void stopPreviews() override { journal.calls << u"windows.stopPreviews"_s; }
  Journal& journal;
};
struct FakeCalendar : CalendarReadings {
  explicit FakeCalendar(Journal& j) : journal(j) {}
  void loadCalendar() override { journal.calls << u"calendar"_s; }
  void loadReminders() override { journal.calls << u"reminders"_s; }
  Journal& journal;
};
struct FakeRemote : RemoteRefresh {
  explicit FakeRemote(Journal& j) : journal(j) {}
  void refresh(const DockWidget& widget) override { journal.calls << u"refresh "_s + widget.kind; }
  void refreshAll() override { journal.calls << u"refreshAll"_s; }
  void cancelAll() override { journal.calls << u"cancelAll"_s; }
  Journal& journal;
};
struct FakeClipboard : ClipboardKeeping {
  explicit FakeClipboard(Journal& j) : journal(j) {}
  int changeCount() const override { return changes; }
  void record() override { journal.calls << u"clipboard"_s; }
  bool migrate(const QStringList& texts) override {
    if (refuses) throw DomainError::invalid(u"The clipboard history cannot be read."_s);
    journal.calls << u"migrate "_s + texts.join(u',');
    return true;
  }
  Journal& journal;
  int changes = 7;
  bool refuses = false;
};
struct FakeCredentials : CredentialKeeping {
  explicit FakeCredentials(Journal& j) : journal(j) {}
  void removeOrphans(const QList<QUuid>& keeping) override { journal.calls << u"orphans %1"_s.arg(keeping.size()); }
  Journal& journal;
  void remove(const QUuid&) override { throw DomainError::invalid(u"The keyring is locked."_s); }
};
struct FakeNotifications : Notifications {
  Capability capability() const override { return Capability::yes(); }
  void post(const QString& title, const QString& body, std::function<void()>) override {
    posted << title + u": "_s + body;
  }
  QStringList posted;
};
struct NoCounters : SystemCounters {
  std::optional<ProcessorTicks> processorTicks() override {
    ++samples;
    return std::nullopt;
  }
  std::optional<MemoryReading> memory() override { return std::nullopt; }
  std::optional<NetworkReading> network() override { return std::nullopt; }
  std::optional<DiskReading> disk() override { return std::nullopt; }
  std::optional<double> batteryCharge() override { return std::nullopt; }
  static inline int samples = 0;
};

class StoreTest : public testing::Test {
 protected:
  StoreTest() { NoCounters::samples = 0; }

  QString file() const { return folder.filePath(u"data/config.json"_s); }

  AppStore& start() {
    StoreSetup setup;
    setup.storage = file();
    setup.scheduler = &time;
    setup.counters = std::make_unique<NoCounters>();
    setup.session = &session;
    setup.notifications = &notifications;
    setup.collaborators.temperature = std::make_unique<FakeTemperature>(journal);
    setup.collaborators.processes = std::make_unique<FakeProcesses>(journal);
    setup.collaborators.zoom = std::make_unique<FakeZoom>(journal);
    setup.collaborators.media = std::make_unique<FakeMedia>(journal);
    setup.collaborators.windows = std::make_unique<FakeWindows>(journal);
    setup.collaborators.calendar = std::make_unique<FakeCalendar>(journal);
    setup.collaborators.remote = std::make_unique<FakeRemote>(journal);
    auto fakeClipboard = std::make_unique<FakeClipboard>(journal);
    fakeClipboard->refuses = clipboardRefuses;
    clipboard = fakeClipboard.get();
    setup.collaborators.clipboard = std::move(fakeClipboard);
    setup.collaborators.credentials = std::make_unique<FakeCredentials>(journal);
    store = std::make_unique<AppStore>(std::move(setup));
    return *store;
  }

  void show(const QStringList& kinds) {
    store->edit([&](DockConfiguration& config) {
      config.profiles[0].widgets.clear();
      for (const QString& kind : kinds) {
        DockWidget widget;
        widget.id = QUuid::createUuid();
        widget.kind = kind;
        config.profiles[0].widgets.append(widget);
      }
    });
    journal.calls.clear();
  }

  DockConfiguration saved() const { return Persistence::read(file()); }
  void write(const QByteArray& bytes) const {
    QDir().mkpath(QFileInfo(file()).path());
    QFile out(file());
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes);
  }

  QTemporaryDir folder;
  TestScheduler time;
  Journal journal;
  SessionEvents session;
  FakeNotifications notifications;
  FakeClipboard* clipboard = nullptr;
  bool clipboardRefuses = false;
  std::unique_ptr<AppStore> store;
};

TEST_F(StoreTest, AFirstRunIsQuietAndWritesNothingUntilSomethingChanges) {
  start();
  EXPECT_TRUE(store->error().isEmpty());
  EXPECT_TRUE(store->ready());
  EXPECT_TRUE(journal.calls.filter(u"orphans"_s).isEmpty());
  time.advance(60);
  EXPECT_FALSE(QFile::exists(file()));
  EXPECT_EQ(store->widgets().size(), 7);
}

TEST_F(StoreTest, ALayoutChangeIsSavedWithinAQuarterOfASecond) {
  start();
  const QSignalSpy layout(store.get(), &AppStore::layoutChanged);
  store->edit([](DockConfiguration& config) { config.scale = 1.25; });
  EXPECT_EQ(layout.count(), 1);
  time.advance(0.24);
  EXPECT_FALSE(QFile::exists(file()));
  time.advance(0.02);
  EXPECT_EQ(saved().scale, 1.25);
  struct stat about = {};
  ASSERT_EQ(::stat(QFile::encodeName(file()).constData(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777u, 0600u);
}

TEST_F(StoreTest, ContentIsSavedAtMostEveryTenSeconds) {
  start();
  show({u"timer"_s});
  const QUuid timer = store->widgets().first().id;
  time.advance(0.3);  // Saved at 0.25.
  const QSignalSpy layout(store.get(), &AppStore::layoutChanged);

  time.advance(2.95);
  store->set(timer, u"remaining"_s, u"10"_s);
  EXPECT_EQ(layout.count(), 0);
  time.advance(6.9);
  store->set(timer, u"remaining"_s, u"3"_s);  // Does not put the planned save off.
  EXPECT_FALSE(saved().profiles[0].widgets[0].options.contains(u"remaining"_s));
  time.advance(0.11);
  EXPECT_EQ(saved().profiles[0].widgets[0].options.value(u"remaining"_s), u"3"_s);

  // A layout change does not wait for the content's turn, and content behind it does not delay it.
  store->set(timer, u"remaining"_s, u"2"_s);
  time.advance(0.1);
  store->edit([](DockConfiguration& config) { config.spacing = 9; });
  store->set(timer, u"remaining"_s, u"1"_s);
  time.advance(0.26);
  EXPECT_EQ(saved().spacing, 9);
  EXPECT_EQ(saved().profiles[0].widgets[0].options.value(u"remaining"_s), u"1"_s);
}

TEST_F(StoreTest, AClockThatJumpsDoesNotPutASaveOff) {
  start();
  show({u"timer"_s});
  time.advance(1);
  time.jump(-3600);
  store->set(store->widgets().first().id, u"remaining"_s, u"4"_s);
  time.advance(10.01);
  EXPECT_EQ(saved().profiles[0].widgets[0].options.value(u"remaining"_s), u"4"_s);
}

TEST_F(StoreTest, AFaultyValueNeverReachesTheDiskAndTheNextChangeTriesAgain) {
  start();
  store->edit([](DockConfiguration& config) { config.scale = 1.5; });
  time.advance(1);
  store->edit([](DockConfiguration& config) { config.profiles[0].name = u"  "_s; });
  time.advance(1);
  EXPECT_EQ(store->error(), u"Settings could not be saved: Invalid profile name or too many widgets."_s);
  EXPECT_EQ(saved().profiles[0].name, u"Everyday"_s);
  store->edit([](DockConfiguration& config) { config.profiles[0].name = u"Home"_s; });
  time.advance(1);
  EXPECT_EQ(saved().profiles[0].name, u"Home"_s);
}

TEST_F(StoreTest, ACorruptFileIsPreservedAndARescueThatFailsStopsTheProgramFromWriting) {
  write("{ this is not");
  start();
  const QString recovery = u"config-recovery-%1.json"_s.arg(time.now().toSecsSinceEpoch());
  EXPECT_TRUE(store->error().startsWith(u"Could not load settings. The original file was preserved as "_s + recovery +
                                        u". "_s));
  EXPECT_TRUE(store->ready());
  // Whose credentials are still wanted stands in the file that could not be read.
  EXPECT_TRUE(journal.calls.filter(u"orphans"_s).isEmpty());
  store.reset();

  write("{ this is not");
  const QString blocked = QFileInfo(file()).path() + u"/config-recovery-%1.json"_s.arg(time.now().toSecsSinceEpoch());
  QFile::remove(blocked);
  ASSERT_TRUE(QDir().mkpath(blocked + u"/in the way"_s));
  start();
  EXPECT_FALSE(store->ready());
  EXPECT_TRUE(store->error().startsWith(u"Settings recovery could not preserve the original file. "_s));
  EXPECT_EQ(time.waiting(), 0);
  store->edit([](DockConfiguration& config) { config.scale = 1.1; });
  store->shutdown();
  QFile kept(file());
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), "{ this is not");
}

TEST_F(StoreTest, ShutdownSavesWhatWasPendingAndStopsInOrder) {
  start();
  store->edit([](DockConfiguration& config) { config.scale = 0.75; });
  journal.calls.clear();
  store->shutdown();
  EXPECT_EQ(journal.calls, (QStringList{u"media.disconnect"_s, u"zoom.disconnect"_s, u"windows.stopPreviews"_s,
                                        u"windows.restore"_s, u"cancelAll"_s}));
  EXPECT_EQ(saved().scale, 0.75);
  EXPECT_EQ(time.waiting(), 0);
}

TEST_F(StoreTest, TheBeatDrivesOnlyWhatIsShownAndInItsTime) {
  start();
  struct Case {
    QStringList kinds;
    int ticks;
    QMap<QString, int> expected;
  };
  const Case cases[] = {
      {{u"digitalClock"_s}, 12, {{u"temperature"_s, 0}, {u"processes"_s, 0}, {u"zoom"_s, 0}, {u"media"_s, 0}}},
      {{u"temperature"_s, u"processTopApps"_s}, 12, {{u"temperature"_s, 3}, {u"processes"_s, 3}}},
      {{u"calendarMeetingDetail"_s, u"nowPlayingMini"_s}, 12, {{u"zoom"_s, 6}, {u"media"_s, 6}, {u"calendar"_s, 0}}},
      {{u"digitalClock"_s}, 60, {{u"calendar"_s, 1}, {u"reminders"_s, 1}, {u"refreshAll"_s, 0}}},
      {{u"digitalClock"_s}, 600, {{u"calendar"_s, 10}, {u"refreshAll"_s, 1}}},
  };
  for (const Case& c : cases) {
    time.advance(static_cast<double>(600 - store->tick() % 600));  // To the end of a round.
    show(c.kinds);
    time.advance(c.ticks);
    for (auto call = c.expected.cbegin(); call != c.expected.cend(); ++call) {
      EXPECT_EQ(journal.count(call.key()), call.value()) << qPrintable(c.kinds.join(u' ') + u": "_s + call.key());
    }
  }
  show({u"cpu"_s});
  const int before = NoCounters::samples;
  time.advance(4);
  EXPECT_EQ(NoCounters::samples, before + 2);
}

TEST_F(StoreTest, ClaudeTilesAreReadOftenAndTheClipboardOnlyWhenItChanged) {
  start();
  show({u"analyticsClaudeCodeStatus"_s, u"clipboard"_s});
  store->set(store->widgets().first().id, u"connectionMode"_s, u"claudeActivity"_s);
  store->edit([](DockConfiguration& config) { config.clipboardEnabled = true; });
  time.advance(2);
  EXPECT_EQ(journal.count(u"refresh analyticsClaudeCodeStatus"_s), 1);
  EXPECT_EQ(journal.count(u"clipboard"_s), 0);  // What was there at the start is not new.
  clipboard->changes = 8;
  time.advance(3);
  EXPECT_EQ(journal.count(u"clipboard"_s), 1);

  // Two displays pinned to a profile that is not the active one show its tile; it is read once.
  store->pinDisplay(u"L"_s, store->profile().id);
  store->pinDisplay(u"R"_s, store->profile().id);
  store->newProfile(u"Work"_s, false);
  journal.calls.clear();
  time.advance(2);
  EXPECT_EQ(journal.count(u"refresh analyticsClaudeCodeStatus"_s), 1);
}

TEST_F(StoreTest, ARuleHoldsItsProfileAgainstAHandUntilItsWindowEnds) {
  start();  // A Tuesday, 10:24.
  store->newProfile(u"Work"_s, false);
  const QUuid everyday = store->config().profiles[0].id;
  const QUuid work = store->config().profiles[1].id;
  store->selectProfile(everyday);
  store->edit([&](DockConfiguration& config) {
    ProfileRule rule;
    rule.id = QUuid::createUuid();
    rule.profileID = work;
    rule.trigger = ProfileRule::Trigger::Schedule;
    rule.enabled = true;
    rule.days = {3};
    rule.startMinutes = 10 * 60 + 25;
    rule.endMinutes = 10 * 60 + 27;
    config.desktop.emplace().profileRules = {rule};
  });
  time.advance(59);
  EXPECT_EQ(store->config().activeProfileID, everyday);
  time.advance(2);
  EXPECT_EQ(store->config().activeProfileID, work);
  store->selectProfile(everyday);
  time.advance(1);
  EXPECT_EQ(store->config().activeProfileID, work);
  time.advance(120);
  store->selectProfile(everyday);
  time.advance(5);
  EXPECT_EQ(store->config().activeProfileID, everyday);
}

TEST_F(StoreTest, SleepSavesAndWakingRefreshesAtOnce) {
  start();
  store->edit([](DockConfiguration& config) { config.scale = 0.9; });
  Q_EMIT session.willSleep();
  EXPECT_EQ(saved().scale, 0.9);
  journal.calls.clear();
  const qint64 tick = store->tick();
  Q_EMIT session.didWake();
  EXPECT_EQ(store->tick(), tick + 1);
  EXPECT_EQ(journal.calls.first(), u"windows.restore"_s);
  EXPECT_EQ(journal.count(u"refreshAll"_s), 1);
}

TEST_F(StoreTest, RunningApplicationsHoldStillUnderADrag) {
  start();
  const auto app = [](quint64 identity) {
    RunningApp running;
    running.identity = identity;
    return running;
  };
  store->apply({app(1)});
  store->holdRunningApps();
  time.jump(-3600);
  store->apply({app(1), app(2)});
  time.advance(1);
  store->apply({app(1), app(2), app(3)});
  EXPECT_EQ(store->runningApps().size(), 1);
  time.advance(1);
  EXPECT_EQ(store->runningApps().size(), 3);
}

TEST_F(StoreTest, OldClipboardTextsMoveOnceAndStayWhenTheyCannot) {
  DockConfiguration old;
  old.clipboard = {u"a"_s, u"b"_s};
  Persistence::save(old, file());
  clipboardRefuses = true;
  start();
  EXPECT_EQ(store->error(), u"The clipboard history cannot be read."_s);
  EXPECT_EQ(store->config().clipboard.size(), 2);
  store.reset();
  clipboardRefuses = false;
  start();
  EXPECT_EQ(journal.count(u"migrate a,b"_s), 1);
  EXPECT_TRUE(store->config().clipboard.isEmpty());
  EXPECT_TRUE(saved().clipboard.isEmpty());
}

TEST_F(StoreTest, TheMediaSourceComesBackOnlyWhileItIsConnected) {
  DockConfiguration config;
  config.rememberedMediaSource = u"player"_s;
  Persistence::save(config, file());
  start();
  EXPECT_EQ(journal.count(u"media.disconnect"_s), 1);
  store.reset();
  journal.calls.clear();
  config.nativeConnections = QStringList{u"player"_s};
  Persistence::save(config, file());
  start();
  EXPECT_EQ(journal.count(u"orphans 7"_s), 1);
  EXPECT_EQ(journal.count(u"media.restore player"_s), 1);
  EXPECT_EQ(journal.count(u"media.disconnect"_s), 0);
}

TEST_F(StoreTest, ATimerThatEndsIsAnnouncedOnceAlsoAfterARestart) {
  start();
  show({u"timer"_s});
  store->edit([](DockConfiguration& config) { config.notificationsEnabled = true; });
  const QUuid timer = store->widgets().first().id;
  store->set(timer, u"minutes"_s, u"1"_s);
  store->toggleTimer(timer);
  time.advance(58);
  EXPECT_TRUE(notifications.posted.isEmpty());
  store->shutdown();
  store.reset();
  time.advance(10);
  start();
  time.advance(5);
  EXPECT_EQ(notifications.posted, QStringList{u"Timer: Your timer is finished."_s});
  EXPECT_FALSE(store->widgets().first().options.contains(u"deadline"_s));
}

TEST_F(StoreTest, MessagesOfOperations) {
  start();
  const QUuid first = store->widgets().first().id;
  store->remove(first);
  EXPECT_EQ(store->error(), u"A stored credential could not be removed: The keyring is locked."_s);
  EXPECT_EQ(store->widgets().size(), 6);

  for (int i = 0; i < 144; ++i) store->add(u"cpu"_s);
  store->clearError();
  store->add(u"cpu"_s);
  EXPECT_EQ(store->error(), u"This dock already has 150 widgets."_s);
  EXPECT_EQ(store->widgets().size(), 150);

  store->remove(store->widgets().first().id);
  DockWidget unknown = store->widgets().last();
  unknown.kind = u"clockOfTomorrow"_s;
  const DockConfiguration before = store->config();
  for (const auto& attempt : {&AppStore::addWidget, &AppStore::update}) {
    store->clearError();
    (store.get()->*attempt)(unknown);
    EXPECT_FALSE(store->error().isEmpty());
    EXPECT_EQ(store->config(), before);
  }

  store->notify(u"Tarnwick"_s, u"Your timer is finished."_s);
  EXPECT_TRUE(notifications.posted.isEmpty());
  store->edit([](DockConfiguration& config) { config.notificationsEnabled = true; });
  store->notify(u"Tarnwick"_s, u"Your timer is finished."_s);
  EXPECT_EQ(notifications.posted, QStringList{u"Tarnwick: Your timer is finished."_s});
}

TEST_F(StoreTest, WidgetsKeepIdentitiesApartAndAChangeThatFailsLeavesNoTrace) {
  start();
  DockWidget twin = store->widgets().first();
  store->addWidget(twin);
  twin.id = QUuid();
  store->addWidget(twin);
  QSet<QUuid> identities;
  for (const DockWidget& widget : store->widgets()) identities << widget.id;
  EXPECT_EQ(identities.size(), 9);
  EXPECT_FALSE(identities.contains(QUuid()));

  const DockConfiguration before = store->config();
  EXPECT_ANY_THROW(store->edit([](DockConfiguration& config) {
    config.profiles.clear();
    throw DomainError::invalid(u"No."_s);
  }));
  EXPECT_EQ(store->config(), before);
}

TEST_F(StoreTest, ANewActiveProfileIsRefreshedAndAStaleDisplayForgotten) {
  start();
  journal.calls.clear();
  store->newProfile(u"Work"_s, false);
  EXPECT_EQ(journal.count(u"refreshAll"_s), 1);
  store->deleteProfile(store->config().profiles[0].id);
  EXPECT_EQ(journal.count(u"refreshAll"_s), 1);
  store->newProfile(u"Home"_s, false);
  store->deleteProfile(store->profile().id);
  EXPECT_EQ(journal.count(u"refreshAll"_s), 3);

  store->activeDisplay = u"R"_s;
  store->setDockDisplays({u"L"_s, u"R"_s});
  EXPECT_EQ(store->activeDisplay, u"R"_s);
  store->setDockDisplays({u"L"_s});
  EXPECT_TRUE(store->activeDisplay.isEmpty());
}

TEST_F(StoreTest, ImportRefusesWholeAndExportComesBack) {
  start();
  const DockConfiguration before = store->config();
  const QString other = folder.filePath(u"other.json"_s);
  QFile bad(other);
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write("{\"schema\": 2}");
  bad.close();
  store->importConfiguration(other);
  EXPECT_FALSE(store->error().isEmpty());
  EXPECT_EQ(store->config(), before);

  store->edit([](DockConfiguration& config) { config.scale = 1.3; });
  store->exportConfiguration(other);
  store->edit([](DockConfiguration& config) { config.scale = 0.6; });
  store->importConfiguration(other);
  EXPECT_EQ(store->config().scale, 1.3);
}

}  // namespace
}  // namespace tarnwick
