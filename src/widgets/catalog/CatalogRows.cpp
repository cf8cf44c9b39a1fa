#include "widgets/catalog/CatalogRows.h"

#include <QtGlobal>

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
    {"digitalClock",       "Digital Clock",                                     clocks, "clock.fill", "clock", 150},
    {"timeOnly",           "Time Only",                                         clocks, "clock.fill", "clock", 150},
    {"timeSeconds",        "Time with Seconds",                                 clocks, "clock.fill", "clock", 150},
    {"flipClock",          QT_TRANSLATE_NOOP("Catalog", "Flip Clock"),          clocks, "clock.fill", "clock", 150},
    {"pixelClock",         QT_TRANSLATE_NOOP("Catalog", "Pixel Clock"),         clocks, "clock.fill", "clock", 150},
    {"overlapClock",       QT_TRANSLATE_NOOP("Catalog", "Overlap Clock"),       clocks, "clock.fill", "clock", 150},
    {"ringClock",          QT_TRANSLATE_NOOP("Catalog", "Ring Clock"),          clocks, "clock.fill", "clock", 80},
    {"analogMinimal",      QT_TRANSLATE_NOOP("Catalog", "Analog Minimal"),      clocks, "clock.fill", "clock", 80},
    {"analogClassicLight", "Analog Classic Light",                              clocks, "clock.fill", "clock", 80},
    {"analogClassicDark",  QT_TRANSLATE_NOOP("Catalog", "Analog Classic Dark"), clocks, "clock.fill", "clock", 80},
    {"worldClockCity",     "World Clock",                                       clocks, "clock.fill", "clock", 150},
    {"worldClockList",     "World Clock List",                                  clocks, "clock.fill", "clock", 150},
    {"dateOnly",           QT_TRANSLATE_NOOP("Catalog", "Date"),                clocks, "clock.fill", "clock", 150},
    {"dayNumber",          QT_TRANSLATE_NOOP("Catalog", "Day Number"),          clocks, "clock.fill", "clock", 80},

    // Calendar.
    {"calendar",               "Calendar",                                     calendar, "calendar", "calendar", 180},
    {"calendarWeek",           "Calendar Week",                                calendar, "calendar", "calendar", 180},
    {"calendarSevenDays",      QT_TRANSLATE_NOOP("Catalog", "7 Days"),         calendar, "calendar", "calendar", 180},
    {"calendarDayAgenda",      "Day Agenda",                                   calendar, "calendar", "calendar", 180},
    {"calendarThreeEvents",    "Next Three Events",                            calendar, "calendar", "calendar", 180},
    {"calendarNextEvent",      QT_TRANSLATE_NOOP("Catalog", "Next Event"),     calendar, "calendar", "calendar", 180},
    {"calendarMeeting",        QT_TRANSLATE_NOOP("Catalog", "Meetings"),       calendar, "calendar", "calendar", 180},
    {"calendarMeetingDetail",  "Meeting Details",                              calendar, "calendar", "calendar", 180},
    {"calendarMeetingCompact", "Compact Meeting",                              calendar, "calendar", "calendar", 180},
    {"todayOverview",          QT_TRANSLATE_NOOP("Catalog", "Today Overview"), calendar, "calendar", "calendar", 180},

    // Progress of the day, month and year.
    {"calendarDayProgress",   QT_TRANSLATE_NOOP("Catalog", "Day Progress"),   calendar, "chart.pie.fill", "progress", 140},
    {"calendarMonthProgress", QT_TRANSLATE_NOOP("Catalog", "Month Progress"), calendar, "chart.pie.fill", "progress", 140},
    {"calendarYearProgress",  QT_TRANSLATE_NOOP("Catalog", "Year Progress"),  calendar, "chart.pie.fill", "progress", 140},

    // Reminders.
    {"remindersNext",   QT_TRANSLATE_NOOP("Catalog", "Next Reminder"),    productivity, "checklist", "reminders", 180},
    {"remindersToday",  "Today's Reminders",                              productivity, "checklist", "reminders", 180},
    {"remindersAgenda", QT_TRANSLATE_NOOP("Catalog", "Reminders Agenda"), productivity, "checklist", "reminders", 180},

    // Timers.
    {"pomodoro",  QT_TRANSLATE_NOOP("Catalog", "Pomodoro"),  productivity, "timer",          "timer", 130},
    {"timer",     QT_TRANSLATE_NOOP("Catalog", "Timer"),     productivity, "hourglass",      "timer", 130},
    {"stopwatch", QT_TRANSLATE_NOOP("Catalog", "Stopwatch"), productivity, "stopwatch.fill", "timer", 130},

    // Notes and habits.
    {"quickTodo",          "Todos",                                          productivity, "checklist",             "todos",       180},
    {"notesLatest",        "Notes",                                          productivity, "note.text",             "nativeNotes", 170},
    {"scratchNote",        QT_TRANSLATE_NOOP("Catalog", "Quick Note"),       productivity, "square.and.pencil",     "notes",       170},
    {"phoneQuickContacts", QT_TRANSLATE_NOOP("Catalog", "Quick Contacts"),   productivity, "person.crop.circle",    "contacts",    170},
    {"drinkWater",         QT_TRANSLATE_NOOP("Catalog", "Drink Water"),      productivity, "drop.fill",             "water",       90},
    {"habitTracker",       QT_TRANSLATE_NOOP("Catalog", "Habit Tracker"),    productivity, "checkmark.circle.fill", "habit",       120},
    {"posture",            QT_TRANSLATE_NOOP("Catalog", "Posture Reminder"), productivity, "figure.seated.side",    "timer",       130},

    // Readings of the machine.
    {"cpu",             QT_TRANSLATE_NOOP("Catalog", "CPU"),            system, "cpu",               "metric", 76},
    {"ram",             "Memory",                                       system, "memorychip",        "metric", 76},
    {"storage",         QT_TRANSLATE_NOOP("Catalog", "Storage"),        system, "internaldrive",     "metric", 76},
    {"battery",         QT_TRANSLATE_NOOP("Catalog", "Battery"),        system, "battery.100",       "metric", 76},
    {"cpuChart",        QT_TRANSLATE_NOOP("Catalog", "CPU Chart"),      system, "cpu",               "metric", 160},
    {"ramChart",        "Memory Chart",                                 system, "memorychip",        "metric", 160},
    {"systemChart",     "System Chart",                                 system, "chart.xyaxis.line", "metric", 160},
    {"network",         QT_TRANSLATE_NOOP("Catalog", "Network"),        system, "network",           "metric", 160},
    {"networkDownload", QT_TRANSLATE_NOOP("Catalog", "Download Speed"), system, "arrow.down",        "metric", 160},
    {"networkUpload",   QT_TRANSLATE_NOOP("Catalog", "Upload Speed"),   system, "arrow.up",          "metric", 160},
    {"networkChart",    QT_TRANSLATE_NOOP("Catalog", "Network Chart"),  system, "chart.xyaxis.line", "metric", 160},

    // Applications.
    {"topApps",      QT_TRANSLATE_NOOP("Catalog", "App Switcher"),  appsAndFiles, "macwindow.on.rectangle", "windows",  100},
    {"pinnedWindow", QT_TRANSLATE_NOOP("Catalog", "Pinned Window"), appsAndFiles, "pin.fill",               "windows",  140},
    {"applications", QT_TRANSLATE_NOOP("Catalog", "Applications"),  appsAndFiles, "square.grid.2x2.fill",   "apps",     68},
    {"appFolder",    QT_TRANSLATE_NOOP("Catalog", "App Folder"),    appsAndFiles, "square.grid.2x2.fill",   "apps",     76},
    {"appLauncher",  QT_TRANSLATE_NOOP("Catalog", "App Launcher"),  appsAndFiles, "app.fill",               "launcher", 70},
    {"openWindows",  QT_TRANSLATE_NOOP("Catalog", "Running Apps"),  appsAndFiles, "macwindow.on.rectangle", "apps",     180},

    // Files.
    {"folderLauncher", QT_TRANSLATE_NOOP("Catalog", "Folder"),             appsAndFiles, "folder.fill", "files", 100},
    {"downloads",      QT_TRANSLATE_NOOP("Catalog", "Downloads"),          appsAndFiles, "folder.fill", "files", 100},
    {"recentFiles",    QT_TRANSLATE_NOOP("Catalog", "Recent Files"),       appsAndFiles, "folder.fill", "files", 100},
    {"fileShelf",      QT_TRANSLATE_NOOP("Catalog", "File Shelf"),         appsAndFiles, "folder.fill", "files", 100},
    {"screenshots",    QT_TRANSLATE_NOOP("Catalog", "Recent Screenshots"), appsAndFiles, "folder.fill", "files", 100},

    // Search and places.
    {"trash",        QT_TRANSLATE_NOOP("Catalog", "Trash"),     appsAndFiles, "trash.fill",                "files",     70},
    {"bookmarks",    QT_TRANSLATE_NOOP("Catalog", "Bookmarks"), appsAndFiles, "bookmark.fill",             "bookmarks", 120},
    {"finderSearch", "File Search",                             appsAndFiles, "folder.badge.questionmark", "search",    200},
    {"webSearch",    "Web Search",                              appsAndFiles, "magnifyingglass",           "search",    200},

    // Utilities.
    {"clipboard",         QT_TRANSLATE_NOOP("Catalog", "Clipboard"),          utilities, "doc.on.clipboard",        "clipboard",  140},
    {"calculator",        QT_TRANSLATE_NOOP("Catalog", "Calculator"),         utilities, "plus.forwardslash.minus", "calculator", 120},
    {"converter",         QT_TRANSLATE_NOOP("Catalog", "Converter"),          utilities, "arrow.left.arrow.right",  "converter",  120},
    {"colorPicker",       QT_TRANSLATE_NOOP("Catalog", "Color Picker"),       utilities, "eyedropper.halffull",     "color",      80},
    {"emojiRecents",      QT_TRANSLATE_NOOP("Catalog", "Emoji"),              utilities, "face.smiling",            "emoji",      90},
    {"screenshotCapture", QT_TRANSLATE_NOOP("Catalog", "Screenshot Capture"), utilities, "camera.viewfinder",       "screenshot", 90},

    // Devices.
    {"voiceMemo",          QT_TRANSLATE_NOOP("Catalog", "Voice Memo"),          media,  "waveform",            "voice",            110},
    {"systemQuickToggles", QT_TRANSLATE_NOOP("Catalog", "Quick Toggles"),       system, "switch.2",            "toggles",          170},
    {"backgroundSound",    QT_TRANSLATE_NOOP("Catalog", "Background Sounds"),   media,  "waveform",            "sounds",           120},
    {"keyboardCleaner",    QT_TRANSLATE_NOOP("Catalog", "Keyboard Cleaner"),    system, "keyboard",            "keyboardCleaner",  100},
    {"externalBattery",    QT_TRANSLATE_NOOP("Catalog", "Accessory Batteries"), system, "battery.100",         "accessoryBattery", 110},
    {"temperature",        QT_TRANSLATE_NOOP("Catalog", "Temperature"),         system, "thermometer.medium",  "temperature",      95},
    {"audioOutput",        "Audio Controls",                                    media,  "speaker.wave.2.fill", "audio",            140},
    {"microphoneMute",     "Microphone",                                        media,  "mic.fill",            "audio",            90},

    // Music.
    {"nowPlayingMini",         QT_TRANSLATE_NOOP("Catalog", "Now Playing Mini"), media, "music.note", "music", 190},
    {"nowPlayingExpanded",     QT_TRANSLATE_NOOP("Catalog", "Now Playing"),      media, "music.note", "music", 190},
    {"nowPlayingTimeline",     "Now Playing Timeline",                           media, "music.note", "music", 190},
    {"nowPlayingYouTubeVideo", "YouTube",                                        media, "music.note", "music", 190},

    // Pictures and flows.
    {"photosRecent", "Photos",                                  media,        "photo",              "photos",    110},
    {"wallpaper",    QT_TRANSLATE_NOOP("Catalog", "Wallpaper"), media,        "photo.on.rectangle", "wallpaper", 110},
    {"airdrop",      QT_TRANSLATE_NOOP("Catalog", "AirDrop"),   appsAndFiles, "airplayaudio",       "airdrop",   76, "BrandAirDrop"},
    {"workflow",     QT_TRANSLATE_NOOP("Catalog", "Workflow"),  appsAndFiles, "square.stack.3d.up", "workflow",  110},

    // Weather.
    {"weatherCurrent",       "Weather",                                        weather, "cloud.sun.fill", "weather", 92},
    {"weatherDetailed",      "Detailed Weather",                               weather, "cloud.sun.fill", "weather", 180},
    {"weatherCondition",     "Conditions",                                     weather, "cloud.sun.fill", "weather", 180},
    {"weatherForecast",      QT_TRANSLATE_NOOP("Catalog", "Forecast"),         weather, "cloud.sun.fill", "weather", 180},
    {"weatherHourly",        "Hourly Weather",                                 weather, "cloud.sun.fill", "weather", 180},
    {"weatherWind",          QT_TRANSLATE_NOOP("Catalog", "Wind"),             weather, "cloud.sun.fill", "weather", 180},
    {"weatherSunCycle",      QT_TRANSLATE_NOOP("Catalog", "Sunrise & Sunset"), weather, "cloud.sun.fill", "weather", 180},
    {"weatherTodayForecast", QT_TRANSLATE_NOOP("Catalog", "Today & Forecast"), weather, "cloud.sun.fill", "weather", 180},

    // Services for developers.
    {"analyticsGitHub",              QT_TRANSLATE_NOOP("Catalog", "GitHub"),               developer, risingLine, "integration", 160, "BrandGitHub"},
    {"analyticsGitHubOverview",      QT_TRANSLATE_NOOP("Catalog", "GitHub Overview"),      developer, risingLine, "integration", 160, "BrandGitHub"},
    {"analyticsGitHubContributions", QT_TRANSLATE_NOOP("Catalog", "GitHub Contributions"), developer, risingLine, "integration", 160, "BrandGitHub"},
    {"productivityLinear",           QT_TRANSLATE_NOOP("Catalog", "Linear"),               developer, risingLine, "integration", 160, "BrandLinear"},
    {"productivityLinearOverview",   "Linear Overview",                                    developer, risingLine, "integration", 160, "BrandLinear"},
    {"analyticsSupabase",            QT_TRANSLATE_NOOP("Catalog", "Supabase"),             developer, risingLine, "integration", 160, "BrandSupabase"},
    {"analyticsSupabaseOverview",    QT_TRANSLATE_NOOP("Catalog", "Supabase Overview"),    developer, risingLine, "integration", 160, "BrandSupabase"},

    // Services for business.
    {"revenueStripe",            "Stripe Revenue",                                 business, risingLine, "integration", 160, "BrandStripe"},
    {"revenuePolar",             "Polar Revenue",                                  business, risingLine, "integration", 160, "BrandPolar"},
    {"revenueDodoPayments",      QT_TRANSLATE_NOOP("Catalog", "Dodo Payments"),    business, risingLine, "integration", 160, "BrandDodo"},
    {"revenueLemonSqueezy",      QT_TRANSLATE_NOOP("Catalog", "Lemon Squeezy"),    business, risingLine, "integration", 160},
    {"shopifyRevenue",           QT_TRANSLATE_NOOP("Catalog", "Shopify Revenue"),  business, risingLine, "integration", 160, "BrandShopify"},
    {"shopifyOverview",          QT_TRANSLATE_NOOP("Catalog", "Shopify Overview"), business, risingLine, "integration", 160, "BrandShopify"},
    {"shopifyTrends",            QT_TRANSLATE_NOOP("Catalog", "Shopify Trends"),   business, risingLine, "integration", 160, "BrandShopify"},
    {"analyticsResend",          QT_TRANSLATE_NOOP("Catalog", "Resend"),           business, risingLine, "integration", 160, "BrandResend"},
    {"analyticsResendOverview",  QT_TRANSLATE_NOOP("Catalog", "Resend Overview"),  business, risingLine, "integration", 160, "BrandResend"},
    {"analyticsDubOverview",     QT_TRANSLATE_NOOP("Catalog", "Dub Analytics"),    business, risingLine, "integration", 160, "BrandDub"},
    {"dubShortener",             "Dub Links",                                      business, risingLine, "integration", 160, "BrandDub"},
    {"analyticsPlausible",       QT_TRANSLATE_NOOP("Catalog", "Plausible"),        business, risingLine, "integration", 160, "BrandPlausible"},
    {"analyticsPlausibleChart",  QT_TRANSLATE_NOOP("Catalog", "Plausible Chart"),  business, risingLine, "integration", 160, "BrandPlausible"},
    {"analyticsSimpleAnalytics", QT_TRANSLATE_NOOP("Catalog", "Simple Analytics"), business, risingLine, "integration", 160, "BrandSimpleAnalytics"},
    {"analyticsDataFast",        QT_TRANSLATE_NOOP("Catalog", "DataFast"),         business, risingLine, "integration", 160, "BrandDataFast"},
    {"analyticsDataFastChart",   QT_TRANSLATE_NOOP("Catalog", "DataFast Chart"),   business, risingLine, "integration", 160, "BrandDataFast"},

    // Social networks.
    {"socialTwitter",   "X Followers",                                       social, risingLine, "integration", 160, "SocialBrandX"},
    {"xStudio",         QT_TRANSLATE_NOOP("Catalog", "X Studio"),            social, risingLine, "integration", 160, "SocialBrandX"},
    {"socialTikTok",    "TikTok Followers",                                  social, risingLine, "integration", 160, "SocialBrandTikTok"},
    {"socialYouTube",   "YouTube Subscribers",                               social, risingLine, "integration", 160, "SocialBrandYouTube"},
    {"youtubeStudio",   QT_TRANSLATE_NOOP("Catalog", "YouTube Studio"),      social, risingLine, "integration", 160, "SocialBrandYouTube"},
    {"socialInstagram", QT_TRANSLATE_NOOP("Catalog", "Instagram Followers"), social, risingLine, "integration", 160, "SocialBrandInstagram"},

    // Finance.
    {"stockQuote",      "Stock Quote",                                    finance, risingLine, "integration", 160},
    {"stockChart",      QT_TRANSLATE_NOOP("Catalog", "Stock Chart"),      finance, risingLine, "integration", 160},
    {"stockWatchlist",  QT_TRANSLATE_NOOP("Catalog", "Stock Watchlist"),  finance, risingLine, "integration", 160},
    {"cryptoQuote",     "Crypto Quote",                                   finance, risingLine, "integration", 160},
    {"cryptoChart",     QT_TRANSLATE_NOOP("Catalog", "Crypto Chart"),     finance, risingLine, "integration", 160},
    {"cryptoWatchlist", QT_TRANSLATE_NOOP("Catalog", "Crypto Watchlist"), finance, risingLine, "integration", 160},

    // Files, mail, meetings and the home.
    {"dropbox",            QT_TRANSLATE_NOOP("Catalog", "Dropbox"),        appsAndFiles, risingLine,      "integration", 160, "BrandDropbox"},
    {"gmailLatest",        "Gmail",                                        productivity, risingLine,      "integration", 160, "BrandGmail"},
    {"gmailUnreadSummary", "Gmail Unread",                                 productivity, risingLine,      "integration", 160, "BrandGmail"},
    {"mailLatest",         "Mail",                                         productivity, "envelope.fill", "mail",        160},
    {"mailUnreadSummary",  QT_TRANSLATE_NOOP("Catalog", "Mail Unread"),    productivity, "envelope.fill", "mail",        160},
    {"zoomMeeting",        "Zoom Meetings",                                productivity, risingLine,      "integration", 160, "BrandZoom"},
    {"homeAssistant",      QT_TRANSLATE_NOOP("Catalog", "Home Assistant"), system,       risingLine,      "integration", 160},
    {"appleHome",          QT_TRANSLATE_NOOP("Catalog", "Apple Home"),     system,       risingLine,      "integration", 160},

    // AI tools.
    {"analyticsCursorUsage",      QT_TRANSLATE_NOOP("Catalog", "Cursor Team Usage"),     aiTools, risingLine, "integration", 160, "BrandCursor"},
    {"cursorPersonalUsage",       QT_TRANSLATE_NOOP("Catalog", "Cursor Personal Usage"), aiTools, risingLine, "integration", 160, "BrandCursor"},
    {"claudePlanUsage",           "Claude Usage",                                        aiTools, risingLine, "integration", 160, "BrandClaude"},
    {"claudePlanUsageGauge",      QT_TRANSLATE_NOOP("Catalog", "Claude Usage Gauge"),    aiTools, risingLine, "integration", 160, "BrandClaude"},
    {"analyticsClaudeCodeStatus", QT_TRANSLATE_NOOP("Catalog", "Claude Code"),           aiTools, risingLine, "integration", 160, "BrandClaude"},
    {"codexUsageGauge",           "Codex Usage",                                         aiTools, risingLine, "integration", 160, "BrandCodex"},
    {"copilotUsage",              QT_TRANSLATE_NOOP("Catalog", "Copilot Usage"),         aiTools, risingLine, "integration", 160, "BrandAIcopilot"},
    {"geminiAPIUsage",            QT_TRANSLATE_NOOP("Catalog", "Gemini API Usage"),      aiTools, risingLine, "integration", 160, "BrandAIgeminiAPI"},
    {"grokUsage",                 QT_TRANSLATE_NOOP("Catalog", "Grok Usage"),            aiTools, risingLine, "integration", 160, "BrandAIgrok"},
    {"glmUsage",                  QT_TRANSLATE_NOOP("Catalog", "GLM Usage"),             aiTools, risingLine, "integration", 160, "BrandAIglm"},
    {"openCodeUsage",             QT_TRANSLATE_NOOP("Catalog", "OpenCode Usage"),        aiTools, risingLine, "integration", 160, "BrandAIopenCode"},
    {"antigravityUsage",          QT_TRANSLATE_NOOP("Catalog", "Antigravity Usage"),     aiTools, risingLine, "integration", 160, "BrandAIantigravity"},
    {"perplexityUsage",           QT_TRANSLATE_NOOP("Catalog", "Perplexity Usage"),      aiTools, risingLine, "integration", 160, "BrandAIperplexity"},

    // Gaps in the dock, and what came later.
    {"dockSeparator",                 QT_TRANSLATE_NOOP("Catalog", "Separator"),              layout,    "line.3.horizontal",      "separator",   8},
    {"dockSpace",                     QT_TRANSLATE_NOOP("Catalog", "Space"),                  layout,    "rectangle.dashed",       "space",       28},
    {"codexUsage",                    QT_TRANSLATE_NOOP("Catalog", "Codex Usage"),            aiTools,   "sparkles",               "integration", 160, "BrandCodex"},
    {"analyticsSimpleAnalyticsChart", QT_TRANSLATE_NOOP("Catalog", "Simple Analytics Chart"), analytics, "chart.xyaxis.line",      "integration", 180, "BrandSimpleAnalytics"},
    {"todayClock",                    "Today",                                                clocks,    "clock",                  "clock",       190},
    {"appSwitcher",                   QT_TRANSLATE_NOOP("Catalog", "App Switcher"),           system,    "macwindow.on.rectangle", "windows",     100},
    {"processTopApps",                "Top Apps",                                             system,    "list.number",            "processes",   180},
    {"temperatureChart",              QT_TRANSLATE_NOOP("Catalog", "Temperature Chart"),      system,    "thermometer.medium",     "temperature", 160},
    {"appVolume",                     QT_TRANSLATE_NOOP("Catalog", "App Volume"),             system,    "speaker.wave.2",         "appVolume",   120},
    {"exercise",                      QT_TRANSLATE_NOOP("Catalog", "Exercise"),               system,    "figure.walk",            "timer",       130},
    {"backgroundSounds",              QT_TRANSLATE_NOOP("Catalog", "Background Sounds"),      media,     "waveform",               "sounds",      180},
};

constexpr DisplayName allDisplayNames[] = {
    {"timeOnly",                   QT_TRANSLATE_NOOP("Catalog", "Time")},
    {"timeSeconds",                QT_TRANSLATE_NOOP("Catalog", "Time + Seconds")},
    {"digitalClock",               QT_TRANSLATE_NOOP("Catalog", "Time & Date")},
    {"worldClockCity",             QT_TRANSLATE_NOOP("Catalog", "World Time")},
    {"worldClockList",             QT_TRANSLATE_NOOP("Catalog", "World Clock")},
    {"todayClock",                 QT_TRANSLATE_NOOP("Catalog", "Today")},
    {"analogClassicLight",         QT_TRANSLATE_NOOP("Catalog", "Analog Classic")},
    {"calendar",                   QT_TRANSLATE_NOOP("Catalog", "Today")},
    {"calendarThreeEvents",        QT_TRANSLATE_NOOP("Catalog", "Next 3 Events")},
    {"calendarDayAgenda",          QT_TRANSLATE_NOOP("Catalog", "Today Agenda")},
    {"calendarWeek",               QT_TRANSLATE_NOOP("Catalog", "Week")},
    {"calendarMeetingCompact",     QT_TRANSLATE_NOOP("Catalog", "Next Meeting")},
    {"calendarMeetingDetail",      QT_TRANSLATE_NOOP("Catalog", "Meeting Center")},
    {"zoomMeeting",                QT_TRANSLATE_NOOP("Catalog", "Zoom Meeting")},
    {"remindersToday",             QT_TRANSLATE_NOOP("Catalog", "Due Today")},
    {"quickTodo",                  QT_TRANSLATE_NOOP("Catalog", "Todo")},
    {"productivityLinearOverview", QT_TRANSLATE_NOOP("Catalog", "Linear Tasks")},
    {"nowPlayingTimeline",         QT_TRANSLATE_NOOP("Catalog", "Now Playing Bar")},
    {"nowPlayingYouTubeVideo",     QT_TRANSLATE_NOOP("Catalog", "YouTube Video")},
    {"photosRecent",               QT_TRANSLATE_NOOP("Catalog", "Recent Photo")},
    {"audioOutput",                QT_TRANSLATE_NOOP("Catalog", "Audio Output")},
    {"microphoneMute",             QT_TRANSLATE_NOOP("Catalog", "Mic Mute")},
    {"processTopApps",             QT_TRANSLATE_NOOP("Catalog", "Top Apps")},
    {"ram",                        QT_TRANSLATE_NOOP("Catalog", "RAM")},
    {"ramChart",                   QT_TRANSLATE_NOOP("Catalog", "RAM Chart")},
    {"systemChart",                QT_TRANSLATE_NOOP("Catalog", "CPU + RAM Chart")},
    {"webSearch",                  QT_TRANSLATE_NOOP("Catalog", "Search")},
    {"finderSearch",               QT_TRANSLATE_NOOP("Catalog", "Finder Search")},
    {"weatherCurrent",             QT_TRANSLATE_NOOP("Catalog", "Location")},
    {"weatherDetailed",            QT_TRANSLATE_NOOP("Catalog", "Details")},
    {"weatherCondition",           QT_TRANSLATE_NOOP("Catalog", "Status")},
    {"weatherHourly",              QT_TRANSLATE_NOOP("Catalog", "Hourly")},
    {"socialTwitter",              QT_TRANSLATE_NOOP("Catalog", "X")},
    {"socialTikTok",               QT_TRANSLATE_NOOP("Catalog", "TikTok")},
    {"socialYouTube",              QT_TRANSLATE_NOOP("Catalog", "YouTube")},
    {"revenuePolar",               QT_TRANSLATE_NOOP("Catalog", "Polar")},
    {"revenueStripe",              QT_TRANSLATE_NOOP("Catalog", "Stripe")},
    {"stockQuote",                 QT_TRANSLATE_NOOP("Catalog", "Stock")},
    {"cryptoQuote",                QT_TRANSLATE_NOOP("Catalog", "Crypto")},
    {"claudePlanUsage",            QT_TRANSLATE_NOOP("Catalog", "Claude Plan Usage")},
    {"codexUsageGauge",            QT_TRANSLATE_NOOP("Catalog", "Codex Usage Gauge")},
    {"mailLatest",                 QT_TRANSLATE_NOOP("Catalog", "Latest Mail")},
    {"gmailLatest",                QT_TRANSLATE_NOOP("Catalog", "Latest Gmail")},
    {"gmailUnreadSummary",         QT_TRANSLATE_NOOP("Catalog", "Gmail Unread")},
    {"notesLatest",                QT_TRANSLATE_NOOP("Catalog", "Notes")},
    {"dubShortener",               QT_TRANSLATE_NOOP("Catalog", "Dub Shortener")},
};
// clang-format on

}  // namespace

std::span<const Row> rows() { return allRows; }

std::span<const DisplayName> displayNames() { return allDisplayNames; }

}  // namespace tarnwick::catalog
