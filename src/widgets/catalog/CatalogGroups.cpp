#include <QtGlobal>

#include "widgets/catalog/CatalogRows.h"

namespace tarnwick::catalog {

namespace {

// clang-format off
constexpr const char* social[] = {"youtubeStudio", "xStudio", "socialTwitter", "socialTikTok", "socialYouTube"};
constexpr const char* finance[] = {"revenuePolar", "revenueStripe", "revenueDodoPayments"};
constexpr const char* commerce[] = {"shopifyRevenue", "shopifyOverview", "shopifyTrends"};
constexpr const char* stocks[] = {"stockQuote", "stockChart", "stockWatchlist"};
constexpr const char* crypto[] = {"cryptoQuote", "cryptoChart", "cryptoWatchlist"};
constexpr const char* ai[] = {
    "claudePlanUsage", "claudePlanUsageGauge", "cursorPersonalUsage", "antigravityUsage", "glmUsage", "grokUsage",
    "openCodeUsage", "copilotUsage", "geminiAPIUsage", "perplexityUsage", "codexUsage", "codexUsageGauge",
    "analyticsClaudeCodeStatus", "analyticsCursorUsage"};
constexpr const char* analytics[] = {
    "analyticsDataFast", "analyticsDataFastChart", "analyticsSimpleAnalytics", "analyticsSimpleAnalyticsChart",
    "analyticsPlausible", "analyticsPlausibleChart", "analyticsSupabase", "analyticsSupabaseOverview",
    "analyticsGitHub", "analyticsGitHubOverview", "analyticsGitHubContributions", "analyticsResend",
    "analyticsResendOverview", "analyticsDubOverview"};
constexpr const char* clocks[] = {
    "timeOnly", "timeSeconds", "stopwatch", "timer", "pomodoro", "posture", "digitalClock", "flipClock",
    "worldClockList", "worldClockCity", "todayClock", "dateOnly", "dayNumber", "analogMinimal", "analogClassicLight",
    "analogClassicDark", "ringClock", "overlapClock", "pixelClock"};
constexpr const char* calendar[] = {
    "calendar", "calendarNextEvent", "calendarThreeEvents", "calendarDayAgenda", "calendarWeek", "calendarSevenDays",
    "calendarMonthProgress", "calendarDayProgress", "calendarYearProgress", "calendarMeetingCompact",
    "calendarMeetingDetail", "zoomMeeting"};
constexpr const char* reminders[] = {"remindersNext", "remindersToday", "remindersAgenda"};
constexpr const char* tasks[] = {"productivityLinear", "productivityLinearOverview", "quickTodo"};
constexpr const char* phone[] = {"phoneQuickContacts"};
constexpr const char* media[] = {
    "nowPlayingExpanded", "nowPlayingMini", "nowPlayingTimeline", "nowPlayingYouTubeVideo", "backgroundSounds"};
constexpr const char* photos[] = {"photosRecent", "wallpaper"};
constexpr const char* system[] = {
    "exercise", "drinkWater", "habitTracker", "cpu", "ram", "temperature", "temperatureChart", "cpuChart", "ramChart",
    "systemChart", "processTopApps", "network", "networkDownload", "networkUpload", "networkChart", "storage",
    "audioOutput", "appVolume", "microphoneMute", "clipboard", "screenshots", "recentFiles", "airdrop", "fileShelf",
    "screenshotCapture", "dropbox", "bookmarks", "dubShortener", "webSearch", "finderSearch", "appSwitcher",
    "systemQuickToggles", "emojiRecents", "voiceMemo", "converter", "calculator", "colorPicker", "dockSeparator",
    "dockSpace"};
constexpr const char* weather[] = {
    "weatherCurrent", "weatherDetailed", "weatherForecast", "weatherTodayForecast", "weatherCondition",
    "weatherHourly", "weatherWind", "weatherSunCycle"};
constexpr const char* mail[] = {"mailUnreadSummary", "mailLatest", "gmailUnreadSummary", "gmailLatest"};
constexpr const char* notes[] = {"notesLatest"};

constexpr Group allGroups[] = {
    {QT_TRANSLATE_NOOP("Catalog", "Social"),    "person.2",            social},
    {QT_TRANSLATE_NOOP("Catalog", "Finance"),   "creditcard",          finance},
    {QT_TRANSLATE_NOOP("Catalog", "Commerce"),  "bag",                 commerce},
    {QT_TRANSLATE_NOOP("Catalog", "Stocks"),    "chart.xyaxis.line",   stocks},
    {QT_TRANSLATE_NOOP("Catalog", "Crypto"),    "bitcoinsign.circle",  crypto},
    {QT_TRANSLATE_NOOP("Catalog", "AI"),        "sparkles",            ai},
    {QT_TRANSLATE_NOOP("Catalog", "Analytics"), "chart.bar",           analytics},
    {QT_TRANSLATE_NOOP("Catalog", "Clocks"),    "clock",               clocks},
    {QT_TRANSLATE_NOOP("Catalog", "Calendar"),  "calendar",            calendar},
    {QT_TRANSLATE_NOOP("Catalog", "Reminders"), "checklist",           reminders},
    {QT_TRANSLATE_NOOP("Catalog", "Tasks"),     "checkmark.square",    tasks},
    {QT_TRANSLATE_NOOP("Catalog", "Phone"),     "phone",               phone},
    {QT_TRANSLATE_NOOP("Catalog", "Media"),     "play.rectangle",      media},
    {QT_TRANSLATE_NOOP("Catalog", "Photos"),    "photo",               photos},
    {QT_TRANSLATE_NOOP("Catalog", "System"),    "slider.horizontal.3", system},
    {QT_TRANSLATE_NOOP("Catalog", "Weather"),   "cloud.sun",           weather},
    {QT_TRANSLATE_NOOP("Catalog", "Mail"),      "envelope",            mail},
    {QT_TRANSLATE_NOOP("Catalog", "Notes"),     "note.text",           notes},
};
// clang-format on

}  // namespace

std::span<const Group> groups() { return allGroups; }

}  // namespace tarnwick::catalog
