#include "widgets/catalog/CatalogRows.h"

#include <QtGlobal>

#include "widgets/catalog/Kinds.h"

namespace tarnwick::catalog {

namespace {

// Categories. A kind that is in a group of the library is listed under that group's name instead.
constexpr const char* clocks = QT_TRANSLATE_NOOP("Catalog", "Clocks");
constexpr const char* calendar = QT_TRANSLATE_NOOP("Catalog", "Calendar");
constexpr const char* productivity = QT_TRANSLATE_NOOP("Catalog", "Productivity");
constexpr const char* system = QT_TRANSLATE_NOOP("Catalog", "System");
constexpr const char* appsAndFiles = QT_TRANSLATE_NOOP("Catalog", "Apps & Files");
constexpr const char* utilities = QT_TRANSLATE_NOOP("Catalog", "Utilities");
constexpr const char* media = QT_TRANSLATE_NOOP("Catalog", "Media");
constexpr const char* weather = QT_TRANSLATE_NOOP("Catalog", "Weather");
constexpr const char* developer = QT_TRANSLATE_NOOP("Catalog", "Developer");
constexpr const char* business = QT_TRANSLATE_NOOP("Catalog", "Business");
constexpr const char* social = QT_TRANSLATE_NOOP("Catalog", "Social");
constexpr const char* finance = QT_TRANSLATE_NOOP("Catalog", "Finance");
constexpr const char* aiTools = QT_TRANSLATE_NOOP("Catalog", "AI Tools");
constexpr const char* layout = QT_TRANSLATE_NOOP("Catalog", "Layout");
constexpr const char* analytics = QT_TRANSLATE_NOOP("Catalog", "Analytics");

constexpr const char* risingLine = "chart.line.uptrend.xyaxis";

// What sets a few kinds apart from all others.
constexpr KindTraits lineTraits{.isGap = true, .isLine = true};
constexpr KindTraits gapTraits{.isGap = true};
constexpr KindTraits weekTraits{.beginsWithWeek = true};
constexpr KindTraits cityTraits{.showsCityWeather = true};
constexpr KindTraits pomodoroTraits{.run = TimerRun::Pomodoro};
constexpr KindTraits stopwatchTraits{.run = TimerRun::Stopwatch};
constexpr KindTraits postureTraits{.run = TimerRun::Posture};
constexpr KindTraits exerciseTraits{.run = TimerRun::Exercise};
constexpr KindTraits noteTraits{.isQuickNote = true};
constexpr KindTraits oldNoteTraits{.withText = kind::scratchNote};
constexpr KindTraits showsRunningApps{.needsRunningApps = true};
constexpr KindTraits windowTraits{.isPinnedWindow = true, .needsRunningApps = true};
constexpr KindTraits allAppsTraits{.readyMade = ReadyMade::Apps, .anchorsRunningApps = true};
constexpr KindTraits appTraits{.opens = TileOpens::Application,
                               .takes = TileTakes::Application,
                               .readyMade = ReadyMade::Apps,
                               .needsRunningApps = true};
constexpr KindTraits folderTraits{
    .opens = TileOpens::Folder, .takes = TileTakes::Folder, .readyMade = ReadyMade::Folders, .isFolder = true};
constexpr KindTraits downloadsTraits{.opens = TileOpens::Folder, .takes = TileTakes::Folder, .isDownloads = true};
constexpr KindTraits takesIntoFolder{.takes = TileTakes::Folder};
constexpr KindTraits shelfTraits{.takes = TileTakes::Shelf};
constexpr KindTraits trashTraits{.opens = TileOpens::Trash, .takes = TileTakes::Trash, .readyMade = ReadyMade::Apps};
constexpr KindTraits nearbyTraits{.takes = TileTakes::Share};
constexpr KindTraits codexTraits{.readsCodex = true};

constexpr Row allRows[] = {
#define KIND(word, shownName, ofCategory, symbolName, ofFamily, usualWidth, ...) \
  {.kind = kind::word,                                                           \
   .name = shownName,                                                            \
   .category = ofCategory,                                                       \
   .symbol = symbolName,                                                         \
   .family = ofFamily,                                                           \
   .width = usualWidth,                                                          \
   __VA_ARGS__},
#include "widgets/catalog/Catalog.inc"
};

namespace sections {
#define SECTION(word, shownName, symbolName, ...) constexpr QLatin1StringView word[] = {__VA_ARGS__};
#include "widgets/catalog/Catalog.inc"
}  // namespace sections

constexpr Group allGroups[] = {
#define SECTION(word, shownName, symbolName, ...) {shownName, symbolName, sections::word},
#include "widgets/catalog/Catalog.inc"
};

constexpr QLatin1StringView starters[] = {kind::applications,      kind::digitalClock, kind::analogClassicLight,
                                          kind::weatherCurrent,    kind::cpu,          kind::ram,
                                          kind::systemQuickToggles};
constexpr QLatin1StringView suggestions[] = {
    kind::digitalClock, kind::analogClassicLight, kind::worldClockCity, kind::calendar, kind::calendarYearProgress,
    kind::timer,        kind::pomodoro,           kind::quickTodo,      kind::cpuChart, kind::ram,
    kind::storage,      kind::networkChart};
constexpr QLatin1StringView standingReady[] = {kind::trash, kind::applications};
constexpr QLatin1StringView pictured[] = {kind::dockSeparator, kind::quickTodo, kind::downloads, kind::trash};

}  // namespace

std::span<const Row> rows() { return allRows; }

std::span<const Group> groups() { return allGroups; }

std::span<const QLatin1StringView> starterKinds() { return starters; }

std::span<const QLatin1StringView> suggestedKinds() { return suggestions; }

std::span<const QLatin1StringView> readyApps() { return standingReady; }

std::span<const QLatin1StringView> picturedKinds() { return pictured; }

}  // namespace tarnwick::catalog
