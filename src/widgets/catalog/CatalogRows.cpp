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

// One kind a line: kind, plain name, category, symbol, family, width, brand image, traits. A name that displayNames
// replaces is never shown and so not marked for translation.
// clang-format off
constexpr Row allRows[] = {
    // Clocks.
    {kind::digitalClock,       "Digital Clock",                                     clocks, "clock.fill", Family::Clock, 150},
    {kind::timeOnly,           "Time Only",                                         clocks, "clock.fill", Family::Clock, 150},
    {kind::timeSeconds,        "Time with Seconds",                                 clocks, "clock.fill", Family::Clock, 150},
    {kind::flipClock,          QT_TRANSLATE_NOOP("Catalog", "Flip Clock"),          clocks, "clock.fill", Family::Clock, 150},
    {kind::pixelClock,         QT_TRANSLATE_NOOP("Catalog", "Pixel Clock"),         clocks, "clock.fill", Family::Clock, 150},
    {kind::overlapClock,       QT_TRANSLATE_NOOP("Catalog", "Overlap Clock"),       clocks, "clock.fill", Family::Clock, 150},
    {kind::ringClock,          QT_TRANSLATE_NOOP("Catalog", "Ring Clock"),          clocks, "clock.fill", Family::Clock, 80},
    {kind::analogMinimal,      QT_TRANSLATE_NOOP("Catalog", "Analog Minimal"),      clocks, "clock.fill", Family::Clock, 80},
    {kind::analogClassicLight, "Analog Classic Light",                              clocks, "clock.fill", Family::Clock, 80},
    {kind::analogClassicDark,  QT_TRANSLATE_NOOP("Catalog", "Analog Classic Dark"), clocks, "clock.fill", Family::Clock, 80},
    {kind::worldClockCity,     "World Clock",                                       clocks, "clock.fill", Family::Clock, 150},
    {kind::worldClockList,     "World Clock List",                                  clocks, "clock.fill", Family::Clock, 150},
    {kind::dateOnly,           QT_TRANSLATE_NOOP("Catalog", "Date"),                clocks, "clock.fill", Family::Clock, 150},
    {kind::dayNumber,          QT_TRANSLATE_NOOP("Catalog", "Day Number"),          clocks, "clock.fill", Family::Clock, 80},

    // Calendar.
    {kind::calendar,               "Calendar",                                     calendar, "calendar", Family::Calendar, 180},
    {kind::calendarWeek,           "Calendar Week",                                calendar, "calendar", Family::Calendar, 180, "", weekTraits},
    {kind::calendarSevenDays,      QT_TRANSLATE_NOOP("Catalog", "7 Days"),         calendar, "calendar", Family::Calendar, 180},
    {kind::calendarDayAgenda,      "Day Agenda",                                   calendar, "calendar", Family::Calendar, 180},
    {kind::calendarThreeEvents,    "Next Three Events",                            calendar, "calendar", Family::Calendar, 180},
    {kind::calendarNextEvent,      QT_TRANSLATE_NOOP("Catalog", "Next Event"),     calendar, "calendar", Family::Calendar, 180},
    {kind::calendarMeeting,        QT_TRANSLATE_NOOP("Catalog", "Meetings"),       calendar, "calendar", Family::Calendar, 180},
    {kind::calendarMeetingDetail,  "Meeting Details",                              calendar, "calendar", Family::Calendar, 180},
    {kind::calendarMeetingCompact, "Compact Meeting",                              calendar, "calendar", Family::Calendar, 180},
    {kind::todayOverview,          QT_TRANSLATE_NOOP("Catalog", "Today Overview"), calendar, "calendar", Family::Calendar, 180},

    // Progress of the day, month and year.
    {kind::calendarDayProgress,   QT_TRANSLATE_NOOP("Catalog", "Day Progress"),   calendar, "chart.pie.fill", Family::Progress, 140},
    {kind::calendarMonthProgress, QT_TRANSLATE_NOOP("Catalog", "Month Progress"), calendar, "chart.pie.fill", Family::Progress, 140},
    {kind::calendarYearProgress,  QT_TRANSLATE_NOOP("Catalog", "Year Progress"),  calendar, "chart.pie.fill", Family::Progress, 140},

    // Reminders.
    {kind::remindersNext,   QT_TRANSLATE_NOOP("Catalog", "Next Reminder"),    productivity, "checklist", Family::Reminders, 180},
    {kind::remindersToday,  "Today's Reminders",                              productivity, "checklist", Family::Reminders, 180},
    {kind::remindersAgenda, QT_TRANSLATE_NOOP("Catalog", "Reminders Agenda"), productivity, "checklist", Family::Reminders, 180},

    // Timers.
    {kind::pomodoro,  QT_TRANSLATE_NOOP("Catalog", "Pomodoro"),  productivity, "timer",          Family::Timer, 130, "", pomodoroTraits},
    {kind::timer,     QT_TRANSLATE_NOOP("Catalog", "Timer"),     productivity, "hourglass",      Family::Timer, 130},
    {kind::stopwatch, QT_TRANSLATE_NOOP("Catalog", "Stopwatch"), productivity, "stopwatch.fill", Family::Timer, 130, "", stopwatchTraits},

    // Notes and habits.
    {kind::quickTodo,          "Todos",                                          productivity, "checklist",             Family::Todos,       180},
    {kind::notesLatest,        "Notes",                                          productivity, "note.text",             Family::NativeNotes, 170, "", oldNoteTraits},
    {kind::scratchNote,        QT_TRANSLATE_NOOP("Catalog", "Quick Note"),       productivity, "square.and.pencil",     Family::Notes,       170},
    {kind::phoneQuickContacts, QT_TRANSLATE_NOOP("Catalog", "Quick Contacts"),   productivity, "person.crop.circle",    Family::Contacts,    170},
    {kind::drinkWater,         QT_TRANSLATE_NOOP("Catalog", "Drink Water"),      productivity, "drop.fill",             Family::Water,       90},
    {kind::habitTracker,       QT_TRANSLATE_NOOP("Catalog", "Habit Tracker"),    productivity, "checkmark.circle.fill", Family::Habit,       120},
    {kind::posture,            QT_TRANSLATE_NOOP("Catalog", "Posture Reminder"), productivity, "figure.seated.side",    Family::Timer,       130, "", postureTraits},

    // Readings of the machine.
    {kind::cpu,             QT_TRANSLATE_NOOP("Catalog", "CPU"),            system, "cpu",               Family::Metric, 76},
    {kind::ram,             "Memory",                                       system, "memorychip",        Family::Metric, 76},
    {kind::storage,         QT_TRANSLATE_NOOP("Catalog", "Storage"),        system, "internaldrive",     Family::Metric, 76},
    {kind::battery,         QT_TRANSLATE_NOOP("Catalog", "Battery"),        system, "battery.100",       Family::Metric, 76},
    {kind::cpuChart,        QT_TRANSLATE_NOOP("Catalog", "CPU Chart"),      system, "cpu",               Family::Metric, 160},
    {kind::ramChart,        "Memory Chart",                                 system, "memorychip",        Family::Metric, 160},
    {kind::systemChart,     "System Chart",                                 system, "chart.xyaxis.line", Family::Metric, 160},
    {kind::network,         QT_TRANSLATE_NOOP("Catalog", "Network"),        system, "network",           Family::Metric, 160},
    {kind::networkDownload, QT_TRANSLATE_NOOP("Catalog", "Download Speed"), system, "arrow.down",        Family::Metric, 160},
    {kind::networkUpload,   QT_TRANSLATE_NOOP("Catalog", "Upload Speed"),   system, "arrow.up",          Family::Metric, 160},
    {kind::networkChart,    QT_TRANSLATE_NOOP("Catalog", "Network Chart"),  system, "chart.xyaxis.line", Family::Metric, 160},

    // Applications.
    {kind::topApps,      QT_TRANSLATE_NOOP("Catalog", "App Switcher"),  appsAndFiles, "macwindow.on.rectangle", Family::Windows,  100, "", showsRunningApps},
    {kind::pinnedWindow, QT_TRANSLATE_NOOP("Catalog", "Pinned Window"), appsAndFiles, "pin.fill",               Family::Windows,  140, "", windowTraits},
    {kind::applications, QT_TRANSLATE_NOOP("Catalog", "Applications"),  appsAndFiles, "square.grid.2x2.fill",   Family::Apps,     68, "", allAppsTraits},
    {kind::appFolder,    QT_TRANSLATE_NOOP("Catalog", "App Folder"),    appsAndFiles, "square.grid.2x2.fill",   Family::Apps,     76},
    {kind::appLauncher,  QT_TRANSLATE_NOOP("Catalog", "App Launcher"),  appsAndFiles, "app.fill",               Family::Launcher, 70, "", appTraits},
    {kind::openWindows,  QT_TRANSLATE_NOOP("Catalog", "Running Apps"),  appsAndFiles, "macwindow.on.rectangle", Family::Apps,     180, "", showsRunningApps},

    // Files.
    {kind::folderLauncher, QT_TRANSLATE_NOOP("Catalog", "Folder"),             appsAndFiles, "folder.fill", Family::Files, 100, "", folderTraits},
    {kind::downloads,      QT_TRANSLATE_NOOP("Catalog", "Downloads"),          appsAndFiles, "folder.fill", Family::Files, 100, "", downloadsTraits},
    {kind::recentFiles,    QT_TRANSLATE_NOOP("Catalog", "Recent Files"),       appsAndFiles, "folder.fill", Family::Files, 100, "", takesIntoFolder},
    {kind::fileShelf,      QT_TRANSLATE_NOOP("Catalog", "File Shelf"),         appsAndFiles, "folder.fill", Family::Files, 100, "", shelfTraits},
    {kind::screenshots,    QT_TRANSLATE_NOOP("Catalog", "Recent Screenshots"), appsAndFiles, "folder.fill", Family::Files, 100, "", takesIntoFolder},

    // Search and places.
    {kind::trash,        QT_TRANSLATE_NOOP("Catalog", "Trash"),     appsAndFiles, "trash.fill",                Family::Files,     70, "", trashTraits},
    {kind::bookmarks,    QT_TRANSLATE_NOOP("Catalog", "Bookmarks"), appsAndFiles, "bookmark.fill",             Family::Bookmarks, 120},
    {kind::finderSearch, "File Search",                             appsAndFiles, "folder.badge.questionmark", Family::Search,    200},
    {kind::webSearch,    "Web Search",                              appsAndFiles, "magnifyingglass",           Family::Search,    200},

    // Utilities.
    {kind::clipboard,         QT_TRANSLATE_NOOP("Catalog", "Clipboard"),          utilities, "doc.on.clipboard",        Family::Clipboard,  140},
    {kind::calculator,        QT_TRANSLATE_NOOP("Catalog", "Calculator"),         utilities, "plus.forwardslash.minus", Family::Calculator, 120},
    {kind::converter,         QT_TRANSLATE_NOOP("Catalog", "Converter"),          utilities, "arrow.left.arrow.right",  Family::Converter,  120},
    {kind::colorPicker,       QT_TRANSLATE_NOOP("Catalog", "Color Picker"),       utilities, "eyedropper.halffull",     Family::Color,      80},
    {kind::emojiRecents,      QT_TRANSLATE_NOOP("Catalog", "Emoji"),              utilities, "face.smiling",            Family::Emoji,      90},
    {kind::screenshotCapture, QT_TRANSLATE_NOOP("Catalog", "Screenshot Capture"), utilities, "camera.viewfinder",       Family::Screenshot, 90},

    // Devices.
    {kind::voiceMemo,          QT_TRANSLATE_NOOP("Catalog", "Voice Memo"),          media,  "waveform",            Family::Voice,            110},
    {kind::systemQuickToggles, QT_TRANSLATE_NOOP("Catalog", "Quick Toggles"),       system, "switch.2",            Family::Toggles,          170},
    {kind::backgroundSound,    QT_TRANSLATE_NOOP("Catalog", "Background Sounds"),   media,  "waveform",            Family::Sounds,           120},
    {kind::keyboardCleaner,    QT_TRANSLATE_NOOP("Catalog", "Keyboard Cleaner"),    system, "keyboard",            Family::KeyboardCleaner,  100},
    {kind::externalBattery,    QT_TRANSLATE_NOOP("Catalog", "Accessory Batteries"), system, "battery.100",         Family::AccessoryBattery, 110},
    {kind::temperature,        QT_TRANSLATE_NOOP("Catalog", "Temperature"),         system, "thermometer.medium",  Family::Temperature,      95},
    {kind::audioOutput,        "Audio Controls",                                    media,  "speaker.wave.2.fill", Family::Audio,            140},
    {kind::microphoneMute,     "Microphone",                                        media,  "mic.fill",            Family::Audio,            90},

    // Music.
    {kind::nowPlayingMini,         QT_TRANSLATE_NOOP("Catalog", "Now Playing Mini"), media, "music.note", Family::Music, 190},
    {kind::nowPlayingExpanded,     QT_TRANSLATE_NOOP("Catalog", "Now Playing"),      media, "music.note", Family::Music, 190},
    {kind::nowPlayingTimeline,     "Now Playing Timeline",                           media, "music.note", Family::Music, 190},
    {kind::nowPlayingYouTubeVideo, "YouTube",                                        media, "music.note", Family::Music, 190},

    // Pictures and flows.
    {kind::photosRecent, "Photos",                                  media,        "photo",              Family::Photos,    110},
    {kind::wallpaper,    QT_TRANSLATE_NOOP("Catalog", "Wallpaper"), media,        "photo.on.rectangle", Family::Wallpaper, 110},
    {kind::airdrop,      QT_TRANSLATE_NOOP("Catalog", "AirDrop"),   appsAndFiles, "airplayaudio",       Family::Airdrop,   76, "BrandAirDrop", nearbyTraits},
    {kind::workflow,     QT_TRANSLATE_NOOP("Catalog", "Workflow"),  appsAndFiles, "square.stack.3d.up", Family::Workflow,  110},

    // Weather.
    {kind::weatherCurrent,       "Weather",                                        weather, "cloud.sun.fill", Family::Weather, 92},
    {kind::weatherDetailed,      "Detailed Weather",                               weather, "cloud.sun.fill", Family::Weather, 180},
    {kind::weatherCondition,     "Conditions",                                     weather, "cloud.sun.fill", Family::Weather, 180},
    {kind::weatherForecast,      QT_TRANSLATE_NOOP("Catalog", "Forecast"),         weather, "cloud.sun.fill", Family::Weather, 180},
    {kind::weatherHourly,        "Hourly Weather",                                 weather, "cloud.sun.fill", Family::Weather, 180},
    {kind::weatherWind,          QT_TRANSLATE_NOOP("Catalog", "Wind"),             weather, "cloud.sun.fill", Family::Weather, 180},
    {kind::weatherSunCycle,      QT_TRANSLATE_NOOP("Catalog", "Sunrise & Sunset"), weather, "cloud.sun.fill", Family::Weather, 180},
    {kind::weatherTodayForecast, QT_TRANSLATE_NOOP("Catalog", "Today & Forecast"), weather, "cloud.sun.fill", Family::Weather, 180},

    // Services for developers.
    {kind::analyticsGitHub,              QT_TRANSLATE_NOOP("Catalog", "GitHub"),               developer, risingLine, Family::Integration, 160, "BrandGitHub"},
    {kind::analyticsGitHubOverview,      QT_TRANSLATE_NOOP("Catalog", "GitHub Overview"),      developer, risingLine, Family::Integration, 160, "BrandGitHub"},
    {kind::analyticsGitHubContributions, QT_TRANSLATE_NOOP("Catalog", "GitHub Contributions"), developer, risingLine, Family::Integration, 160, "BrandGitHub"},
    {kind::productivityLinear,           QT_TRANSLATE_NOOP("Catalog", "Linear"),               developer, risingLine, Family::Integration, 160, "BrandLinear"},
    {kind::productivityLinearOverview,   "Linear Overview",                                    developer, risingLine, Family::Integration, 160, "BrandLinear"},
    {kind::analyticsSupabase,            QT_TRANSLATE_NOOP("Catalog", "Supabase"),             developer, risingLine, Family::Integration, 160, "BrandSupabase"},
    {kind::analyticsSupabaseOverview,    QT_TRANSLATE_NOOP("Catalog", "Supabase Overview"),    developer, risingLine, Family::Integration, 160, "BrandSupabase"},

    // Services for business.
    {kind::revenueStripe,            "Stripe Revenue",                                 business, risingLine, Family::Integration, 160, "BrandStripe"},
    {kind::revenuePolar,             "Polar Revenue",                                  business, risingLine, Family::Integration, 160, "BrandPolar"},
    {kind::revenueDodoPayments,      QT_TRANSLATE_NOOP("Catalog", "Dodo Payments"),    business, risingLine, Family::Integration, 160, "BrandDodo"},
    {kind::revenueLemonSqueezy,      QT_TRANSLATE_NOOP("Catalog", "Lemon Squeezy"),    business, risingLine, Family::Integration, 160},
    {kind::shopifyRevenue,           QT_TRANSLATE_NOOP("Catalog", "Shopify Revenue"),  business, risingLine, Family::Integration, 160, "BrandShopify"},
    {kind::shopifyOverview,          QT_TRANSLATE_NOOP("Catalog", "Shopify Overview"), business, risingLine, Family::Integration, 160, "BrandShopify"},
    {kind::shopifyTrends,            QT_TRANSLATE_NOOP("Catalog", "Shopify Trends"),   business, risingLine, Family::Integration, 160, "BrandShopify"},
    {kind::analyticsResend,          QT_TRANSLATE_NOOP("Catalog", "Resend"),           business, risingLine, Family::Integration, 160, "BrandResend"},
    {kind::analyticsResendOverview,  QT_TRANSLATE_NOOP("Catalog", "Resend Overview"),  business, risingLine, Family::Integration, 160, "BrandResend"},
    {kind::analyticsDubOverview,     QT_TRANSLATE_NOOP("Catalog", "Dub Analytics"),    business, risingLine, Family::Integration, 160, "BrandDub"},
    {kind::dubShortener,             "Dub Links",                                      business, risingLine, Family::Integration, 160, "BrandDub"},
    {kind::analyticsPlausible,       QT_TRANSLATE_NOOP("Catalog", "Plausible"),        business, risingLine, Family::Integration, 160, "BrandPlausible"},
    {kind::analyticsPlausibleChart,  QT_TRANSLATE_NOOP("Catalog", "Plausible Chart"),  business, risingLine, Family::Integration, 160, "BrandPlausible"},
    {kind::analyticsSimpleAnalytics, QT_TRANSLATE_NOOP("Catalog", "Simple Analytics"), business, risingLine, Family::Integration, 160, "BrandSimpleAnalytics"},
    {kind::analyticsDataFast,        QT_TRANSLATE_NOOP("Catalog", "DataFast"),         business, risingLine, Family::Integration, 160, "BrandDataFast"},
    {kind::analyticsDataFastChart,   QT_TRANSLATE_NOOP("Catalog", "DataFast Chart"),   business, risingLine, Family::Integration, 160, "BrandDataFast"},

    // Social networks.
    {kind::socialTwitter,   "X Followers",                                       social, risingLine, Family::Integration, 160, "SocialBrandX"},
    {kind::xStudio,         QT_TRANSLATE_NOOP("Catalog", "X Studio"),            social, risingLine, Family::Studio,      160, "SocialBrandX"},
    {kind::socialTikTok,    "TikTok Followers",                                  social, risingLine, Family::Integration, 160, "SocialBrandTikTok"},
    {kind::socialYouTube,   "YouTube Subscribers",                               social, risingLine, Family::Integration, 160, "SocialBrandYouTube"},
    {kind::youtubeStudio,   QT_TRANSLATE_NOOP("Catalog", "YouTube Studio"),      social, risingLine, Family::Studio,      160, "SocialBrandYouTube"},
    {kind::socialInstagram, QT_TRANSLATE_NOOP("Catalog", "Instagram Followers"), social, risingLine, Family::Integration, 160, "SocialBrandInstagram"},

    // Finance.
    {kind::stockQuote,      "Stock Quote",                                    finance, risingLine, Family::Integration, 160},
    {kind::stockChart,      QT_TRANSLATE_NOOP("Catalog", "Stock Chart"),      finance, risingLine, Family::Integration, 160},
    {kind::stockWatchlist,  QT_TRANSLATE_NOOP("Catalog", "Stock Watchlist"),  finance, risingLine, Family::Integration, 160},
    {kind::cryptoQuote,     "Crypto Quote",                                   finance, risingLine, Family::Integration, 160},
    {kind::cryptoChart,     QT_TRANSLATE_NOOP("Catalog", "Crypto Chart"),     finance, risingLine, Family::Integration, 160},
    {kind::cryptoWatchlist, QT_TRANSLATE_NOOP("Catalog", "Crypto Watchlist"), finance, risingLine, Family::Integration, 160},

    // Files, mail, meetings and the home.
    {kind::dropbox,            QT_TRANSLATE_NOOP("Catalog", "Dropbox"),        appsAndFiles, risingLine,      Family::Integration, 160, "BrandDropbox"},
    {kind::gmailLatest,        "Gmail",                                        productivity, risingLine,      Family::Integration, 160, "BrandGmail"},
    {kind::gmailUnreadSummary, "Gmail Unread",                                 productivity, risingLine,      Family::Integration, 160, "BrandGmail"},
    {kind::mailLatest,         "Mail",                                         productivity, "envelope.fill", Family::Mail,        160},
    {kind::mailUnreadSummary,  QT_TRANSLATE_NOOP("Catalog", "Mail Unread"),    productivity, "envelope.fill", Family::Mail,        160},
    {kind::zoomMeeting,        "Zoom Meetings",                                productivity, risingLine,      Family::Integration, 160, "BrandZoom"},
    {kind::homeAssistant,      QT_TRANSLATE_NOOP("Catalog", "Home Assistant"), system,       risingLine,      Family::Integration, 160},
    {kind::appleHome,          QT_TRANSLATE_NOOP("Catalog", "Apple Home"),     system,       risingLine,      Family::Integration, 160},

    // AI tools.
    {kind::analyticsCursorUsage,      QT_TRANSLATE_NOOP("Catalog", "Cursor Team Usage"),     aiTools, risingLine, Family::Integration, 160, "BrandCursor"},
    {kind::cursorPersonalUsage,       QT_TRANSLATE_NOOP("Catalog", "Cursor Personal Usage"), aiTools, risingLine, Family::Integration, 160, "BrandCursor"},
    {kind::claudePlanUsage,           "Claude Usage",                                        aiTools, risingLine, Family::Integration, 160, "BrandClaude"},
    {kind::claudePlanUsageGauge,      QT_TRANSLATE_NOOP("Catalog", "Claude Usage Gauge"),    aiTools, risingLine, Family::Integration, 160, "BrandClaude"},
    {kind::analyticsClaudeCodeStatus, QT_TRANSLATE_NOOP("Catalog", "Claude Code"),           aiTools, risingLine, Family::Integration, 160, "BrandClaude"},
    {kind::codexUsageGauge,           "Codex Usage",                                         aiTools, risingLine, Family::Integration, 160, "BrandCodex", codexTraits},
    {kind::copilotUsage,              QT_TRANSLATE_NOOP("Catalog", "Copilot Usage"),         aiTools, risingLine, Family::Integration, 160, "BrandAIcopilot"},
    {kind::geminiAPIUsage,            QT_TRANSLATE_NOOP("Catalog", "Gemini API Usage"),      aiTools, risingLine, Family::Integration, 160, "BrandAIgeminiAPI"},
    {kind::grokUsage,                 QT_TRANSLATE_NOOP("Catalog", "Grok Usage"),            aiTools, risingLine, Family::Integration, 160, "BrandAIgrok"},
    {kind::glmUsage,                  QT_TRANSLATE_NOOP("Catalog", "GLM Usage"),             aiTools, risingLine, Family::Integration, 160, "BrandAIglm"},
    {kind::openCodeUsage,             QT_TRANSLATE_NOOP("Catalog", "OpenCode Usage"),        aiTools, risingLine, Family::Integration, 160, "BrandAIopenCode"},
    {kind::antigravityUsage,          QT_TRANSLATE_NOOP("Catalog", "Antigravity Usage"),     aiTools, risingLine, Family::Integration, 160, "BrandAIantigravity"},
    {kind::perplexityUsage,           QT_TRANSLATE_NOOP("Catalog", "Perplexity Usage"),      aiTools, risingLine, Family::Integration, 160, "BrandAIperplexity"},

    // Gaps in the dock, and what came later.
    {kind::dockSeparator,                 QT_TRANSLATE_NOOP("Catalog", "Separator"),              layout,    "line.3.horizontal",      Family::Separator,   8, "", lineTraits},
    {kind::dockSpace,                     QT_TRANSLATE_NOOP("Catalog", "Space"),                  layout,    "rectangle.dashed",       Family::Space,       28, "", gapTraits},
    {kind::codexUsage,                    QT_TRANSLATE_NOOP("Catalog", "Codex Usage"),            aiTools,   "sparkles",               Family::Integration, 160, "BrandCodex", codexTraits},
    {kind::analyticsSimpleAnalyticsChart, QT_TRANSLATE_NOOP("Catalog", "Simple Analytics Chart"), analytics, "chart.xyaxis.line",      Family::Integration, 180, "BrandSimpleAnalytics"},
    {kind::todayClock,                    "Today",                                                clocks,    "clock",                  Family::Clock,       190, "", cityTraits},
    {kind::appSwitcher,                   QT_TRANSLATE_NOOP("Catalog", "App Switcher"),           system,    "macwindow.on.rectangle", Family::Windows,     100, "", showsRunningApps},
    {kind::processTopApps,                "Top Apps",                                             system,    "list.number",            Family::Processes,   180},
    {kind::temperatureChart,              QT_TRANSLATE_NOOP("Catalog", "Temperature Chart"),      system,    "thermometer.medium",     Family::Temperature, 160},
    {kind::appVolume,                     QT_TRANSLATE_NOOP("Catalog", "App Volume"),             system,    "speaker.wave.2",         Family::AppVolume,   120},
    {kind::exercise,                      QT_TRANSLATE_NOOP("Catalog", "Exercise"),               system,    "figure.walk",            Family::Timer,       130, "", exerciseTraits},
    {kind::backgroundSounds,              QT_TRANSLATE_NOOP("Catalog", "Background Sounds"),      media,     "waveform",               Family::Sounds,      180},
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
