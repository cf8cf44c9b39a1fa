#include "views/families/TileKinds.h"

#include <QLatin1StringView>
#include <algorithm>
#include <array>

#include "views/families/apps/AppTiles.h"
#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/MeetingTiles.h"
#include "views/families/calendar/OverviewTiles.h"
#include "views/families/calendar/ProgressTiles.h"
#include "views/families/calendar/ReminderTiles.h"
#include "views/families/clocks/ClockTiles.h"
#include "views/families/clocks/DateTiles.h"
#include "views/families/clocks/DigitTiles.h"
#include "views/families/files/FileTiles.h"
#include "views/families/files/PlaceTiles.h"
#include "views/families/gaps/GapTiles.h"
#include "views/families/habits/HabitTiles.h"
#include "views/families/notes/NoteTiles.h"
#include "views/families/system/GaugeTiles.h"
#include "views/families/system/MetricTiles.h"
#include "views/families/system/NetworkTiles.h"
#include "views/families/system/ProcessTiles.h"
#include "views/families/timers/TimerTiles.h"
#include "views/families/toggles/ToggleTiles.h"
#include "views/families/utilities/UtilityTiles.h"
#include "views/families/weather/WeatherTiles.h"
#include "views/families/windows/RunningTiles.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct ContentRow {
  QLatin1StringView word;  ///< A kind or a family; a kind wins.
  TileContent (*make)(const TileRequest&);
};

template <auto Make>
TileContent made(const TileRequest& request) {
  return Make(request);
}

/// A launcher that was given no application yet has only its name to show.
TileContent launcher(const TileRequest& request) {
  if (!request.widget.options.value(QStringLiteral("path")).isEmpty()) return makeLauncher(request);
  GenericContent content = makeGeneric(request);
  content.word = TileWords::tr("Choose app");
  content.opensEditor = true;
  return content;
}

/// Without a calendar there is nothing to show but the way to one.
template <auto Make>
TileContent fromCalendar(const TileRequest& request) {
  if (auto notice = calendarNotice(request)) return *std::move(notice);
  return Make(request);
}

template <auto Make>
TileContent fromReminders(const TileRequest& request) {
  if (auto notice = remindersNotice(request)) return *std::move(notice);
  return Make(request);
}

/// One that shows no window yet has only its name to show.
TileContent pinnedWindow(const TileRequest& request) {
  if (!request.widget.options.value(QStringLiteral("windowTitle")).isEmpty()) return makePinnedWindow(request);
  GenericContent content = makeGeneric(request);
  content.word = TileWords::tr("Choose window");
  content.opensEditor = true;
  return content;
}

/// A tile without room for its whole name is called by what it does.
TileContent calledByDeed(const TileRequest& request, const QString& deed) {
  GenericContent content = makeGeneric(request);
  if (request.widget.title.isEmpty()) content.name = deed;
  return content;
}
TileContent capture(const TileRequest& request) { return calledByDeed(request, TileWords::tr("Capture")); }
TileContent cleanKeys(const TileRequest& request) { return calledByDeed(request, TileWords::tr("Clean keys")); }
TileContent batteries(const TileRequest& request) { return calledByDeed(request, TileWords::tr("Batteries")); }
TileContent music(const TileRequest& request) { return calledByDeed(request, TileWords::tr("Music")); }

/// Which widgets have a painter of their own.
constexpr std::array kContentRows = {
    ContentRow{"applications"_L1, made<makeApplications>},
    ContentRow{"digitalClock"_L1, made<makeTimeDate>},
    ContentRow{"analogClassicLight"_L1, made<makeAnalogClock>},
    ContentRow{"analogClassicDark"_L1, made<makeDarkClock>},
    ContentRow{"analogMinimal"_L1, made<makeMinimalClock>},
    ContentRow{"timeOnly"_L1, made<makeTimeOnly>},
    ContentRow{"timeSeconds"_L1, made<makeTimeSeconds>},
    ContentRow{"flipClock"_L1, made<makeFlipClock>},
    ContentRow{"pixelClock"_L1, made<makePixelClock>},
    ContentRow{"overlapClock"_L1, made<makeOverlapClock>},
    ContentRow{"ringClock"_L1, made<makeRingClock>},
    ContentRow{"worldClockCity"_L1, made<makeWorldTime>},
    ContentRow{"worldClockList"_L1, made<makeWorldList>},
    ContentRow{"dateOnly"_L1, made<makeDate>},
    ContentRow{"dayNumber"_L1, made<makeDayNumber>},
    ContentRow{"todayClock"_L1, made<makeTodayClock>},
    ContentRow{"calendar"_L1, made<makeTodayEvent>},
    ContentRow{"calendarWeek"_L1, made<makeWeek>},
    ContentRow{"calendarSevenDays"_L1, fromCalendar<makeSevenDays>},
    ContentRow{"calendarDayAgenda"_L1, fromCalendar<makeDayAgenda>},
    ContentRow{"calendarThreeEvents"_L1, fromCalendar<makeThreeEvents>},
    ContentRow{"calendarNextEvent"_L1, fromCalendar<makeNextEvent>},
    ContentRow{"calendarMeeting"_L1, fromCalendar<makeMeetings>},
    ContentRow{"calendarMeetingDetail"_L1, fromCalendar<makeMeetingCenter>},
    ContentRow{"calendarMeetingCompact"_L1, fromCalendar<makeNextMeeting>},
    ContentRow{"todayOverview"_L1, made<makeTodayOverview>},
    ContentRow{"calendarDayProgress"_L1, made<makeDayProgress>},
    ContentRow{"calendarMonthProgress"_L1, made<makeMonthProgress>},
    ContentRow{"calendarYearProgress"_L1, made<makeYearProgress>},
    ContentRow{"remindersNext"_L1, fromReminders<makeNextReminder>},
    ContentRow{"remindersToday"_L1, fromReminders<makeDueToday>},
    ContentRow{"remindersAgenda"_L1, fromReminders<makeRemindersAgenda>},
    ContentRow{"weatherCurrent"_L1, made<makeCurrentWeather>},
    ContentRow{"weather"_L1, made<makePlacelessWeather>},
    ContentRow{"cpu"_L1, made<makeCpuGauge>},
    ContentRow{"ram"_L1, made<makeMemoryGauge>},
    ContentRow{"storage"_L1, made<makeStorageGauge>},
    ContentRow{"systemQuickToggles"_L1, made<makeToggles>},
    ContentRow{"appLauncher"_L1, launcher},
    ContentRow{"appFolder"_L1, made<makeAppFolder>},
    ContentRow{"folderLauncher"_L1, made<makeFolder>},
    ContentRow{"downloads"_L1, made<makeDownloads>},
    ContentRow{"trash"_L1, made<makeTrash>},
    ContentRow{"fileShelf"_L1, made<makeShelf>},
    ContentRow{"pomodoro"_L1, made<makeTimer>},
    ContentRow{"timer"_L1, made<makeTimer>},
    ContentRow{"stopwatch"_L1, made<makeTimer>},
    ContentRow{"posture"_L1, made<makeTimer>},
    ContentRow{"exercise"_L1, made<makeTimer>},
    ContentRow{"drinkWater"_L1, made<makeWater>},
    ContentRow{"habitTracker"_L1, made<makeHabit>},
    ContentRow{"quickTodo"_L1, made<makeTodos>},
    ContentRow{"scratchNote"_L1, made<makeNote>},
    ContentRow{"notesLatest"_L1, made<makeLatestNote>},
    ContentRow{"calculator"_L1, made<makeCalculator>},
    ContentRow{"converter"_L1, made<makeConverter>},
    ContentRow{"colorPicker"_L1, made<makeColor>},
    ContentRow{"emojiRecents"_L1, made<makeEmoji>},
    ContentRow{"screenshotCapture"_L1, capture},
    ContentRow{"keyboardCleaner"_L1, cleanKeys},
    ContentRow{"externalBattery"_L1, batteries},
    ContentRow{"nowPlayingMini"_L1, music},
    ContentRow{"battery"_L1, made<makeBattery>},
    ContentRow{"cpuChart"_L1, made<makeCpuChart>},
    ContentRow{"ramChart"_L1, made<makeMemoryChart>},
    ContentRow{"systemChart"_L1, made<makeSystemChart>},
    ContentRow{"network"_L1, made<makeNetwork>},
    ContentRow{"networkDownload"_L1, made<makeDownload>},
    ContentRow{"networkUpload"_L1, made<makeUpload>},
    ContentRow{"networkChart"_L1, made<makeNetworkChart>},
    ContentRow{"temperature"_L1, made<makeTemperature>},
    ContentRow{"temperatureChart"_L1, made<makeTemperatureChart>},
    ContentRow{"processTopApps"_L1, made<makeProcesses>},
    ContentRow{"openWindows"_L1, made<makeRunningApps>},
    ContentRow{"topApps"_L1, made<makeSwitcher>},
    ContentRow{"appSwitcher"_L1, made<makeSwitcher>},
    ContentRow{"pinnedWindow"_L1, pinnedWindow},
    ContentRow{"recentFiles"_L1, made<makeRecentFiles>},
    ContentRow{"screenshots"_L1, made<makeScreenshots>},
    ContentRow{"bookmarks"_L1, made<makeBookmarks>},
    ContentRow{"finderSearch"_L1, made<makeFileSearch>},
    ContentRow{"webSearch"_L1, made<makeWebSearch>},
    ContentRow{"dockSeparator"_L1, made<makeSeparator>},
    ContentRow{"dockSpace"_L1, made<makeSpace>},
};

struct AccentRow {
  QLatin1StringView word;  ///< A kind or a family.
  Accent accent;
};

/// Kinds first, since one may differ from its family. What is not listed is blue.
constexpr std::array kAccents = {
    AccentRow{"ram"_L1, Accent::Purple},
    AccentRow{"ramChart"_L1, Accent::Purple},
    AccentRow{"network"_L1, Accent::Teal},
    AccentRow{"networkDownload"_L1, Accent::Teal},
    AccentRow{"networkUpload"_L1, Accent::Teal},
    AccentRow{"networkChart"_L1, Accent::Teal},
    AccentRow{"storage"_L1, Accent::Blue},
    AccentRow{"pomodoro"_L1, Accent::Red},
    AccentRow{"posture"_L1, Accent::Teal},
    AccentRow{"microphoneMute"_L1, Accent::Red},
    AccentRow{"metric"_L1, Accent::Green},
    AccentRow{"processes"_L1, Accent::Green},
    AccentRow{"accessoryBattery"_L1, Accent::Green},
    AccentRow{"temperature"_L1, Accent::Orange},
    AccentRow{"dayNumber"_L1, Accent::Red},
    AccentRow{"clock"_L1, Accent::Orange},
    AccentRow{"timer"_L1, Accent::Orange},
    AccentRow{"calendar"_L1, Accent::Red},
    AccentRow{"progress"_L1, Accent::Red},
    AccentRow{"reminders"_L1, Accent::Orange},
    AccentRow{"todos"_L1, Accent::Green},
    AccentRow{"habit"_L1, Accent::Green},
    AccentRow{"notes"_L1, Accent::Yellow},
    AccentRow{"nativeNotes"_L1, Accent::Yellow},
    AccentRow{"audio"_L1, Accent::Pink},
    AccentRow{"appVolume"_L1, Accent::Pink},
    AccentRow{"music"_L1, Accent::Pink},
    AccentRow{"voice"_L1, Accent::Red},
    AccentRow{"sounds"_L1, Accent::Teal},
};

/// The same accent for every tile of one service.
Accent serviceAccent(const WidgetDefinition& definition) {
  static constexpr std::array accents = {Accent::Purple, Accent::Teal,  Accent::Orange, Accent::Blue,
                                         Accent::Red,    Accent::Green, Accent::Pink};
  const QString service = definition.asset.isEmpty() ? definition.name.section(u' ', 0, 0) : definition.asset;
  std::size_t sum = 0;
  for (const QChar letter : service) sum += letter.unicode();
  return accents[sum % accents.size()];
}

}  // namespace

TileContent makeTileContent(const DockWidget& widget, const WidgetDefinition& definition, const TileSources& sources) {
  const TileRequest request{widget, definition, sources};
  for (const QString& word : {definition.id, definition.family})
    if (const auto row = std::ranges::find(kContentRows, word, &ContentRow::word); row != kContentRows.end())
      return row->make(request);
  return makeGeneric(request);
}

QString tileProblem(const WidgetDefinition& definition, const TileSources& sources) {
  if (definition.id == "screenshots"_L1) return sources.readings.screenshotProblem;
  const bool hasCalendar = definition.family == "calendar"_L1 || definition.family == "reminders"_L1;
  return hasCalendar && sources.calendar ? sources.calendar->problem : QString();
}

Accent tileAccent(const WidgetDefinition& definition) {
  if (isConnectedFamily(definition.family)) return serviceAccent(definition);
  for (const QString& word : {definition.id, definition.family})
    if (const auto row = std::ranges::find(kAccents, word, &AccentRow::word); row != kAccents.end()) return row->accent;
  return Accent::Blue;
}

}  // namespace tarnwick
