#include <QtGlobal>

#include "widgets/catalog/CatalogRows.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::catalog {

namespace {

// clang-format off
constexpr QLatin1StringView social[] = {
    kind::youtubeStudio, kind::xStudio, kind::socialTwitter, kind::socialTikTok, kind::socialYouTube};
constexpr QLatin1StringView finance[] = {kind::revenuePolar, kind::revenueStripe, kind::revenueDodoPayments};
constexpr QLatin1StringView commerce[] = {kind::shopifyRevenue, kind::shopifyOverview, kind::shopifyTrends};
constexpr QLatin1StringView stocks[] = {kind::stockQuote, kind::stockChart, kind::stockWatchlist};
constexpr QLatin1StringView crypto[] = {kind::cryptoQuote, kind::cryptoChart, kind::cryptoWatchlist};
constexpr QLatin1StringView ai[] = {
    kind::claudePlanUsage, kind::claudePlanUsageGauge, kind::cursorPersonalUsage, kind::antigravityUsage,
    kind::glmUsage, kind::grokUsage, kind::openCodeUsage, kind::copilotUsage, kind::geminiAPIUsage,
    kind::perplexityUsage, kind::codexUsage, kind::codexUsageGauge, kind::analyticsClaudeCodeStatus,
    kind::analyticsCursorUsage};
constexpr QLatin1StringView analytics[] = {
    kind::analyticsDataFast, kind::analyticsDataFastChart, kind::analyticsSimpleAnalytics,
    kind::analyticsSimpleAnalyticsChart, kind::analyticsPlausible, kind::analyticsPlausibleChart,
    kind::analyticsSupabase, kind::analyticsSupabaseOverview, kind::analyticsGitHub, kind::analyticsGitHubOverview,
    kind::analyticsGitHubContributions, kind::analyticsResend, kind::analyticsResendOverview,
    kind::analyticsDubOverview};
constexpr QLatin1StringView clocks[] = {
    kind::timeOnly, kind::timeSeconds, kind::stopwatch, kind::timer, kind::pomodoro, kind::posture, kind::digitalClock,
    kind::flipClock, kind::worldClockList, kind::worldClockCity, kind::todayClock, kind::dateOnly, kind::dayNumber,
    kind::analogMinimal, kind::analogClassicLight, kind::analogClassicDark, kind::ringClock, kind::overlapClock,
    kind::pixelClock};
constexpr QLatin1StringView calendar[] = {
    kind::calendar, kind::calendarNextEvent, kind::calendarThreeEvents, kind::calendarDayAgenda, kind::calendarWeek,
    kind::calendarSevenDays, kind::calendarMonthProgress, kind::calendarDayProgress, kind::calendarYearProgress,
    kind::calendarMeetingCompact, kind::calendarMeetingDetail, kind::zoomMeeting};
constexpr QLatin1StringView reminders[] = {kind::remindersNext, kind::remindersToday, kind::remindersAgenda};
constexpr QLatin1StringView tasks[] = {kind::productivityLinear, kind::productivityLinearOverview, kind::quickTodo};
constexpr QLatin1StringView phone[] = {kind::phoneQuickContacts};
constexpr QLatin1StringView media[] = {
    kind::nowPlayingExpanded, kind::nowPlayingMini, kind::nowPlayingTimeline, kind::nowPlayingYouTubeVideo,
    kind::backgroundSounds};
constexpr QLatin1StringView photos[] = {kind::photosRecent, kind::wallpaper};
constexpr QLatin1StringView system[] = {
    kind::exercise, kind::drinkWater, kind::habitTracker, kind::cpu, kind::ram, kind::temperature,
    kind::temperatureChart, kind::cpuChart, kind::ramChart, kind::systemChart, kind::processTopApps, kind::network,
    kind::networkDownload, kind::networkUpload, kind::networkChart, kind::storage, kind::audioOutput, kind::appVolume,
    kind::microphoneMute, kind::clipboard, kind::screenshots, kind::recentFiles, kind::airdrop, kind::fileShelf,
    kind::screenshotCapture, kind::dropbox, kind::bookmarks, kind::dubShortener, kind::webSearch, kind::finderSearch,
    kind::appSwitcher, kind::systemQuickToggles, kind::emojiRecents, kind::voiceMemo, kind::converter, kind::calculator,
    kind::colorPicker, kind::dockSeparator, kind::dockSpace};
constexpr QLatin1StringView weather[] = {
    kind::weatherCurrent, kind::weatherDetailed, kind::weatherForecast, kind::weatherTodayForecast,
    kind::weatherCondition, kind::weatherHourly, kind::weatherWind, kind::weatherSunCycle};
constexpr QLatin1StringView mail[] = {
    kind::mailUnreadSummary, kind::mailLatest, kind::gmailUnreadSummary, kind::gmailLatest};
constexpr QLatin1StringView notes[] = {kind::notesLatest};

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

constexpr QLatin1StringView starters[] = {
    kind::applications, kind::digitalClock, kind::analogClassicLight, kind::weatherCurrent, kind::cpu, kind::ram,
    kind::systemQuickToggles};
constexpr QLatin1StringView suggestions[] = {
    kind::digitalClock, kind::analogClassicLight, kind::worldClockCity, kind::calendar, kind::calendarYearProgress,
    kind::timer, kind::pomodoro, kind::quickTodo, kind::cpuChart, kind::ram, kind::storage, kind::networkChart};
// clang-format on

}  // namespace

std::span<const Group> groups() { return allGroups; }

std::span<const QLatin1StringView> starterKinds() { return starters; }

std::span<const QLatin1StringView> suggestedKinds() { return suggestions; }

}  // namespace tarnwick::catalog
