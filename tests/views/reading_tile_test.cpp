#include <gtest/gtest.h>

#include <limits>

#include "DockFixture.h"
#include "views/families/clipboard/ClipboardTiles.h"
#include "views/families/files/PlaceTiles.h"
#include "views/families/system/MetricTiles.h"
#include "views/families/system/ProcessTiles.h"
#include "views/families/windows/RunningTiles.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TileContent.h"
#include "widgets/FileWords.h"
#include "widgets/ToggleChoice.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

constexpr double kNonsense = std::numeric_limits<double>::quiet_NaN();

template <class Content>
Content contentOf(const DockWidget& shown, const TileSources& sources) {
  return contentAs<Content>(makeTileContent(shown, Catalog::find(shown.kind), sources));
}

std::string spoken(const DockWidget& shown, const TileSources& sources) {
  return makeTileContent(shown, Catalog::find(shown.kind), sources).describe(u"N"_s).tip().toStdString();
}

ProcessUsage process(const QString& name, std::optional<double> cpu, quint64 memory) {
  return {{1, 1, name, 0, memory}, cpu};
}

}  // namespace

TEST(FileWords, SpeedsAndAges) {
  const QLocale english(QLocale::English, QLocale::UnitedKingdom);
  struct Speed {
    double bytes;
    double beside;
    std::string words;
  };
  for (const Speed& each :
       {Speed{0, 0, "0 kB/s"}, Speed{999, 0, "1 kB/s"}, Speed{318e3, 0, "318 kB/s"}, Speed{999.4e3, 0, "999 kB/s"},
        Speed{999.9e3, 0, "1.0 MB/s"}, Speed{12.44e6, 0, "12.4 MB/s"}, Speed{140e6, 0, "140 MB/s"},
        Speed{318e3, 2e6, "0.3 MB/s"}, Speed{3e12, 0, "3000 GB/s"}, Speed{-5, 0, "0 kB/s"},
        Speed{kNonsense, kNonsense, "0 kB/s"}}) {
    SpeedWords words = speedWords(english, each.bytes, each.beside);
    EXPECT_EQ((words.number.remove(u',') + u' ' + words.unit).toStdString(), each.words);
  }
  EXPECT_EQ(speedWords(QLocale(QLocale::German), 12.44e6).number, u"12,4"_s);

  const QDateTime now(QDate(2026, 11, 24), QTime(10, 24), Qt::UTC);
  struct Age {
    qint64 seconds;
    std::string words;
  };
  for (const Age& each :
       {Age{-600, "now"}, Age{59, "now"}, Age{130, "2 min ago"}, Age{3599, "59 min ago"}, Age{3600 * 10, "10 h ago"},
        Age{3600 * 11, "yesterday"}, Age{86400 * 3, "3 days ago"}, Age{86400 * 8, "16/11/2026"}})
    EXPECT_EQ(agoWord(now.addSecs(-each.seconds), now, english).toStdString(), each.words);
  struct Day {
    qint64 before;
    std::string words;
  };
  for (const Day& each :
       {Day{0, "today"}, Day{1, "yesterday"}, Day{5, "5 days ago"}, Day{7, "17/11/2026"}, Day{-1, "25/11/2026"}})
    EXPECT_EQ(dayWord(now.date().addDays(-each.before), now.date(), english).toStdString(), each.words);
  EXPECT_EQ(memoryWords(english, 9.8 * (1 << 30), 16.0 * (1 << 30)), u"9.8 of 16 GB"_s);
}

TEST(FolderTiles, ShowTheNewestFilesOnlyWhereTheUserWantsThat) {
  TileSources sources = morning();
  QImage picture(40, 30, QImage::Format_RGB32);
  picture.fill(Qt::red);
  sources.readings.stacks[u"/there"_s] = {{u"photo.png"_s, {u"photo"_s, picture}}, {u"notes.txt"_s, {u"notes"_s, {}}}};
  DockRow row;
  for (int i = 0; i < 3; ++i) {
    row.widgets.append(widget(u"folderLauncher"_s));
    row.widgets[i].options.insert(option::path, i < 2 ? u"/there"_s : u"/elsewhere"_s);
  }
  for (const int stacked : {1, 2}) row.widgets[stacked].options.insert(option::stack, value::on);
  EXPECT_EQ(spoken(row.widgets[0], sources), "there");
  EXPECT_EQ(spoken(row.widgets[1], sources), "there: photo.png, notes.txt");
  EXPECT_EQ(spoken(row.widgets[2], sources), "elsewhere") << "an empty stack is a folder";
  const auto view = makeView(row);
  view->refresh(sources);
  const QImage painted = paintedBy(*view);
  const auto middleOf = [&](int i) {
    return painted.pixelColor((view->itemRect(i).center() - QPointF(0, 9)).toPoint());
  };
  EXPECT_EQ(middleOf(1), QColor(Qt::red)) << "the newest lies on top";
  for (const int folder : {0, 2}) EXPECT_NE(middleOf(folder), QColor(Qt::red));
  keep(paintedBy(*view, 2), u"stacks"_s);
}

TEST(MachineTiles, SpeakAndKeepToTheirRange) {
  TileSources sources = morning();
  sources.metrics = MetricsSnapshot{.cpu = 23, .memory = 61, .battery = 19.6, .download = 2.4e6, .upload = 318e3};
  sources.cpuHistory = {10, kNonsense, 40};
  sources.readings.celsius = -0.4;
  sources.readings.celsiusHistory = {50, 50};
  const std::vector<std::pair<QString, std::string>> words = {
      {u"battery"_s, "N: 20%"},
      {u"cpuChart"_s, "N: 23%"},
      {u"systemChart"_s, "N: CPU 23%, RAM 61%"},
      {u"network"_s, "N: download 2.4 MB/s, upload 318 kB/s"},
      {u"networkChart"_s, "N: download 2.4 MB/s, upload 0.3 MB/s"},
      {u"networkUpload"_s, "N: 318 kB/s"},
      {u"temperature"_s, "N: 0°"},
      {u"temperatureChart"_s, "N: 0°, CPU core"},
  };
  for (const auto& [kind, expected] : words) EXPECT_EQ(spoken(widget(kind), sources), expected) << kind.toStdString();

  EXPECT_EQ(contentOf<MetricChartContent>(widget(u"cpuChart"_s), sources).high, 44);
  sources.cpuHistory = {1, 2};
  EXPECT_EQ(contentOf<MetricChartContent>(widget(u"cpuChart"_s), sources).high, 25) << "little work looks little";
  EXPECT_FALSE(contentOf<MetricChartContent>(widget(u"cpuChart"_s), sources).isAlarming);
  sources.metrics->cpu = 86;
  EXPECT_TRUE(contentOf<MetricChartContent>(widget(u"cpuChart"_s), sources).isAlarming);
  const auto warmth = contentOf<MetricChartContent>(widget(u"temperatureChart"_s), sources);
  EXPECT_EQ(warmth.low, 40);
  EXPECT_EQ(warmth.high, 60);

  sources.metrics->batteryFlow = BatteryFlow::Charging;
  EXPECT_EQ(spoken(widget(u"battery"_s), sources), "N: 20%, Charging");
  sources.toggles = {{Toggle::WiFi, {true, Capability::yes()}},
                     {Toggle::Mute, {false, Capability::no(u"No sound server was found."_s)}}};
  DockWidget switches = widget(u"systemQuickToggles"_s);
  switches.options.insert(ToggleChoice::key(), ToggleChoice::text({Toggle::WiFi, Toggle::Mute}));
  EXPECT_EQ(spoken(switches, sources), "N: Wi-Fi · Mute: No sound server was found.");

  sources.metrics->cpu = kNonsense;
  sources.metrics->battery.reset();
  sources.readings.celsius.reset();
  EXPECT_EQ(spoken(widget(u"battery"_s), sources), "N: None");
  EXPECT_EQ(spoken(widget(u"temperature"_s), sources), "N") << "nothing was asked yet";
  sources.readings.hasNoSensor = true;
  for (const QString& kind : {u"temperature"_s, u"temperatureChart"_s})
    EXPECT_EQ(spoken(widget(kind), sources), "N: This computer has no temperature sensor for its processor.");
  sources.readings.hasNoSensor = false;
  sources.metrics.reset();
  for (const auto& [kind, ignored] : words) EXPECT_EQ(spoken(widget(kind), sources), "N") << kind.toStdString();
}

TEST(MachineTiles, ALabelKeepsItsPlaceBesideEveryPercentage) {
  DockRow row;
  row.widgets = {widget(u"systemChart"_s)};
  const auto view = makeView(row);
  const auto painted = [&](double cpu) {
    TileSources sources = morning();
    sources.metrics.emplace();
    sources.metrics->cpu = cpu;
    sources.metrics->memory = 61;
    view->refresh(sources);
    return paintedBy(*view, 2);
  };
  const QPointF tile = view->itemRect(0).topLeft();
  const auto part = [&](const QImage& picture, double left, double width) {
    const QRectF box(tile.x() + left, tile.y() + 14, width, 17);
    return picture.copy(QRectF(box.topLeft() * 2, box.size() * 2).toRect());
  };
  const QImage few = painted(8);
  for (const double cpu : {0.0, 23.0, 99.0, 100.0}) {
    const QImage picture = painted(cpu);
    EXPECT_EQ(difference(part(few, 12, 36), part(picture, 12, 36)), 0) << "dot and label at " << cpu;
    EXPECT_NE(difference(part(few, 50, 33), part(picture, 50, 33)), 0) << "the figure at " << cpu;
    EXPECT_EQ(difference(part(few, 83, 7), part(picture, 83, 7)), 0) << "before the chart at " << cpu;
  }
}

TEST(MachineTiles, ProcessesAreSortedAsTheWidgetSays) {
  TileSources sources = morning();
  sources.readings.processMessage = u"Sampling processes…"_s;
  DockWidget top = widget(u"processTopApps"_s);
  EXPECT_EQ(spoken(top, sources), "N: Sampling processes…");
  sources.readings.processes = {process(u"a"_s, 5, 900 << 20), process(u"b"_s, std::nullopt, 1 << 20),
                                process(u"c"_s, 120.04, 2 << 20), process(u"d"_s, 1, 3 << 20)};
  EXPECT_EQ(spoken(top, sources), "N: c 120.0%, a 5.0%, d 1.0%");
  EXPECT_EQ(contentOf<ProcessesContent>(top, sources).rows.first().share, 1);
  top.options[u"sortBy"_s] = u"RAM"_s;
  EXPECT_EQ(spoken(top, sources), "N: a 900 MB, d 3 MB, c 2 MB");
  top.options[u"sortBy"_s] = u"nonsense"_s;
  EXPECT_EQ(processOrderOf(top), ProcessOrder::CPU);
}

TEST(AppTiles, ShowWhatRuns) {
  TileSources sources = morning();
  const DockWidget row = widget(u"openWindows"_s);
  EXPECT_EQ(spoken(row, sources), "N: No apps are open");
  for (const char* name : {"A", "B", "C", "D"})
    sources.running.append({1, QString::fromLatin1(name), {}, name[0] == 'C'});
  EXPECT_EQ(spoken(row, sources), "N: A, B, C, D");
  EXPECT_EQ(spoken(widget(u"appSwitcher"_s), sources), "N: C, A, B") << "the one in front lies before the others";

  sources.running.append({1, u"E"_s, {}, false});
  EXPECT_EQ(spoken(row, sources), "N: A, B, C, 2 more");
  const TileContent content = makeTileContent(row, Catalog::find(row.kind), sources);
  EXPECT_EQ(content.partAt({180, {20, 30}}), 0);
  EXPECT_EQ(content.partAt({180, {100, 30}}), 2);
  EXPECT_FALSE(content.partAt({180, {150, 30}})) << "the number opens the panel";

  DockWidget pinned = widget(u"pinnedWindow"_s);
  EXPECT_TRUE(makeTileContent(pinned, Catalog::find(pinned.kind), sources).as<GenericContent>());
  pinned.options[u"windowTitle"_s] = u"Budget"_s;
  pinned.options[u"appName"_s] = u"Sheets"_s;
  EXPECT_EQ(spoken(pinned, sources), "Budget: Sheets");
  sources.readings.pinnedWindows[pinned.id] = {u"1"_s, QImage(4, 4, QImage::Format_RGB32)};
  EXPECT_FALSE(contentOf<PinnedWindowContent>(pinned, sources).picture.image.isNull());
}

TEST(MeetingTiles, TellWhetherOneIsHeard) {
  TileSources sources = morning();
  const DockWidget zoom = widget(u"zoomMeeting"_s);
  EXPECT_EQ(spoken(zoom, sources), "N: No meeting");
  sources.readings.meeting = MeetingFacts{true, true, 1, {}, {}};
  EXPECT_EQ(spoken(zoom, sources), "N: Duration unavailable, 1 participant, muted");
  sources.readings.meeting = MeetingFacts{true, false, {}, u"12:05"_s, {}};
  EXPECT_EQ(spoken(zoom, sources), "N: 12:05, Participants unavailable");
}

TEST(FileTiles, TellWhatTheyKnow) {
  TileSources sources = morning();
  EXPECT_EQ(spoken(widget(u"bookmarks"_s), sources), "N");
  EXPECT_EQ(spoken(widget(u"recentFiles"_s), sources), "N");
  sources.readings.bookmarks = 0;
  sources.readings.recentNames = {u"a.txt"_s, u"b.txt"_s};
  EXPECT_EQ(spoken(widget(u"bookmarks"_s), sources), "N: 0");
  EXPECT_EQ(spoken(widget(u"recentFiles"_s), sources), "N: a.txt, b.txt");

  const DockWidget shots = widget(u"screenshots"_s);
  EXPECT_TRUE(contentOf<ScreenshotsContent>(shots, sources).pictures.isEmpty());
  sources.readings.screenshots.emplace();
  EXPECT_EQ(contentOf<ScreenshotsContent>(shots, sources).caption, u"None yet"_s);
  sources.readings.screenshots->append({{u"k"_s, {}}, sources.now.addSecs(-120)});
  const auto waiting = contentOf<ScreenshotsContent>(shots, sources);
  EXPECT_EQ(waiting.caption, u"2 min ago"_s);
  sources.readings.screenshots->first().picture.image = QImage(4, 4, QImage::Format_RGB32);
  EXPECT_NE(waiting, contentOf<ScreenshotsContent>(shots, sources)) << "the picture has come";
}

TEST(ClipboardTile, ShowsWhatWasCopiedLastOrWhatIsMissing) {
  TileSources sources = morning();
  const DockWidget tile = widget(u"clipboard"_s);
  sources.keepsClipboard = false;
  sources.readings.copied = ClipboardEntry{{}, ClipboardEntry::Kind::Text, u"secret"_s, {}, sources.now, false};
  EXPECT_EQ(spoken(tile, sources), "N: Paused. What you copy is not recorded.") << "what was kept before is not shown";
  sources.readings.copied.reset();
  EXPECT_EQ(spoken(tile, sources), "N: Clipboard history is off");
  sources.keepsClipboard = true;
  EXPECT_EQ(spoken(tile, sources), "N: Copy something to start your history.");
  sources.readings.clipboardProblem = u"It is broken."_s;
  EXPECT_EQ(spoken(tile, sources), "N: It is broken.");
  sources.readings.clipboardProblem.clear();

  using Kind = ClipboardEntry::Kind;
  struct Case {
    Kind kind;
    QString value;
    std::string said;
    bool hasSwatch = false;
  };
  for (const Case& each : std::initializer_list<Case>{
           {Kind::Text, u" two\n lines"_s, "N: two lines, Text · 2 min ago"},
           {Kind::Text, u" \n"_s, "N: Blanks, Text · 2 min ago"},
           {Kind::Link, u"https://www.example.org/a/long/path"_s, "N: example.org, Link · 2 min ago"},
           {Kind::Color, u"#2E8C94"_s, "N: #2E8C94, Colour · 2 min ago", true},
           {Kind::Color, u"rgb(999)"_s, "N: rgb(999), Colour · 2 min ago"},
           {Kind::File, u"/a/b.pdf"_s, "N: b.pdf, File · 2 min ago"},
           {Kind::Image, {}, "N: Picture, Image · 2 min ago"},
       }) {
    sources.readings.copied = ClipboardEntry{{}, each.kind, each.value, {}, sources.now.addSecs(-120), false};
    EXPECT_EQ(spoken(tile, sources), each.said);
    EXPECT_EQ(contentOf<ClipboardContent>(tile, sources).color.has_value(), each.hasSwatch) << each.said;
  }
}

}  // namespace tarnwick::testing
