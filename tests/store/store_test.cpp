#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QSignalSpy>
#include <QTemporaryDir>

#include "base/DomainError.h"
#include "base/ProbeCounters.h"
#include "calendar/Calendar.h"
#include "config/Persistence.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"
#include "system/ProcessMonitor.h"
#include "system/SystemTemperature.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestScheduler;

/// What was asked of the facilities, in order.
struct Journal {
  QStringList calls;
  int count(const QString& call) const { return static_cast<int>(calls.count(call)); }
};

/// A client that writes down what is asked of it.
struct FakeClient : BeatClient {
  FakeClient(Journal& j, const QString& called, BeatStep at, int ticks)
      : journal(j), name(called), place(at), every(ticks) {}
  BeatStep step() const override { return place; }
  int everyTicks() const override { return every; }
  bool isNeededBy(const ActiveSets& active) const override {
    return family.isEmpty() || active.families.contains(family);
  }
  void start(const DockConfiguration& config, const ActiveSets&) override {
    journal.calls << u"start %1 %2"_s.arg(name).arg(config.profiles.size());
  }
  void beat(const ActiveSets&) override { journal.calls << name; }
  void wake() override { journal.calls << u"wake "_s + name; }
  void end() override { journal.calls << u"end "_s + name; }
  Journal& journal;
  QString name;
  BeatStep place;
  int every;
  QString family;
};
struct FakeReservations : WindowReservations {
  explicit FakeReservations(Journal& j) : journal(j) {}
  void reserve(const QList<ReservingDock>&) override {}
  void restore() override { journal.calls << u"restore windows"_s; }
  Journal& journal;
};
struct FakeRemote : RemoteRefresh {
  explicit FakeRemote(Journal& j) : journal(j) {}
  void refresh(const DockWidget& widget) override { journal.calls << u"refresh "_s + widget.kind; }
  void refreshAll() override { journal.calls << u"refreshAll"_s; }
  void cancelAll() override { journal.calls << u"cancelled"_s; }
  void end() override { journal.calls << u"cancelAll"_s; }
  Journal& journal;
};
struct FakeClipboard : ClipboardMigration {
  explicit FakeClipboard(Journal& j) : journal(j) {}
  bool migrate(const QStringList& texts) override {
    if (refuses) throw DomainError::invalid(u"The clipboard history cannot be read."_s);
    journal.calls << u"migrate "_s + texts.join(u',');
    return true;
  }
  Journal& journal;
  bool refuses = false;
};
struct FakeCredentials : CredentialKeeping {
  explicit FakeCredentials(Journal& j) : journal(j) {}
  void removeOrphans(const QList<QUuid>& keeping) override { journal.calls << u"orphans %1"_s.arg(keeping.size()); }
  void remove(const QList<QUuid>&, Failed failed) override { failed(u"The keyring is locked."_s); }
  void endSession() override { ++endedSessions; }
  int endedSessions = 0;
  Journal& journal;
};
struct FakeNotifications : Notifications {
  Capability capability() const override { return Capability::yes(); }
  void post(const QString& title, const QString& body, std::function<void()>) override {
    posted << title + u": "_s + body;
  }
  QStringList posted;
};
struct CountedSamples : SystemCounters {
  std::optional<ProcessorTicks> processorTicks() override {
    ++samples;
    if (journal) journal->calls << u"metrics"_s;
    return std::nullopt;
  }
  std::optional<MemoryReading> memory() override { return std::nullopt; }
  std::optional<NetworkReading> network() override { return std::nullopt; }
  std::optional<DiskReading> disk() override { return std::nullopt; }
  std::optional<double> batteryCharge() override { return std::nullopt; }
  static inline int samples = 0;
  static inline Journal* journal = nullptr;  ///< Where a test wants samples written down.
};
struct NoSensors final : ProcessorTemperatures {
  quint32 read(double*, quint32) override { return 0; }
};
struct NoProcesses final : ProcessSource {
  QList<ProcessReading> read() override { return {}; }
  void end(const ProcessReading&) override {}
};
struct NoCalendars final : CalendarSource {
  void load(const CalendarRange&, QObject*, Loaded) override {}
  void setCompleted(const Reminder&, bool, const QDateTime&, QObject*, Done) override {}
  void setFolders(const QStringList&) override {}
};

/// Writes down what is asked of a client of the program, whose turns and needs are that client's own.
struct Watched final : FakeClient {
  Watched(Journal& j, const QString& called, const BeatClient& client)
      : FakeClient(j, called, client.step(), client.everyTicks()), real(client) {}
  bool isNeededBy(const ActiveSets& active) const override { return real.isNeededBy(active); }
  const BeatClient& real;
};

class StoreTest : public testing::Test {
 protected:
  StoreTest() {
    CountedSamples::samples = 0;
    CountedSamples::journal = nullptr;
  }

  QString file() const { return folder.filePath(u"data/config.json"_s); }

  AppStore& start(bool diagnostic = false) {
    store = std::make_unique<AppStore>(StoreSetup{.scheduler = time,
                                                  .counters = std::make_unique<CountedSamples>(),
                                                  .installedApps = apps,
                                                  .applications = desktop.applications,
                                                  .notifications = notifications,
                                                  .session = session,
                                                  .remote = remote,
                                                  .credentials = credentials,
                                                  .clipboard = clipboard,
                                                  .reservations = reservations,
                                                  .clients = clients,
                                                  .diagnostic = diagnostic,
                                                  .storage = file()});
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
  NoDesktop desktop{time};
  InstalledApps apps{AppEnvironment(), time};
  SessionEvents session;
  FakeNotifications notifications;
  FakeRemote remote{journal};
  FakeClipboard clipboard{journal};
  FakeCredentials credentials{journal};
  FakeReservations reservations{journal};
  QList<BeatClient*> clients;
  std::unique_ptr<AppStore> store;
};

TEST_F(StoreTest, AFirstRunIsQuietAndWritesNothingUntilSomethingChanges) {
  start();
  EXPECT_TRUE(store->error().isEmpty());
  EXPECT_EQ(store->calendarMessage(), u"Enable Calendar access to see your events."_s);
  EXPECT_EQ(store->reminderMessage(), u"Enable Reminders access to see your reminders."_s);
  EXPECT_TRUE(store->ready());
  EXPECT_TRUE(journal.calls.filter(u"orphans"_s).isEmpty());
  time.advance(60);
  EXPECT_FALSE(QFile::exists(file()));
  EXPECT_EQ(store->widgets().size(), 7);
}

TEST_F(StoreTest, AnEditThatChangesNothingIsNeitherAnnouncedNorSaved) {
  start();
  const QSignalSpy announced(store.get(), &AppStore::configChanged);
  const DockConfiguration same = store->edit([](DockConfiguration& config) { config.scale = 1.0; });
  store->set(store->widgets().first().id, u"none"_s, std::nullopt);
  time.advance(30);
  EXPECT_EQ(announced.count(), 0);
  EXPECT_FALSE(QFile::exists(file()));
  EXPECT_EQ(same, store->config());
}

TEST_F(StoreTest, WhatTheSessionStartsAnywayIsAChangeThatIsNotSaved) {
  start();
  const QSignalSpy announced(store.get(), &AppStore::configChanged);
  const QSignalSpy layout(store.get(), &AppStore::layoutChanged);
  ProbeCounters::reset();
  ProbeCounters::setArmed(true);
  const auto changes = [] { return ProbeCounters::snapshot().value(u"config"_s); };
  const struct {
    bool launches;
    int changes;
  } cases[] = {{false, 0}, {true, 1}, {true, 1}, {false, 2}};
  for (const auto& each : cases) {
    store->followLoginEntry(each.launches);
    EXPECT_EQ(store->config().launchAtLogin, each.launches);
    EXPECT_EQ(changes(), each.changes);
    EXPECT_EQ(announced.count(), each.changes);
  }
  ProbeCounters::setArmed(false);
  time.advance(30);
  EXPECT_EQ(layout.count(), 0);
  EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(StoreTest, ADiagnosticRunReadsNothingOfTheUserAndWritesNothing) {
  DockConfiguration users;
  users.scale = 1.4;
  users.clipboard = {u"a"_s};
  users.validate();
  Persistence::save(users, file());
  const QStringList before = QDir(QFileInfo(file()).path()).entryList(QDir::AllEntries);
  FakeClient client(journal, u"client"_s, BeatStep::Temperature, 1);
  clients = {&client};
  start(true);
  EXPECT_TRUE(store->isDiagnostic());
  EXPECT_EQ(store->config().scale, DockConfiguration().scale);
  EXPECT_TRUE(journal.calls.isEmpty()) << qPrintable(journal.calls.join(u' '));
  store->edit([](DockConfiguration& config) { config.scale = 0.7; });
  store->add(u"cpu"_s);
  time.advance(60);
  Q_EMIT session.willSleep();
  Q_EMIT session.didWake();
  store->save();
  store->restoreReservations();
  EXPECT_EQ(time.waiting(), 0);
  EXPECT_EQ(store->tick(), 0);
  store->shutdown();
  EXPECT_EQ(journal.calls, (QStringList{u"cancelAll"_s, u"end client"_s}));
  EXPECT_EQ(saved(), users);
  EXPECT_EQ(QDir(QFileInfo(file()).path()).entryList(QDir::AllEntries), before);
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
  EXPECT_TRUE(store->hasLostSettings());
  // Whose credentials are still wanted is listed in the file that could not be read.
  EXPECT_TRUE(journal.calls.filter(u"orphans"_s).isEmpty());
  store->shutdown();
  store.reset();
  start();
  EXPECT_TRUE(store->config().onboardingComplete) << "nobody is greeted as new the next time either";
  store.reset();

  write("{ this is not");
  const QString blocked = QFileInfo(file()).path() + u"/config-recovery-%1.json"_s.arg(time.now().toSecsSinceEpoch());
  QFile::remove(blocked);
  ASSERT_TRUE(QDir().mkpath(blocked + u"/in the way"_s));
  start();
  EXPECT_FALSE(store->ready());
  EXPECT_TRUE(store->hasLostSettings());
  EXPECT_TRUE(store->error().startsWith(u"Settings recovery could not preserve the original file. "_s));
  EXPECT_EQ(time.waiting(), 0);
  store->edit([](DockConfiguration& config) { config.scale = 1.1; });
  store->shutdown();
  QFile kept(file());
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), "{ this is not");
}

TEST_F(StoreTest, ShutdownSavesWhatWasPending) {
  start();
  store->edit([](DockConfiguration& config) { config.scale = 0.75; });
  store->shutdown();
  EXPECT_EQ(saved().scale, 0.75);
  EXPECT_EQ(time.waiting(), 0);
}

/// The clients of every step, handed in the wrong way round; of one step there are two. Those that the program has are
/// its own.
struct AllClients {
  AllClients(Journal& journal, const Scheduler& clock)
      : processes(std::make_unique<NoProcesses>(), clock), calendar(calendars, clock) {
    using enum BeatStep;
    const auto add = [&](const char* name, BeatStep step, int ticks) {
      all.push_back(std::make_unique<FakeClient>(journal, QString::fromLatin1(name), step, ticks));
    };
    const auto watch = [&](const char* name, const BeatClient& client) {
      all.push_back(std::make_unique<Watched>(journal, QString::fromLatin1(name), client));
    };
    add("recorder", VoiceRecorder, 0);
    add("previews", WindowPreviews, 0);
    add("cleaner", KeyboardCleaner, 0);
    add("sounds", Sounds, 0);
    add("reminders", Reminders, 60);
    watch("calendar", calendar);
    add("wallpaper", Wallpaper, 60);
    add("productivity", Productivity, 60);
    add("clipboard", Clipboard, 1);
    add("audioDevices", AudioDevices, 2);
    add("video", VideoPreview, 2);
    add("media", Media, 2);
    add("claude", ClaudeActivity, 2);
    add("zoom", Meetings, 2);
    watch("processes", processes);
    watch("temperature", temperature);
    add("own", Temperature, 4);
  }
  QList<BeatClient*> pointers() const {
    QList<BeatClient*> list;
    for (const auto& client : all) list << client.get();
    return list;
  }
  SystemTemperature temperature{std::make_unique<NoSensors>()};
  ProcessMonitor processes;
  NoCalendars calendars;
  tarnwick::Calendar calendar;
  std::vector<std::unique_ptr<FakeClient>> all;
};

TEST_F(StoreTest, ABeatAnEndAStartAndAWakeRunInTheirOrder) {
  const AllClients all(journal, time);
  clients = all.pointers();
  CountedSamples::journal = &journal;
  start();
  const QString begin =
      u"media productivity clipboard temperature own processes zoom claude video audioDevices "
      "wallpaper calendar reminders sounds cleaner previews recorder"_s;
  QStringList expected{u"metrics"_s, u"restore windows"_s};
  for (const QString& name : begin.split(u' ')) expected << u"start %1 1"_s.arg(name);
  EXPECT_EQ(journal.calls, expected << u"refreshAll"_s);

  const QStringList readings{u"temperature"_s, u"processTopApps"_s, u"cpu"_s, u"calendarWeek"_s};
  const QString two = u"zoom claude media video audioDevices metrics clipboard"_s;
  const QString four = u"temperature own processes "_s + two;
  const QString minute = u" productivity wallpaper calendar reminders"_s;
  const struct {
    QStringList shown;
    int tick;
    QString calls;
  } ticks[] = {{readings, 1, u"clipboard"_s},
               {readings, 2, two},
               {readings, 3, u"clipboard"_s},
               {readings, 4, four},
               {readings, 5, u"clipboard"_s},
               {readings, 6, two},
               {readings, 12, four},
               {readings, 30, two},
               {readings, 60, four + minute},
               {readings, 600, four + minute + u" refreshAll"_s},
               {{u"temperature"_s},
                660,
                u"temperature own zoom claude media video audioDevices clipboard productivity "
                "wallpaper reminders"_s},
               {{u"processTopApps"_s},
                720,
                u"own processes zoom claude media video audioDevices clipboard "
                "productivity wallpaper reminders"_s},
               {{u"remindersToday"_s},
                780,
                u"own zoom claude media video audioDevices clipboard productivity "
                "wallpaper calendar reminders"_s},
               {{},
                1200,
                u"own zoom claude media video audioDevices clipboard productivity wallpaper reminders "
                "refreshAll"_s}};
  for (const auto& [shown, tick, calls] : ticks) {
    show(shown);
    time.advance(static_cast<double>(tick - 1 - store->tick()));
    journal.calls.clear();
    time.advance(1);
    ASSERT_EQ(store->tick(), tick);
    EXPECT_EQ(journal.calls.join(u' '), calls) << tick;
  }

  journal.calls.clear();
  Q_EMIT session.didWake();
  expected = {u"restore windows"_s};
  const QString order =
      u"temperature own processes zoom claude media video audioDevices clipboard productivity "
      "wallpaper calendar reminders sounds cleaner previews recorder"_s;
  for (const QString& name : order.split(u' ')) expected << u"wake "_s + name;
  EXPECT_EQ(journal.calls, expected << u"clipboard"_s << u"refreshAll"_s);

  journal.calls.clear();
  store->shutdown();
  store->shutdown();
  EXPECT_EQ(journal.calls.join(u", "_s),
            u"end media, end zoom, end sounds, end cleaner, end previews, restore windows, cancelAll, "
            "end recorder, end temperature, end own, end processes, end claude, end video, end audioDevices, "
            "end clipboard, end productivity, end wallpaper, end calendar, end reminders"_s);
  EXPECT_EQ(time.waiting(), 0);
}

TEST_F(StoreTest, RulesTimersAndHeldBackApplicationsComeBetweenTheClipboardAndTheMinute) {
  FakeClient each(journal, u"clipboard"_s, BeatStep::Clipboard, 1);
  FakeClient minute(journal, u"productivity"_s, BeatStep::Productivity, 60);
  clients = {&minute, &each};
  start();  // A minute before the rule's time.
  show({u"timer"_s});
  const QUuid everyday = store->profile().id;
  store->newProfile(u"Work"_s, true);
  ProfileRule rule;
  rule.id = QUuid::createUuid();
  rule.profileID = store->profile().id;
  rule.trigger = ProfileRule::Trigger::Schedule;
  rule.enabled = true;
  rule.days = {3};
  rule.startMinutes = 10 * 60 + 25;
  rule.endMinutes = 10 * 60 + 27;
  store->selectProfile(everyday);
  store->edit([&](DockConfiguration& config) { config.desktop.profileRules = {rule}; });
  const QUuid timer = store->widgets().first().id;
  store->set(timer, u"minutes"_s, u"1"_s);
  store->toggleTimer(timer);

  const auto note = [this](const QString& call) { return [this, call] { journal.calls << call; }; };
  QUuid active = everyday;
  QObject::connect(store.get(), &AppStore::configChanged, store.get(), [&] {
    const QUuid now = store->profile().id;
    if (std::exchange(active, now) != now) journal.calls << u"rules"_s;
  });
  QObject::connect(store.get(), &AppStore::widgetCalls, store.get(), note(u"timers"_s));
  QObject::connect(store.get(), &AppStore::runningAppsChanged, store.get(), note(u"applications"_s));
  QObject::connect(store.get(), &AppStore::ticked, store.get(), note(u"ticked"_s));
  time.advance(58);
  store->holdRunningApps();
  RunningApp app;
  app.identity = 1;
  store->apply({app});
  time.advance(1);
  journal.calls.clear();
  time.advance(1);
  EXPECT_EQ(journal.calls.join(u' '), u"clipboard rules refreshAll timers applications productivity ticked"_s);
}

TEST_F(StoreTest, WhatTheFirstBeatRestsOnStartsBeforeTheTimer) {
  /// Writes down how much waits on the clock when it starts.
  struct Starter final : FakeClient {
    Starter(Journal& j, const TestScheduler& t, BeatStep at) : FakeClient(j, {}, at, 0), time(t) {}
    void start(const DockConfiguration&, const ActiveSets&) override { jobs = time.waiting(); }
    const TestScheduler& time;
    std::optional<qsizetype> jobs;
  };
  using enum BeatStep;
  const std::pair<BeatStep, int> cases[] = {{Media, 0},       {Productivity, 0}, {Clipboard, 0},
                                            {Temperature, 1}, {Calendar, 1},     {Reminders, 1}};
  std::vector<std::unique_ptr<Starter>> starters;
  for (const auto& [step, jobs] : cases) {
    starters.push_back(std::make_unique<Starter>(journal, time, step));
    clients << starters.back().get();
  }
  start();
  for (size_t i = 0; i < starters.size(); ++i) EXPECT_EQ(starters[i]->jobs, cases[i].second) << i;
}

TEST_F(StoreTest, AtTheEndNothingIsReadAnyMoreTheBeatStopsBeforeTheFetchesAndTheSaveComesLast) {
  /// Writes down what still goes on while it ends.
  struct Witness final : FakeClient {
    Witness(Journal& j, const QString& called, BeatStep at) : FakeClient(j, called, at, 0) {}
    void end() override { journal.calls << name + u' ' + sees(); }
    std::function<QString()> sees;
  };
  using enum BeatStep;
  Witness witnesses[] = {{journal, u"recorder"_s, VoiceRecorder},  {journal, u"previews"_s, WindowPreviews},
                         {journal, u"cleaner"_s, KeyboardCleaner}, {journal, u"sounds"_s, Sounds},
                         {journal, u"zoom"_s, Meetings},           {journal, u"media"_s, Media}};
  for (Witness& witness : witnesses) {
    clients << &witness;
    witness.sees = [this] {
      apps.load();
      return QString::number(time.waiting()) + (QFile::exists(file()) ? u"saved"_s : QString());
    };
  }
  QObject::connect(&apps, &InstalledApps::scanStarted, &apps, [this] { journal.calls << u"reads applications"_s; });
  start();
  store->edit([](DockConfiguration& config) { config.scale = 1.5; });
  ASSERT_EQ(time.waiting(), 2) << "the beat and the save";
  journal.calls.clear();
  store->shutdown();
  EXPECT_EQ(journal.calls.join(u", "_s),
            u"media 2, zoom 2, sounds 2, cleaner 2, previews 2, restore windows, cancelAll, recorder 1"_s);
  EXPECT_EQ(time.waiting(), 0);
  EXPECT_EQ(saved().scale, 1.5);
}

TEST_F(StoreTest, OnlyWhatAConnectedDisplayShowsIsDriven) {
  FakeClient music(journal, u"music"_s, BeatStep::Media, 2);
  music.family = u"music"_s;
  clients = {&music};
  start();
  const auto beats = [this](int ticks) {
    journal.calls.clear();
    time.advance(ticks);
    return journal.count(u"music"_s);
  };
  show({u"nowPlayingMini"_s});
  EXPECT_EQ(beats(4), 2);
  const QUuid everyday = store->profile().id;
  store->newProfile(u"Work"_s, false);
  EXPECT_EQ(beats(4), 0);

  store->pinDisplay(u"L"_s, everyday);
  EXPECT_EQ(beats(4), 2);
  const QSignalSpy changes(store.get(), &AppStore::activeChanged);
  store->setDockDisplays({u"R"_s});
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(beats(4), 0);
  store->pinDisplay(u"R"_s, everyday);
  EXPECT_EQ(beats(4), 2);
  store->pinDisplay(u"R"_s, std::nullopt);
  store->setDockDisplays({u"L"_s, u"R"_s});
  EXPECT_EQ(beats(4), 2);
  EXPECT_EQ(store->active().widgets.size(), 1);
}

TEST_F(StoreTest, MetricsAreSampledEverySecondTickWhileTheyAreShown) {
  start();
  for (const auto& [kind, samples] : {std::pair(u"cpu"_s, 2), std::pair(u"digitalClock"_s, 0)}) {
    show({kind});
    const int before = CountedSamples::samples;
    time.advance(4);
    EXPECT_EQ(CountedSamples::samples - before, samples) << qPrintable(kind);
    EXPECT_EQ(store->system().isNeeded(), samples > 0) << qPrintable(kind);
  }
}

TEST_F(StoreTest, ARuleHoldsItsProfileAgainstTheUserUntilItsWindowEnds) {
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
    config.desktop.profileRules = {rule};
  });
  time.advance(59);
  EXPECT_EQ(store->config().activeProfileID, everyday);
  time.advance(2);
  EXPECT_EQ(store->config().activeProfileID, work);
  store->selectProfile(everyday);
  time.advance(1);
  EXPECT_EQ(store->config().activeProfileID, work);
  // Where the rule's profile is active already, nothing is fetched anew.
  journal.calls.clear();
  time.advance(20);
  EXPECT_EQ(journal.count(u"refreshAll"_s), 0);
  time.advance(100);
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
  EXPECT_EQ(journal.calls.first(), u"restore windows"_s);
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
  clipboard.refuses = true;
  start();
  EXPECT_EQ(store->error(), u"The clipboard history cannot be read."_s);
  EXPECT_EQ(store->config().clipboard.size(), 2);
  store.reset();
  clipboard.refuses = false;
  start();
  EXPECT_EQ(journal.count(u"migrate a,b"_s), 1);
  EXPECT_TRUE(store->config().clipboard.isEmpty());
  EXPECT_TRUE(saved().clipboard.isEmpty());
}

TEST_F(StoreTest, CredentialsThatNoWidgetHasGoWithADocumentThatWasRead) {
  Persistence::save(DockConfiguration(), file());
  start();
  EXPECT_EQ(journal.count(u"orphans 7"_s), 1);
  store.reset();

  // Widgets of a document that was set aside may come back with another version, also at later starts than the next.
  write("{ this is not");
  for (int run = 0; run < 3; ++run) {
    start();
    store->edit([run](DockConfiguration& config) { config.scale = 1.1 + 0.1 * run; });
    store->shutdown();
    store.reset();
  }
  EXPECT_EQ(journal.count(u"orphans 7"_s), 1);
  ASSERT_TRUE(
      QFile::remove(QFileInfo(file()).path() + u"/config-recovery-%1.json"_s.arg(time.now().toSecsSinceEpoch())));
  start();
  EXPECT_EQ(journal.count(u"orphans 7"_s), 2);
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

TEST_F(StoreTest, TheSessionInABrowserEndsWithTheLastWidgetThatReadsIt) {
  start();
  const QUuid one = store->add(u"perplexityUsage"_s);
  const QUuid two = store->add(u"perplexityUsage"_s);
  for (const QUuid id : {one, two}) store->set(id, u"connectionMode"_s, u"perplexitySession"_s);
  const struct {
    QUuid removed;
    int ended;
  } steps[] = {{store->widgets().first().id, 0}, {one, 0}, {two, 1}, {store->widgets().at(1).id, 1}};
  for (const auto& [removed, ended] : steps) {
    store->remove(removed);
    EXPECT_EQ(credentials.endedSessions, ended);
  }
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
  const std::function<void()> attempts[] = {
      [&] { EXPECT_TRUE(store->addWidget(unknown, store->profile().id).isNull()); }, [&] { store->update(unknown); }};
  for (const auto& attempt : attempts) {
    store->clearError();
    attempt();
    EXPECT_FALSE(store->error().isEmpty());
    EXPECT_EQ(store->config(), before);
  }

  int unseen = 0;
  store->notify(u"Tarnwick"_s, u"Your timer is finished."_s, [&] { ++unseen; });
  EXPECT_TRUE(notifications.posted.isEmpty());
  EXPECT_EQ(unseen, 1);
  store->edit([](DockConfiguration& config) { config.notificationsEnabled = true; });
  store->notify(u"Tarnwick"_s, u"Your timer is finished."_s);
  EXPECT_EQ(notifications.posted, QStringList{u"Tarnwick: Your timer is finished."_s});
}

TEST_F(StoreTest, WidgetsKeepIdentitiesApartAndAChangeThatFailsLeavesNoTrace) {
  start();
  DockWidget twin = store->widgets().first();
  const QUuid profile = store->profile().id;
  EXPECT_NE(store->addWidget(twin, profile), twin.id);
  twin.id = QUuid();
  const QUuid added = store->addWidget(twin, profile);
  EXPECT_EQ(store->widgets().last().id, added);
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

TEST_F(StoreTest, WidgetsAreAddedAllTogetherInFrontOfAnotherOrNotAtAll) {
  start();
  const DockWidget clock{{}, u"digitalClock"_s, {}, {}};
  const DockWidget unknown{{}, u"clockOfTomorrow"_s, {}, {}};
  DockWidget twin{QUuid::createUuid(), u"timer"_s, {}, {}};
  const QUuid home = store->profile().id;
  struct Case {
    const char* name;
    QList<DockWidget> widgets;
    qsizetype before;  ///< The place of the widget in front of which they go.
    QUuid profile;
    int there;  ///< How many the profile holds beforehand.
    QString row;
    QString message;
  };
  const Case cases[] = {
      {"in front of one", {clock, twin}, 1, home, 2, u"cpu digitalClock timer cpu"_s, {}},
      {"at the end", {clock}, -1, home, 2, u"cpu cpu digitalClock"_s, {}},
      {"the same twice", {twin, twin}, 0, home, 1, u"timer timer cpu"_s, {}},
      {"none", {}, 0, home, 1, u"cpu"_s, {}},
      {"one of them refused", {clock, unknown}, 0, home, 1, u"cpu"_s, u"clockOfTomorrow"_s},
      {"one too many", {clock, twin}, 0, home, 149, {}, u"This dock already has 150 widgets."_s},
      {"no such profile", {clock}, 0, QUuid::createUuid(), 1, u"cpu"_s, {}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    show(QStringList(each.there, u"cpu"_s));
    store->clearError();
    const DockConfiguration was = store->config();
    const QUuid before = each.before < 0 ? QUuid() : store->widgets()[each.before].id;
    const QList<DockWidget> added = store->addWidgets(each.widgets, each.profile, before);
    QStringList row;
    QSet<QUuid> identities;
    for (const DockWidget& widget : store->widgets()) {
      row << widget.kind;
      identities << widget.id;
    }
    EXPECT_EQ(row.join(u' '), each.row.isEmpty() ? QStringList(each.there, u"cpu"_s).join(u' ') : each.row);
    EXPECT_EQ(identities.size(), store->widgets().size());
    EXPECT_EQ(added.isEmpty(), store->config() == was);
    for (const DockWidget& widget : added) EXPECT_TRUE(store->widgets().contains(widget));
    EXPECT_EQ(store->error().isEmpty(), each.message.isEmpty());
    EXPECT_TRUE(store->error().contains(each.message)) << qPrintable(store->error());
  }
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
  store->newProfile(u"Pinned"_s, false);
  const QUuid pinned = store->profile().id;
  store->selectProfile(store->config().profiles[0].id);
  store->pinDisplay(u"L"_s, pinned);
  store->pinDisplay(u"R"_s, store->profile().id);
  journal.calls.clear();
  store->deleteProfile(pinned);
  EXPECT_EQ(journal.count(u"refreshAll"_s), 1) << "L shows another profile";
  EXPECT_EQ(store->config().desktopOptions().displayProfiles.keys(), QStringList{u"R"_s});

  store->setActiveDisplay(u"R"_s);
  store->setDockDisplays({u"L"_s, u"R"_s});
  EXPECT_EQ(store->activeDisplay(), u"R"_s);
  store->setDockDisplays({u"L"_s});
  EXPECT_TRUE(store->activeDisplay().isEmpty());
}

TEST_F(StoreTest, ImportRefusesWholeAndExportComesBack) {
  start();
  const DockConfiguration before = store->config();
  const QString other = folder.filePath(u"other.json"_s);
  QFile bad(other);
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write("{\"schema\": 2}");
  bad.close();
  EXPECT_THROW(store->takeImported(Persistence::read(other), AppStore::Origin::Elsewhere), DomainError);
  EXPECT_EQ(store->config(), before);

  store->edit([](DockConfiguration& config) { config.scale = 1.3; });
  store->exportConfiguration(other);
  store->edit([](DockConfiguration& config) { config.scale = 0.6; });
  journal.calls.clear();
  EXPECT_TRUE(store->takeImported(Persistence::read(other), AppStore::Origin::Elsewhere));
  EXPECT_EQ(store->config().scale, 1.3);
  EXPECT_EQ(journal.calls, (QStringList{u"cancelled"_s, u"refreshAll"_s})) << "what was under way is cancelled first";
}

}  // namespace
}  // namespace tarnwick
