#include "widgets/catalog/CatalogRows.h"

#include <QtGlobal>

#include "widgets/catalog/Kinds.h"

namespace tarnwick::catalog {

namespace {

// Categories. A kind that stands in a group of the library is listed under that group's name instead.
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

// One kind a line: kind, plain name, category, symbol, family, width, brand image. A name that displayNames replaces is
// never shown and so not marked for translation.
// clang-format off
constexpr Row allRows[] = {
    // Clocks.
    {kind::digitalClock,       "Digital Clock",                                     clocks, "clock.fill", "clock", 150},
    {kind::timeOnly,           "Time Only",                                         clocks, "clock.fill", "clock", 150},
    {kind::timeSeconds,        "Time with Seconds",                                 clocks, "clock.fill", "clock", 150},
    {kind::flipClock,          QT_TRANSLATE_NOOP("Catalog", "Flip Clock"),          clocks, "clock.fill", "clock", 150},
    {kind::pixelClock,         QT_TRANSLATE_NOOP("Catalog", "Pixel Clock"),         clocks, "clock.fill", "clock", 150},
    {kind::overlapClock,       QT_TRANSLATE_NOOP("Catalog", "Overlap Clock"),       clocks, "clock.fill", "clock", 150},
    {kind::ringClock,          QT_TRANSLATE_NOOP("Catalog", "Ring Clock"),          clocks, "clock.fill", "clock", 80},
    {kind::analogMinimal,      QT_TRANSLATE_NOOP("Catalog", "Analog Minimal"),      clocks, "clock.fill", "clock", 80},
    {kind::analogClassicLight, "Analog Classic Light",                              clocks, "clock.fill", "clock", 80},
    {kind::analogClassicDark,  QT_TRANSLATE_NOOP("Catalog", "Analog Classic Dark"), clocks, "clock.fill", "clock", 80},
    {kind::worldClockCity,     "World Clock",                                       clocks, "clock.fill", "clock", 150},
    {kind::worldClockList,     "World Clock List",                                  clocks, "clock.fill", "clock", 150},
    {kind::dateOnly,           QT_TRANSLATE_NOOP("Catalog", "Date"),                clocks, "clock.fill", "clock", 150},
    {kind::dayNumber,          QT_TRANSLATE_NOOP("Catalog", "Day Number"),          clocks, "clock.fill", "clock", 80},

    // Calendar.
    {kind::calendar,               "Calendar",                                     calendar, "calendar", "calendar", 180},
    {kind::calendarWeek,           "Calendar Week",                                calendar, "calendar", "calendar", 180},
    {kind::calendarSevenDays,      QT_TRANSLATE_NOOP("Catalog", "7 Days"),         calendar, "calendar", "calendar", 180},
    {kind::calendarDayAgenda,      "Day Agenda",                                   calendar, "calendar", "calendar", 180},
    {kind::calendarThreeEvents,    "Next Three Events",                            calendar, "calendar", "calendar", 180},
    {kind::calendarNextEvent,      QT_TRANSLATE_NOOP("Catalog", "Next Event"),     calendar, "calendar", "calendar", 180},
    {kind::calendarMeeting,        QT_TRANSLATE_NOOP("Catalog", "Meetings"),       calendar, "calendar", "calendar", 180},
    {kind::calendarMeetingDetail,  "Meeting Details",                              calendar, "calendar", "calendar", 180},
    {kind::calendarMeetingCompact, "Compact Meeting",                              calendar, "calendar", "calendar", 180},
    {kind::todayOverview,          QT_TRANSLATE_NOOP("Catalog", "Today Overview"), calendar, "calendar", "calendar", 180},

    // Progress of the day, month and year.
    {kind::calendarDayProgress,   QT_TRANSLATE_NOOP("Catalog", "Day Progress"),   calendar, "chart.pie.fill", "progress", 140},
    {kind::calendarMonthProgress, QT_TRANSLATE_NOOP("Catalog", "Month Progress"), calendar, "chart.pie.fill", "progress", 140},
    {kind::calendarYearProgress,  QT_TRANSLATE_NOOP("Catalog", "Year Progress"),  calendar, "chart.pie.fill", "progress", 140},

    // Reminders.
    {kind::remindersNext,   QT_TRANSLATE_NOOP("Catalog", "Next Reminder"),    productivity, "checklist", "reminders", 180},
    {kind::remindersToday,  "Today's Reminders",                              productivity, "checklist", "reminders", 180},
    {kind::remindersAgenda, QT_TRANSLATE_NOOP("Catalog", "Reminders Agenda"), productivity, "checklist", "reminders", 180},

    // Timers.
    {kind::pomodoro,  QT_TRANSLATE_NOOP("Catalog", "Pomodoro"),  productivity, "timer",          "timer", 130},
    {kind::timer,     QT_TRANSLATE_NOOP("Catalog", "Timer"),     productivity, "hourglass",      "timer", 130},
    {kind::stopwatch, QT_TRANSLATE_NOOP("Catalog", "Stopwatch"), productivity, "stopwatch.fill", "timer", 130},

    // Notes and habits.
    {kind::quickTodo,          "Todos",                                          productivity, "checklist",             "todos",       180},
    {kind::notesLatest,        "Notes",                                          productivity, "note.text",             "nativeNotes", 170},
    {kind::scratchNote,        QT_TRANSLATE_NOOP("Catalog", "Quick Note"),       productivity, "square.and.pencil",     "notes",       170},
    {kind::phoneQuickContacts, QT_TRANSLATE_NOOP("Catalog", "Quick Contacts"),   productivity, "person.crop.circle",    "contacts",    170},
    {kind::drinkWater,         QT_TRANSLATE_NOOP("Catalog", "Drink Water"),      productivity, "drop.fill",             "water",       90},
    {kind::habitTracker,       QT_TRANSLATE_NOOP("Catalog", "Habit Tracker"),    productivity, "checkmark.circle.fill", "habit",       120},
    {kind::posture,            QT_TRANSLATE_NOOP("Catalog", "Posture Reminder"), productivity, "figure.seated.side",    "timer",       130},

    // Readings of the machine.
    {kind::cpu,             QT_TRANSLATE_NOOP("Catalog", "CPU"),            system, "cpu",               "metric", 76},
    {kind::ram,             "Memory",                                       system, "memorychip",        "metric", 76},
    {kind::storage,         QT_TRANSLATE_NOOP("Catalog", "Storage"),        system, "internaldrive",     "metric", 76},
    {kind::battery,         QT_TRANSLATE_NOOP("Catalog", "Battery"),        system, "battery.100",       "metric", 76},
    {kind::cpuChart,        QT_TRANSLATE_NOOP("Catalog", "CPU Chart"),      system, "cpu",               "metric", 160},
    {kind::ramChart,        "Memory Chart",                                 system, "memorychip",        "metric", 160},
    {kind::systemChart,     "System Chart",                                 system, "chart.xyaxis.line", "metric", 160},
    {kind::network,         QT_TRANSLATE_NOOP("Catalog", "Network"),        system, "network",           "metric", 160},
    {kind::networkDownload, QT_TRANSLATE_NOOP("Catalog", "Download Speed"), system, "arrow.down",        "metric", 160},
    {kind::networkUpload,   QT_TRANSLATE_NOOP("Catalog", "Upload Speed"),   system, "arrow.up",          "metric", 160},
    {kind::networkChart,    QT_TRANSLATE_NOOP("Catalog", "Network Chart"),  system, "chart.xyaxis.line", "metric", 160},

    // Applications.
    {kind::topApps,      QT_TRANSLATE_NOOP("Catalog", "App Switcher"),  appsAndFiles, "macwindow.on.rectangle", "windows",  100},
    {kind::pinnedWindow, QT_TRANSLATE_NOOP("Catalog", "Pinned Window"), appsAndFiles, "pin.fill",               "windows",  140},
    {kind::applications, QT_TRANSLATE_NOOP("Catalog", "Applications"),  appsAndFiles, "square.grid.2x2.fill",   "apps",     68},
    {kind::appFolder,    QT_TRANSLATE_NOOP("Catalog", "App Folder"),    appsAndFiles, "square.grid.2x2.fill",   "apps",     76},
    {kind::appLauncher,  QT_TRANSLATE_NOOP("Catalog", "App Launcher"),  appsAndFiles, "app.fill",               "launcher", 70},
    {kind::openWindows,  QT_TRANSLATE_NOOP("Catalog", "Running Apps"),  appsAndFiles, "macwindow.on.rectangle", "apps",     180},

    // Files.
    {kind::folderLauncher, QT_TRANSLATE_NOOP("Catalog", "Folder"),             appsAndFiles, "folder.fill", "files", 100},
    {kind::downloads,      QT_TRANSLATE_NOOP("Catalog", "Downloads"),          appsAndFiles, "folder.fill", "files", 100},
    {kind::recentFiles,    QT_TRANSLATE_NOOP("Catalog", "Recent Files"),       appsAndFiles, "folder.fill", "files", 100},
    {kind::fileShelf,      QT_TRANSLATE_NOOP("Catalog", "File Shelf"),         appsAndFiles, "folder.fill", "files", 100},
    {kind::screenshots,    QT_TRANSLATE_NOOP("Catalog", "Recent Screenshots"), appsAndFiles, "folder.fill", "files", 100},

    // Search and places.
    {kind::trash,        QT_TRANSLATE_NOOP("Catalog", "Trash"),     appsAndFiles, "trash.fill",                "files",     70},
    {kind::bookmarks,    QT_TRANSLATE_NOOP("Catalog", "Bookmarks"), appsAndFiles, "bookmark.fill",             "bookmarks", 120},
    {kind::finderSearch, "File Search",                             appsAndFiles, "folder.badge.questionmark", "search",    200},
    {kind::webSearch,    "Web Search",                              appsAndFiles, "magnifyingglass",           "search",    200},

    // Utilities.
    {kind::clipboard,         QT_TRANSLATE_NOOP("Catalog", "Clipboard"),          utilities, "doc.on.clipboard",        "clipboard",  140},
    {kind::calculator,        QT_TRANSLATE_NOOP("Catalog", "Calculator"),         utilities, "plus.forwardslash.minus", "calculator", 120},
    {kind::converter,         QT_TRANSLATE_NOOP("Catalog", "Converter"),          utilities, "arrow.left.arrow.right",  "converter",  120},
    {kind::colorPicker,       QT_TRANSLATE_NOOP("Catalog", "Color Picker"),       utilities, "eyedropper.halffull",     "color",      80},
    {kind::emojiRecents,      QT_TRANSLATE_NOOP("Catalog", "Emoji"),              utilities, "face.smiling",            "emoji",      90},
    {kind::screenshotCapture, QT_TRANSLATE_NOOP("Catalog", "Screenshot Capture"), utilities, "camera.viewfinder",       "screenshot", 90},

    // Devices.
    {kind::voiceMemo,          QT_TRANSLATE_NOOP("Catalog", "Voice Memo"),          media,  "waveform",            "voice",            110},
    {kind::systemQuickToggles, QT_TRANSLATE_NOOP("Catalog", "Quick Toggles"),       system, "switch.2",            "toggles",          170},
    {kind::backgroundSound,    QT_TRANSLATE_NOOP("Catalog", "Background Sounds"),   media,  "waveform",            "sounds",           120},
    {kind::keyboardCleaner,    QT_TRANSLATE_NOOP("Catalog", "Keyboard Cleaner"),    system, "keyboard",            "keyboardCleaner",  100},
    {kind::externalBattery,    QT_TRANSLATE_NOOP("Catalog", "Accessory Batteries"), system, "battery.100",         "accessoryBattery", 110},
    {kind::temperature,        QT_TRANSLATE_NOOP("Catalog", "Temperature"),         system, "thermometer.medium",  "temperature",      95},
    {kind::audioOutput,        "Audio Controls",                                    media,  "speaker.wave.2.fill", "audio",            140},
    {kind::microphoneMute,     "Microphone",                                        media,  "mic.fill",            "audio",            90},

    // Music.
    {kind::nowPlayingMini,         QT_TRANSLATE_NOOP("Catalog", "Now Playing Mini"), media, "music.note", "music", 190},
    {kind::nowPlayingExpanded,     QT_TRANSLATE_NOOP("Catalog", "Now Playing"),      media, "music.note", "music", 190},
    {kind::nowPlayingTimeline,     "Now Playing Timeline",                           media, "music.note", "music", 190},
    {kind::nowPlayingYouTubeVideo, "YouTube",                                        media, "music.note", "music", 190},

    // Pictures and flows.
    {kind::photosRecent, "Photos",                                  media,        "photo",              "photos",    110},
    {kind::wallpaper,    QT_TRANSLATE_NOOP("Catalog", "Wallpaper"), media,        "photo.on.rectangle", "wallpaper", 110},
    {kind::airdrop,      QT_TRANSLATE_NOOP("Catalog", "AirDrop"),   appsAndFiles, "airplayaudio",       "airdrop",   76, "BrandAirDrop"},
    {kind::workflow,     QT_TRANSLATE_NOOP("Catalog", "Workflow"),  appsAndFiles, "square.stack.3d.up", "workflow",  110},

    // Weather.
    {kind::weatherCurrent,       "Weather",                                        weather, "cloud.sun.fill", "weather", 92},
    {kind::weatherDetailed,      "Detailed Weather",                               weather, "cloud.sun.fill", "weather", 180},
    {kind::weatherCondition,     "Conditions",                                     weather, "cloud.sun.fill", "weather", 180},
    {kind::weatherForecast,      QT_TRANSLATE_NOOP("Catalog", "Forecast"),         weather, "cloud.sun.fill", "weather", 180},
    {kind::weatherHourly,        "Hourly Weather",                                 weather, "cloud.sun.fill", "weather", 180},
    {kind::weatherWind,          QT_TRANSLATE_NOOP("Catalog", "Wind"),             weather, "cloud.sun.fill", "weather", 180},
    {kind::weatherSunCycle,      QT_TRANSLATE_NOOP("Catalog", "Sunrise & Sunset"), weather, "cloud.sun.fill", "weather", 180},
    {kind::weatherTodayForecast, QT_TRANSLATE_NOOP("Catalog", "Today & Forecast"), weather, "cloud.sun.fill", "weather", 180},

    // Services for developers.
    {kind::analyticsGitHub,              QT_TRANSLATE_NOOP("Catalog", "GitHub"),               developer, risingLine, "integration", 160, "BrandGitHub"},
    {kind::analyticsGitHubOverview,      QT_TRANSLATE_NOOP("Catalog", "GitHub Overview"),      developer, risingLine, "integration", 160, "BrandGitHub"},
    {kind::analyticsGitHubContributions, QT_TRANSLATE_NOOP("Catalog", "GitHub Contributions"), developer, risingLine, "integration", 160, "BrandGitHub"},
    {kind::productivityLinear,           QT_TRANSLATE_NOOP("Catalog", "Linear"),               developer, risingLine, "integration", 160, "BrandLinear"},
    {kind::productivityLinearOverview,   "Linear Overview",                                    developer, risingLine, "integration", 160, "BrandLinear"},
    {kind::analyticsSupabase,            QT_TRANSLATE_NOOP("Catalog", "Supabase"),             developer, risingLine, "integration", 160, "BrandSupabase"},
    {kind::analyticsSupabaseOverview,    QT_TRANSLATE_NOOP("Catalog", "Supabase Overview"),    developer, risingLine, "integration", 160, "BrandSupabase"},

    // Services for business.
    {kind::revenueStripe,            "Stripe Revenue",                                 business, risingLine, "integration", 160, "BrandStripe"},
    {kind::revenuePolar,             "Polar Revenue",                                  business, risingLine, "integration", 160, "BrandPolar"},
    {kind::revenueDodoPayments,      QT_TRANSLATE_NOOP("Catalog", "Dodo Payments"),    business, risingLine, "integration", 160, "BrandDodo"},
    {kind::revenueLemonSqueezy,      QT_TRANSLATE_NOOP("Catalog", "Lemon Squeezy"),    business, risingLine, "integration", 160},
    {kind::shopifyRevenue,           QT_TRANSLATE_NOOP("Catalog", "Shopify Revenue"),  business, risingLine, "integration", 160, "BrandShopify"},
    {kind::shopifyOverview,          QT_TRANSLATE_NOOP("Catalog", "Shopify Overview"), business, risingLine, "integration", 160, "BrandShopify"},
    {kind::shopifyTrends,            QT_TRANSLATE_NOOP("Catalog", "Shopify Trends"),   business, risingLine, "integration", 160, "BrandShopify"},
    {kind::analyticsResend,          QT_TRANSLATE_NOOP("Catalog", "Resend"),           business, risingLine, "integration", 160, "BrandResend"},
    {kind::analyticsResendOverview,  QT_TRANSLATE_NOOP("Catalog", "Resend Overview"),  business, risingLine, "integration", 160, "BrandResend"},
    {kind::analyticsDubOverview,     QT_TRANSLATE_NOOP("Catalog", "Dub Analytics"),    business, risingLine, "integration", 160, "BrandDub"},
    {kind::dubShortener,             "Dub Links",                                      business, risingLine, "integration", 160, "BrandDub"},
    {kind::analyticsPlausible,       QT_TRANSLATE_NOOP("Catalog", "Plausible"),        business, risingLine, "integration", 160, "BrandPlausible"},
    {kind::analyticsPlausibleChart,  QT_TRANSLATE_NOOP("Catalog", "Plausible Chart"),  business, risingLine, "integration", 160, "BrandPlausible"},
    {kind::analyticsSimpleAnalytics, QT_TRANSLATE_NOOP("Catalog", "Simple Analytics"), business, risingLine, "integration", 160, "BrandSimpleAnalytics"},
    {kind::analyticsDataFast,        QT_TRANSLATE_NOOP("Catalog", "DataFast"),         business, risingLine, "integration", 160, "BrandDataFast"},
    {kind::analyticsDataFastChart,   QT_TRANSLATE_NOOP("Catalog", "DataFast Chart"),   business, risingLine, "integration", 160, "BrandDataFast"},

    // Social networks.
    {kind::socialTwitter,   "X Followers",                                       social, risingLine, "integration", 160, "SocialBrandX"},
    {kind::xStudio,         QT_TRANSLATE_NOOP("Catalog", "X Studio"),            social, risingLine, "integration", 160, "SocialBrandX"},
    {kind::socialTikTok,    "TikTok Followers",                                  social, risingLine, "integration", 160, "SocialBrandTikTok"},
    {kind::socialYouTube,   "YouTube Subscribers",                               social, risingLine, "integration", 160, "SocialBrandYouTube"},
    {kind::youtubeStudio,   QT_TRANSLATE_NOOP("Catalog", "YouTube Studio"),      social, risingLine, "integration", 160, "SocialBrandYouTube"},
    {kind::socialInstagram, QT_TRANSLATE_NOOP("Catalog", "Instagram Followers"), social, risingLine, "integration", 160, "SocialBrandInstagram"},

    // Finance.
    {kind::stockQuote,      "Stock Quote",                                    finance, risingLine, "integration", 160},
    {kind::stockChart,      QT_TRANSLATE_NOOP("Catalog", "Stock Chart"),      finance, risingLine, "integration", 160},
    {kind::stockWatchlist,  QT_TRANSLATE_NOOP("Catalog", "Stock Watchlist"),  finance, risingLine, "integration", 160},
    {kind::cryptoQuote,     "Crypto Quote",                                   finance, risingLine, "integration", 160},
    {kind::cryptoChart,     QT_TRANSLATE_NOOP("Catalog", "Crypto Chart"),     finance, risingLine, "integration", 160},
    {kind::cryptoWatchlist, QT_TRANSLATE_NOOP("Catalog", "Crypto Watchlist"), finance, risingLine, "integration", 160},

    // Files, mail, meetings and the home.
    {kind::dropbox,            QT_TRANSLATE_NOOP("Catalog", "Dropbox"),        appsAndFiles, risingLine,      "integration", 160, "BrandDropbox"},
    {kind::gmailLatest,        "Gmail",                                        productivity, risingLine,      "integration", 160, "BrandGmail"},
    {kind::gmailUnreadSummary, "Gmail Unread",                                 productivity, risingLine,      "integration", 160, "BrandGmail"},
    {kind::mailLatest,         "Mail",                                         productivity, "envelope.fill", "mail",        160},
    {kind::mailUnreadSummary,  QT_TRANSLATE_NOOP("Catalog", "Mail Unread"),    productivity, "envelope.fill", "mail",        160},
    {kind::zoomMeeting,        "Zoom Meetings",                                productivity, risingLine,      "integration", 160, "BrandZoom"},
    {kind::homeAssistant,      QT_TRANSLATE_NOOP("Catalog", "Home Assistant"), system,       risingLine,      "integration", 160},
    {kind::appleHome,          QT_TRANSLATE_NOOP("Catalog", "Apple Home"),     system,       risingLine,      "integration", 160},

    // AI tools.
    {kind::analyticsCursorUsage,      QT_TRANSLATE_NOOP("Catalog", "Cursor Team Usage"),     aiTools, risingLine, "integration", 160, "BrandCursor"},
    {kind::cursorPersonalUsage,       QT_TRANSLATE_NOOP("Catalog", "Cursor Personal Usage"), aiTools, risingLine, "integration", 160, "BrandCursor"},
    {kind::claudePlanUsage,           "Claude Usage",                                        aiTools, risingLine, "integration", 160, "BrandClaude"},
    {kind::claudePlanUsageGauge,      QT_TRANSLATE_NOOP("Catalog", "Claude Usage Gauge"),    aiTools, risingLine, "integration", 160, "BrandClaude"},
    {kind::analyticsClaudeCodeStatus, QT_TRANSLATE_NOOP("Catalog", "Claude Code"),           aiTools, risingLine, "integration", 160, "BrandClaude"},
    {kind::codexUsageGauge,           "Codex Usage",                                         aiTools, risingLine, "integration", 160, "BrandCodex"},
    {kind::copilotUsage,              QT_TRANSLATE_NOOP("Catalog", "Copilot Usage"),         aiTools, risingLine, "integration", 160, "BrandAIcopilot"},
    {kind::geminiAPIUsage,            QT_TRANSLATE_NOOP("Catalog", "Gemini API Usage"),      aiTools, risingLine, "integration", 160, "BrandAIgeminiAPI"},
    {kind::grokUsage,                 QT_TRANSLATE_NOOP("Catalog", "Grok Usage"),            aiTools, risingLine, "integration", 160, "BrandAIgrok"},
    {kind::glmUsage,                  QT_TRANSLATE_NOOP("Catalog", "GLM Usage"),             aiTools, risingLine, "integration", 160, "BrandAIglm"},
    {kind::openCodeUsage,             QT_TRANSLATE_NOOP("Catalog", "OpenCode Usage"),        aiTools, risingLine, "integration", 160, "BrandAIopenCode"},
    {kind::antigravityUsage,          QT_TRANSLATE_NOOP("Catalog", "Antigravity Usage"),     aiTools, risingLine, "integration", 160, "BrandAIantigravity"},
    {kind::perplexityUsage,           QT_TRANSLATE_NOOP("Catalog", "Perplexity Usage"),      aiTools, risingLine, "integration", 160, "BrandAIperplexity"},

    // Gaps in the dock, and what came later.
    {kind::dockSeparator,                 QT_TRANSLATE_NOOP("Catalog", "Separator"),              layout,    "line.3.horizontal",      "separator",   8},
    {kind::dockSpace,                     QT_TRANSLATE_NOOP("Catalog", "Space"),                  layout,    "rectangle.dashed",       "space",       28},
    {kind::codexUsage,                    QT_TRANSLATE_NOOP("Catalog", "Codex Usage"),            aiTools,   "sparkles",               "integration", 160, "BrandCodex"},
    {kind::analyticsSimpleAnalyticsChart, QT_TRANSLATE_NOOP("Catalog", "Simple Analytics Chart"), analytics, "chart.xyaxis.line",      "integration", 180, "BrandSimpleAnalytics"},
    {kind::todayClock,                    "Today",                                                clocks,    "clock",                  "clock",       190},
    {kind::appSwitcher,                   QT_TRANSLATE_NOOP("Catalog", "App Switcher"),           system,    "macwindow.on.rectangle", "windows",     100},
    {kind::processTopApps,                "Top Apps",                                             system,    "list.number",            "processes",   180},
    {kind::temperatureChart,              QT_TRANSLATE_NOOP("Catalog", "Temperature Chart"),      system,    "thermometer.medium",     "temperature", 160},
    {kind::appVolume,                     QT_TRANSLATE_NOOP("Catalog", "App Volume"),             system,    "speaker.wave.2",         "appVolume",   120},
    {kind::exercise,                      QT_TRANSLATE_NOOP("Catalog", "Exercise"),               system,    "figure.walk",            "timer",       130},
    {kind::backgroundSounds,              QT_TRANSLATE_NOOP("Catalog", "Background Sounds"),      media,     "waveform",               "sounds",      180},
};

constexpr DisplayName allDisplayNames[] = {
    {kind::timeOnly,                   QT_TRANSLATE_NOOP("Catalog", "Time")},
    {kind::timeSeconds,                QT_TRANSLATE_NOOP("Catalog", "Time + Seconds")},
    {kind::digitalClock,               QT_TRANSLATE_NOOP("Catalog", "Time & Date")},
    {kind::worldClockCity,             QT_TRANSLATE_NOOP("Catalog", "World Time")},
    {kind::worldClockList,             QT_TRANSLATE_NOOP("Catalog", "World Clock")},
    {kind::todayClock,                 QT_TRANSLATE_NOOP("Catalog", "Today")},
    {kind::analogClassicLight,         QT_TRANSLATE_NOOP("Catalog", "Analog Classic")},
    {kind::calendar,                   QT_TRANSLATE_NOOP("Catalog", "Today")},
    {kind::calendarThreeEvents,        QT_TRANSLATE_NOOP("Catalog", "Next 3 Events")},
    {kind::calendarDayAgenda,          QT_TRANSLATE_NOOP("Catalog", "Today Agenda")},
    {kind::calendarWeek,               QT_TRANSLATE_NOOP("Catalog", "Week")},
    {kind::calendarMeetingCompact,     QT_TRANSLATE_NOOP("Catalog", "Next Meeting")},
    {kind::calendarMeetingDetail,      QT_TRANSLATE_NOOP("Catalog", "Meeting Center")},
    {kind::zoomMeeting,                QT_TRANSLATE_NOOP("Catalog", "Zoom Meeting")},
    {kind::remindersToday,             QT_TRANSLATE_NOOP("Catalog", "Due Today")},
    {kind::quickTodo,                  QT_TRANSLATE_NOOP("Catalog", "Todo")},
    {kind::productivityLinearOverview, QT_TRANSLATE_NOOP("Catalog", "Linear Tasks")},
    {kind::nowPlayingTimeline,         QT_TRANSLATE_NOOP("Catalog", "Now Playing Bar")},
    {kind::nowPlayingYouTubeVideo,     QT_TRANSLATE_NOOP("Catalog", "YouTube Video")},
    {kind::photosRecent,               QT_TRANSLATE_NOOP("Catalog", "Recent Photo")},
    {kind::audioOutput,                QT_TRANSLATE_NOOP("Catalog", "Audio Output")},
    {kind::microphoneMute,             QT_TRANSLATE_NOOP("Catalog", "Mic Mute")},
    {kind::processTopApps,             QT_TRANSLATE_NOOP("Catalog", "Top Apps")},
    {kind::ram,                        QT_TRANSLATE_NOOP("Catalog", "RAM")},
    {kind::ramChart,                   QT_TRANSLATE_NOOP("Catalog", "RAM Chart")},
    {kind::systemChart,                QT_TRANSLATE_NOOP("Catalog", "CPU + RAM Chart")},
    {kind::webSearch,                  QT_TRANSLATE_NOOP("Catalog", "Search")},
    {kind::finderSearch,               QT_TRANSLATE_NOOP("Catalog", "Finder Search")},
    {kind::weatherCurrent,             QT_TRANSLATE_NOOP("Catalog", "Location")},
    {kind::weatherDetailed,            QT_TRANSLATE_NOOP("Catalog", "Details")},
    {kind::weatherCondition,           QT_TRANSLATE_NOOP("Catalog", "Status")},
    {kind::weatherHourly,              QT_TRANSLATE_NOOP("Catalog", "Hourly")},
    {kind::socialTwitter,              QT_TRANSLATE_NOOP("Catalog", "X")},
    {kind::socialTikTok,               QT_TRANSLATE_NOOP("Catalog", "TikTok")},
    {kind::socialYouTube,              QT_TRANSLATE_NOOP("Catalog", "YouTube")},
    {kind::revenuePolar,               QT_TRANSLATE_NOOP("Catalog", "Polar")},
    {kind::revenueStripe,              QT_TRANSLATE_NOOP("Catalog", "Stripe")},
    {kind::stockQuote,                 QT_TRANSLATE_NOOP("Catalog", "Stock")},
    {kind::cryptoQuote,                QT_TRANSLATE_NOOP("Catalog", "Crypto")},
    {kind::claudePlanUsage,            QT_TRANSLATE_NOOP("Catalog", "Claude Plan Usage")},
    {kind::codexUsageGauge,            QT_TRANSLATE_NOOP("Catalog", "Codex Usage Gauge")},
    {kind::mailLatest,                 QT_TRANSLATE_NOOP("Catalog", "Latest Mail")},
    {kind::gmailLatest,                QT_TRANSLATE_NOOP("Catalog", "Latest Gmail")},
    {kind::gmailUnreadSummary,         QT_TRANSLATE_NOOP("Catalog", "Gmail Unread")},
    {kind::notesLatest,                QT_TRANSLATE_NOOP("Catalog", "Notes")},
    {kind::dubShortener,               QT_TRANSLATE_NOOP("Catalog", "Dub Shortener")},
};
// clang-format on

}  // namespace

std::span<const Row> rows() { return allRows; }

std::span<const DisplayName> displayNames() { return allDisplayNames; }

}  // namespace tarnwick::catalog
