#include "views/snapshot/SnapshotFixture.h"

#include <QTimeZone>
#include <cmath>

#include "views/families/notes/NoteTiles.h"
#include "views/snapshot/CalendarFixture.h"
#include "views/snapshot/FileFixture.h"
#include "views/theme/SnapshotScenery.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Time that stands still.
class FrozenScheduler final : public Scheduler {
 public:
  QDateTime now() const override { return SnapshotFixture::moment(); }
  double reference() const override { return 0; }
  JobHandle after(double, std::function<void()>) override { return std::make_unique<Never>(); }
  JobHandle every(double, std::function<void()>) override { return std::make_unique<Never>(); }

 private:
  struct Never final : Job {};
};

class NoCounters final : public SystemCounters {
 public:
  std::optional<ProcessorTicks> processorTicks() override { return std::nullopt; }
  std::optional<MemoryReading> memory() override { return std::nullopt; }
  std::optional<NetworkReading> network() override { return std::nullopt; }
  std::optional<DiskReading> disk() override { return std::nullopt; }
  std::optional<double> batteryCharge() override { return std::nullopt; }
};

class FixedToggles final : public Toggles {
 public:
  ToggleState state(Toggle toggle) const override { return SnapshotFixture::sources().toggles.value(toggle); }
  void set(Toggle, bool) override {}
  void start() override {}
};

/// A curve that looks like a reading, is the same each time and ends where the reading is.
QList<double> history(double base, double swing, double phase, double last) {
  QList<double> values;
  for (int i = 0; i < SystemMetrics::depth; ++i) {
    const double at = i + phase;
    const double wave = std::sin(at * 0.31) * 0.45 + std::sin(at * 0.83) * 0.35 + std::sin(at * 0.13) * 0.45;
    values << std::max(0.0, base + swing * wave);
  }
  // The last few lead to what is shown beside the curve.
  constexpr int lead = 4;
  const double off = last - values.last();
  for (int i = 0; i < lead; ++i) values[SystemMetrics::depth - lead + i] += off * (i + 1) / lead;
  return values;
}

/// A moment as timers keep it.
QString secondsFromNow(int seconds) {
  return QString::number(SnapshotFixture::moment().addSecs(seconds).toSecsSinceEpoch());
}

QMap<QString, QString> optionsOf(const QString& kind) {
  static const QHash<QString, QMap<QString, QString>> options = {
      {u"worldClockCity"_s, {{u"timezone"_s, u"Asia/Tokyo"_s}}},
      {u"worldClockList"_s, {{u"zones"_s, u"America/New_York,Europe/London,Asia/Tokyo"_s}}},
      {u"todayClock"_s, {{u"city"_s, u"Kendal"_s}}},
      {u"appLauncher"_s, {{u"path"_s, u"/usr/share/applications/browser.desktop"_s}}},
      {u"folderLauncher"_s, {{u"path"_s, u"/home/robin/Documents"_s}}},
      {u"pinnedWindow"_s, {{u"windowTitle"_s, u"Inbox"_s}, {u"appName"_s, u"Mail"_s}}},
      {u"appFolder"_s,
       {{u"paths"_s,
         u"/usr/share/applications/mail.desktop\n/usr/share/applications/music.desktop\n/usr/share/applications/messages.desktop\n/usr/share/applications/photos.desktop"_s}}},
      {u"scratchNote"_s, {{u"text"_s, u"Ask Ines about the museum tickets"_s}}},
      {u"drinkWater"_s, {{u"glasses"_s, u"5"_s}, {u"goal"_s, u"8"_s}, {u"day"_s, u"2026-11-24"_s}}},
      {u"habitTracker"_s,
       {{u"text"_s, u"Read"_s},
        {u"history"_s,
         u"2026-11-08,2026-11-09,2026-11-10,2026-11-12,2026-11-13,2026-11-14,2026-11-15,2026-11-16,"
         u"2026-11-18,2026-11-19,2026-11-21,2026-11-22,2026-11-23"_s}}},
      {u"pomodoro"_s, {{u"sessions"_s, u"2"_s}, {u"phase"_s, u"work"_s}, {u"deadline"_s, secondsFromNow(9 * 60 + 41)}}},
      {u"timer"_s, {{u"remaining"_s, u"1125"_s}}},
      {u"stopwatch"_s, {{u"started"_s, secondsFromNow(-192)}, {u"laps"_s, u"64.2,131.7"_s}}},
      {u"posture"_s,
       {{u"minutes"_s, u"45"_s},
        {u"standingMinutes"_s, u"15"_s},
        {u"phase"_s, u"seated"_s},
        {u"deadline"_s, secondsFromNow(24 * 60 + 10)}}},
      {u"calculator"_s,
       {{u"expression"_s, u"12 × 4 + 2"_s}, {u"calculations"_s, u"1250 ÷ 8 = 156.25\n(18 + 24) × 3 = 126"_s}}},
      {u"colorPicker"_s, {{u"color"_s, u"#2E8C94"_s}, {u"recentColors"_s, u"#2E8C94 #F5C542 #C5306E #1B2A3C"_s}}},
  };
  return options.value(kind);
}

TodoItem todo(const QString& text, bool done) {
  TodoItem item;
  item.id = QUuid::createUuidV5(QUuid(), text);
  item.text = text;
  item.completed = done;
  return item;
}

}  // namespace

QDateTime SnapshotFixture::moment() { return QDateTime(QDate(2026, 11, 24), QTime(10, 24, 36), QTimeZone::utc()); }

QLocale SnapshotFixture::locale() { return QLocale(QLocale::English, QLocale::UnitedKingdom); }

TileSources SnapshotFixture::sources() {
  constexpr double gigabyte = 1024.0 * 1024 * 1024;
  TileSources sources;
  sources.now = moment();
  sources.locale = locale();
  sources.metrics = MetricsSnapshot{.cpu = 23,
                                    .memory = 61,
                                    .memoryUsed = 9.8 * gigabyte,
                                    .memoryTotal = 16 * gigabyte,
                                    .battery = 82,
                                    .disk = 72,
                                    .diskFree = 140e9,
                                    .download = 2.4e6,
                                    .upload = 318e3};
  sources.cpuHistory = history(34, 24, 2, 23);
  sources.memoryHistory = history(54, 9, 7, 61);
  sources.networkHistory = history(1.8e6, 1.1e6, 3, 2.718e6);
  const auto absent = Capability::no(u"This computer has no Bluetooth adapter."_s);
  sources.toggles = {{Toggle::WiFi, {true, {}}},     {Toggle::Bluetooth, {false, absent}},
                     {Toggle::DarkMode, {true, {}}}, {Toggle::DoNotDisturb, {false, {}}},
                     {Toggle::Mute, {false, {}}},    {Toggle::KeepAwake, {false, {}}}};
  ApplicationFacts browser;
  browser.name = u"Browser"_s;
  browser.icon = u"browser"_s;
  browser.marks.running = true;
  sources.applications.insert(u"/usr/share/applications/browser.desktop"_s, browser);
  for (const QString& name : {u"Mail"_s, u"Music"_s, u"Messages"_s, u"Photos"_s})
    sources.applications.insert(u"/usr/share/applications/%1.desktop"_s.arg(name.toLower()),
                                {name, name.toLower(), 0, {}});
  sources.shelfItems = 3;
  sources.calendar = calendarFixture(sources.now);
  sources.readings = FileFixture::readings(sources.now);
  sources.trashItems = 12;
  const DockConfiguration config = configuration();
  sources.todos = config.todos;
  sources.latestNote = noteReading(notesByAge(config).first().options.value(u"text"_s));
  sources.weather = WeatherReading{u"6°"_s, u"Kendal"_s, u"Partly cloudy"_s, WeatherPicture::CloudSun};
  return sources;
}

DockWidget SnapshotFixture::widgetOf(const QString& kind) {
  return {QUuid::createUuidV5(QUuid(), kind), kind, {}, optionsOf(kind)};
}

DockConfiguration SnapshotFixture::configuration() {
  DockConfiguration config;
  config.onboardingComplete = true;
  config.profiles.clear();
  for (const WidgetDefinition& definition : Catalog::items()) {
    if (config.profiles.isEmpty() || config.profiles.last().widgets.size() >= 100) {
      config.profiles.append(DockProfile::initial());
      config.profiles.last().widgets.clear();
    }
    config.profiles.last().widgets.append(widgetOf(definition.id));
  }
  config.profiles.last().widgets.append(
      {QUuid::createUuidV5(QUuid(), u"latest note"_s),
       u"scratchNote"_s,
       {},
       {{u"text"_s, u"Dock review\nCheck the ring width at half the scale"_s}, {u"edited"_s, secondsFromNow(-600)}}});
  config.todos = {todo(u"Fix clipboard icon at 0.5 scale"_s, false), todo(u"Reply to Sam about the theme"_s, false),
                  todo(u"Book train for Friday"_s, false), todo(u"Write release notes"_s, true),
                  todo(u"Draw empty states for panels"_s, true)};
  config.shelf = {u"/home/robin/Quarterly summary.pdf"_s, u"/home/robin/tiles.png"_s, u"/home/robin/notes.txt"_s};
  return config;
}

DockRow SnapshotFixture::dock() {
  DockRow row = starterDock();
  for (const QString& kind : {u"dockSeparator"_s, u"quickTodo"_s, u"downloads"_s, u"trash"_s})
    row.widgets << widgetOf(kind);
  row.runningApps = row.runningApps.mid(0, 3);
  return row;
}

DockRow SnapshotFixture::starterDock() {
  DockRow row;
  for (const QString& kind : {u"applications"_s, u"digitalClock"_s, u"analogClassicLight"_s, u"weatherCurrent"_s,
                              u"cpu"_s, u"ram"_s, u"systemQuickToggles"_s})
    row.widgets << widgetOf(kind);
  for (const QString& name : {u"Browser"_s, u"Files"_s, u"Editor"_s, u"Terminal"_s, u"Mail"_s, u"Music"_s}) {
    DockApp app;
    app.id = static_cast<quint64>(row.runningApps.size()) + 1;
    app.name = name;
    app.icon = name.toLower();
    app.front = row.runningApps.isEmpty();
    row.runningApps << app;
  }
  return row;
}

SnapshotStore::SnapshotStore()
    : scheduler_(std::make_unique<FrozenScheduler>()), toggles_(std::make_unique<FixedToggles>()) {
  StoreSetup setup;
  setup.diagnostic = true;
  setup.platformReads = false;
  setup.scheduler = scheduler_.get();
  setup.counters = std::make_unique<NoCounters>();
  store_ = std::make_unique<AppStore>(std::move(setup));
  store_->setFrozenDate(SnapshotFixture::moment());
  store_->edit([](DockConfiguration& config) { config = SnapshotFixture::configuration(); });
  store_->apply(FileFixture::running());
  files_ = std::make_unique<FileFixture>(SnapshotFixture::moment(), *scheduler_);
}

SnapshotStore::~SnapshotStore() = default;

PanelContext SnapshotStore::contextOf(const QString& kind) {
  PanelActions actions;
  actions.openUrl = [](const QUrl&) {};
  actions.tryUrl = [](const QUrl&, const std::function<void(bool)>&) {};
  actions.openPath = [](const QString&) {};
  actions.openEditor = [](const QUuid&) {};
  actions.openMonitor = [] {};
  actions.copyText = [](const QString&) {};
  actions.openCalendar = [] {};
  actions.addCalendarFolder = [] {};
  actions.completeReminder = [](const Reminder&, bool) {};
  actions.applications = [apps = FileFixture::applications()] { return apps; };
  actions.startApplication = [](const QString&) {};
  actions.bringApplication = [](quint64) {};
  actions.windows = [] { return FileFixture::windows(); };
  actions.showWindow = [](quint64) {};
  actions.revealPath = [](const QString&) {};
  actions.openTrash = [] {};
  actions.emptyTrash = [] {};
  actions.endProcess = [](const ProcessReading&) {};
  actions.icon = &SnapshotScenery::icon;
  actions.pickColor = [](const std::function<void(const QString&)>&) {};
  return {*store_,      *scheduler_,
          *toggles_,    SnapshotFixture::widgetOf(kind).id,
          u"fixture"_s, [] { return SnapshotFixture::sources(); },
          actions,      files_->services()};
}

}  // namespace tarnwick
