#pragma once

#include <QString>

/// The kinds of widgets, as DockWidget::kind holds them and the settings store them, in the order of the catalog. Code
/// that asks for a kind names it by these, so that a misspelt one does not compile.
namespace tarnwick::kind {

// Clocks.
inline constexpr QLatin1StringView digitalClock{"digitalClock"};
inline constexpr QLatin1StringView timeOnly{"timeOnly"};
inline constexpr QLatin1StringView timeSeconds{"timeSeconds"};
inline constexpr QLatin1StringView flipClock{"flipClock"};
inline constexpr QLatin1StringView pixelClock{"pixelClock"};
inline constexpr QLatin1StringView overlapClock{"overlapClock"};
inline constexpr QLatin1StringView ringClock{"ringClock"};
inline constexpr QLatin1StringView analogMinimal{"analogMinimal"};
inline constexpr QLatin1StringView analogClassicLight{"analogClassicLight"};
inline constexpr QLatin1StringView analogClassicDark{"analogClassicDark"};
inline constexpr QLatin1StringView worldClockCity{"worldClockCity"};
inline constexpr QLatin1StringView worldClockList{"worldClockList"};
inline constexpr QLatin1StringView dateOnly{"dateOnly"};
inline constexpr QLatin1StringView dayNumber{"dayNumber"};

// Calendar.
inline constexpr QLatin1StringView calendar{"calendar"};
inline constexpr QLatin1StringView calendarWeek{"calendarWeek"};
inline constexpr QLatin1StringView calendarSevenDays{"calendarSevenDays"};
inline constexpr QLatin1StringView calendarDayAgenda{"calendarDayAgenda"};
inline constexpr QLatin1StringView calendarThreeEvents{"calendarThreeEvents"};
inline constexpr QLatin1StringView calendarNextEvent{"calendarNextEvent"};
inline constexpr QLatin1StringView calendarMeeting{"calendarMeeting"};
inline constexpr QLatin1StringView calendarMeetingDetail{"calendarMeetingDetail"};
inline constexpr QLatin1StringView calendarMeetingCompact{"calendarMeetingCompact"};
inline constexpr QLatin1StringView todayOverview{"todayOverview"};

// Progress of the day, month and year.
inline constexpr QLatin1StringView calendarDayProgress{"calendarDayProgress"};
inline constexpr QLatin1StringView calendarMonthProgress{"calendarMonthProgress"};
inline constexpr QLatin1StringView calendarYearProgress{"calendarYearProgress"};

// Reminders.
inline constexpr QLatin1StringView remindersNext{"remindersNext"};
inline constexpr QLatin1StringView remindersToday{"remindersToday"};
inline constexpr QLatin1StringView remindersAgenda{"remindersAgenda"};

// Timers.
inline constexpr QLatin1StringView pomodoro{"pomodoro"};
inline constexpr QLatin1StringView timer{"timer"};
inline constexpr QLatin1StringView stopwatch{"stopwatch"};

// Notes and habits.
inline constexpr QLatin1StringView quickTodo{"quickTodo"};
inline constexpr QLatin1StringView notesLatest{"notesLatest"};
inline constexpr QLatin1StringView scratchNote{"scratchNote"};
inline constexpr QLatin1StringView phoneQuickContacts{"phoneQuickContacts"};
inline constexpr QLatin1StringView drinkWater{"drinkWater"};
inline constexpr QLatin1StringView habitTracker{"habitTracker"};
inline constexpr QLatin1StringView posture{"posture"};

// Readings of the machine.
inline constexpr QLatin1StringView cpu{"cpu"};
inline constexpr QLatin1StringView ram{"ram"};
inline constexpr QLatin1StringView storage{"storage"};
inline constexpr QLatin1StringView battery{"battery"};
inline constexpr QLatin1StringView cpuChart{"cpuChart"};
inline constexpr QLatin1StringView ramChart{"ramChart"};
inline constexpr QLatin1StringView systemChart{"systemChart"};
inline constexpr QLatin1StringView network{"network"};
inline constexpr QLatin1StringView networkDownload{"networkDownload"};
inline constexpr QLatin1StringView networkUpload{"networkUpload"};
inline constexpr QLatin1StringView networkChart{"networkChart"};

// Applications.
inline constexpr QLatin1StringView topApps{"topApps"};
inline constexpr QLatin1StringView pinnedWindow{"pinnedWindow"};
inline constexpr QLatin1StringView applications{"applications"};
inline constexpr QLatin1StringView appFolder{"appFolder"};
inline constexpr QLatin1StringView appLauncher{"appLauncher"};
inline constexpr QLatin1StringView openWindows{"openWindows"};

// Files.
inline constexpr QLatin1StringView folderLauncher{"folderLauncher"};
inline constexpr QLatin1StringView downloads{"downloads"};
inline constexpr QLatin1StringView recentFiles{"recentFiles"};
inline constexpr QLatin1StringView fileShelf{"fileShelf"};
inline constexpr QLatin1StringView screenshots{"screenshots"};

// Search and places.
inline constexpr QLatin1StringView trash{"trash"};
inline constexpr QLatin1StringView bookmarks{"bookmarks"};
inline constexpr QLatin1StringView finderSearch{"finderSearch"};
inline constexpr QLatin1StringView webSearch{"webSearch"};

// Utilities.
inline constexpr QLatin1StringView clipboard{"clipboard"};
inline constexpr QLatin1StringView calculator{"calculator"};
inline constexpr QLatin1StringView converter{"converter"};
inline constexpr QLatin1StringView colorPicker{"colorPicker"};
inline constexpr QLatin1StringView emojiRecents{"emojiRecents"};
inline constexpr QLatin1StringView screenshotCapture{"screenshotCapture"};

// Devices.
inline constexpr QLatin1StringView voiceMemo{"voiceMemo"};
inline constexpr QLatin1StringView systemQuickToggles{"systemQuickToggles"};
inline constexpr QLatin1StringView backgroundSound{"backgroundSound"};
inline constexpr QLatin1StringView keyboardCleaner{"keyboardCleaner"};
inline constexpr QLatin1StringView externalBattery{"externalBattery"};
inline constexpr QLatin1StringView temperature{"temperature"};
inline constexpr QLatin1StringView audioOutput{"audioOutput"};
inline constexpr QLatin1StringView microphoneMute{"microphoneMute"};

// Music.
inline constexpr QLatin1StringView nowPlayingMini{"nowPlayingMini"};
inline constexpr QLatin1StringView nowPlayingExpanded{"nowPlayingExpanded"};
inline constexpr QLatin1StringView nowPlayingTimeline{"nowPlayingTimeline"};
inline constexpr QLatin1StringView nowPlayingYouTubeVideo{"nowPlayingYouTubeVideo"};

// Pictures and flows.
inline constexpr QLatin1StringView photosRecent{"photosRecent"};
inline constexpr QLatin1StringView wallpaper{"wallpaper"};
inline constexpr QLatin1StringView airdrop{"airdrop"};
inline constexpr QLatin1StringView workflow{"workflow"};

// Weather.
inline constexpr QLatin1StringView weatherCurrent{"weatherCurrent"};
inline constexpr QLatin1StringView weatherDetailed{"weatherDetailed"};
inline constexpr QLatin1StringView weatherCondition{"weatherCondition"};
inline constexpr QLatin1StringView weatherForecast{"weatherForecast"};
inline constexpr QLatin1StringView weatherHourly{"weatherHourly"};
inline constexpr QLatin1StringView weatherWind{"weatherWind"};
inline constexpr QLatin1StringView weatherSunCycle{"weatherSunCycle"};
inline constexpr QLatin1StringView weatherTodayForecast{"weatherTodayForecast"};

// Services for developers.
inline constexpr QLatin1StringView analyticsGitHub{"analyticsGitHub"};
inline constexpr QLatin1StringView analyticsGitHubOverview{"analyticsGitHubOverview"};
inline constexpr QLatin1StringView analyticsGitHubContributions{"analyticsGitHubContributions"};
inline constexpr QLatin1StringView productivityLinear{"productivityLinear"};
inline constexpr QLatin1StringView productivityLinearOverview{"productivityLinearOverview"};
inline constexpr QLatin1StringView analyticsSupabase{"analyticsSupabase"};
inline constexpr QLatin1StringView analyticsSupabaseOverview{"analyticsSupabaseOverview"};

// Services for business.
inline constexpr QLatin1StringView revenueStripe{"revenueStripe"};
inline constexpr QLatin1StringView revenuePolar{"revenuePolar"};
inline constexpr QLatin1StringView revenueDodoPayments{"revenueDodoPayments"};
inline constexpr QLatin1StringView revenueLemonSqueezy{"revenueLemonSqueezy"};
inline constexpr QLatin1StringView shopifyRevenue{"shopifyRevenue"};
inline constexpr QLatin1StringView shopifyOverview{"shopifyOverview"};
inline constexpr QLatin1StringView shopifyTrends{"shopifyTrends"};
inline constexpr QLatin1StringView analyticsResend{"analyticsResend"};
inline constexpr QLatin1StringView analyticsResendOverview{"analyticsResendOverview"};
inline constexpr QLatin1StringView analyticsDubOverview{"analyticsDubOverview"};
inline constexpr QLatin1StringView dubShortener{"dubShortener"};
inline constexpr QLatin1StringView analyticsPlausible{"analyticsPlausible"};
inline constexpr QLatin1StringView analyticsPlausibleChart{"analyticsPlausibleChart"};
inline constexpr QLatin1StringView analyticsSimpleAnalytics{"analyticsSimpleAnalytics"};
inline constexpr QLatin1StringView analyticsDataFast{"analyticsDataFast"};
inline constexpr QLatin1StringView analyticsDataFastChart{"analyticsDataFastChart"};

// Social networks.
inline constexpr QLatin1StringView socialTwitter{"socialTwitter"};
inline constexpr QLatin1StringView xStudio{"xStudio"};
inline constexpr QLatin1StringView socialTikTok{"socialTikTok"};
inline constexpr QLatin1StringView socialYouTube{"socialYouTube"};
inline constexpr QLatin1StringView youtubeStudio{"youtubeStudio"};
inline constexpr QLatin1StringView socialInstagram{"socialInstagram"};

// Finance.
inline constexpr QLatin1StringView stockQuote{"stockQuote"};
inline constexpr QLatin1StringView stockChart{"stockChart"};
inline constexpr QLatin1StringView stockWatchlist{"stockWatchlist"};
inline constexpr QLatin1StringView cryptoQuote{"cryptoQuote"};
inline constexpr QLatin1StringView cryptoChart{"cryptoChart"};
inline constexpr QLatin1StringView cryptoWatchlist{"cryptoWatchlist"};

// Files, mail, meetings and the home.
inline constexpr QLatin1StringView dropbox{"dropbox"};
inline constexpr QLatin1StringView gmailLatest{"gmailLatest"};
inline constexpr QLatin1StringView gmailUnreadSummary{"gmailUnreadSummary"};
inline constexpr QLatin1StringView mailLatest{"mailLatest"};
inline constexpr QLatin1StringView mailUnreadSummary{"mailUnreadSummary"};
inline constexpr QLatin1StringView zoomMeeting{"zoomMeeting"};
inline constexpr QLatin1StringView homeAssistant{"homeAssistant"};
inline constexpr QLatin1StringView appleHome{"appleHome"};

// AI tools.
inline constexpr QLatin1StringView analyticsCursorUsage{"analyticsCursorUsage"};
inline constexpr QLatin1StringView cursorPersonalUsage{"cursorPersonalUsage"};
inline constexpr QLatin1StringView claudePlanUsage{"claudePlanUsage"};
inline constexpr QLatin1StringView claudePlanUsageGauge{"claudePlanUsageGauge"};
inline constexpr QLatin1StringView analyticsClaudeCodeStatus{"analyticsClaudeCodeStatus"};
inline constexpr QLatin1StringView codexUsageGauge{"codexUsageGauge"};
inline constexpr QLatin1StringView copilotUsage{"copilotUsage"};
inline constexpr QLatin1StringView geminiAPIUsage{"geminiAPIUsage"};
inline constexpr QLatin1StringView grokUsage{"grokUsage"};
inline constexpr QLatin1StringView glmUsage{"glmUsage"};
inline constexpr QLatin1StringView openCodeUsage{"openCodeUsage"};
inline constexpr QLatin1StringView antigravityUsage{"antigravityUsage"};
inline constexpr QLatin1StringView perplexityUsage{"perplexityUsage"};

// Gaps in the dock, and what came later.
inline constexpr QLatin1StringView dockSeparator{"dockSeparator"};
inline constexpr QLatin1StringView dockSpace{"dockSpace"};
inline constexpr QLatin1StringView codexUsage{"codexUsage"};
inline constexpr QLatin1StringView analyticsSimpleAnalyticsChart{"analyticsSimpleAnalyticsChart"};
inline constexpr QLatin1StringView todayClock{"todayClock"};
inline constexpr QLatin1StringView appSwitcher{"appSwitcher"};
inline constexpr QLatin1StringView processTopApps{"processTopApps"};
inline constexpr QLatin1StringView temperatureChart{"temperatureChart"};
inline constexpr QLatin1StringView appVolume{"appVolume"};
inline constexpr QLatin1StringView exercise{"exercise"};
inline constexpr QLatin1StringView backgroundSounds{"backgroundSounds"};

}  // namespace tarnwick::kind
