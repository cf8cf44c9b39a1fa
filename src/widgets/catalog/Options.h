#pragma once

#include <QString>

/// The names of the options of widgets, as DockWidget::options holds them and the settings store them. What an option
/// means its room declares (WidgetOption) or the rule that keeps it.
namespace tarnwick::option {

// What tiles of applications, files and windows show.
inline constexpr QLatin1StringView path{"path"};
inline constexpr QLatin1StringView paths{"paths"};
inline constexpr QLatin1StringView windowTitle{"windowTitle"};
inline constexpr QLatin1StringView appName{"appName"};
inline constexpr QLatin1StringView bundleID{"bundleID"};
inline constexpr QLatin1StringView sort{"sort"};
inline constexpr QLatin1StringView stack{"stack"};

// Timers.
inline constexpr QLatin1StringView minutes{"minutes"};
inline constexpr QLatin1StringView deadline{"deadline"};
inline constexpr QLatin1StringView remaining{"remaining"};
inline constexpr QLatin1StringView started{"started"};
inline constexpr QLatin1StringView elapsed{"elapsed"};
inline constexpr QLatin1StringView laps{"laps"};
inline constexpr QLatin1StringView phase{"phase"};
inline constexpr QLatin1StringView sessions{"sessions"};
inline constexpr QLatin1StringView shortBreak{"shortBreak"};
inline constexpr QLatin1StringView longBreak{"longBreak"};
inline constexpr QLatin1StringView cycleLength{"cycleLength"};
inline constexpr QLatin1StringView autoContinue{"autoContinue"};
inline constexpr QLatin1StringView standingMinutes{"standingMinutes"};

// Habits and glasses of water.
inline constexpr QLatin1StringView goal{"goal"};
inline constexpr QLatin1StringView glasses{"glasses"};
inline constexpr QLatin1StringView day{"day"};
inline constexpr QLatin1StringView history{"history"};
inline constexpr QLatin1StringView completedDays{"completedDays"};
inline constexpr QLatin1StringView interval{"interval"};
inline constexpr QLatin1StringView lastReminder{"lastReminder"};

// Notes.
inline constexpr QLatin1StringView text{"text"};
inline constexpr QLatin1StringView edited{"edited"};

// Clocks and weather.
inline constexpr QLatin1StringView timezone{"timezone"};
inline constexpr QLatin1StringView zoneLabel{"zoneLabel"};
inline constexpr QLatin1StringView zones{"zones"};
inline constexpr QLatin1StringView city{"city"};
inline constexpr QLatin1StringView cityPosition{"cityPosition"};  ///< As ChosenPlace writes it.
inline constexpr QLatin1StringView weatherLocation{"weatherLocation"};

// Utilities.
inline constexpr QLatin1StringView expression{"expression"};
inline constexpr QLatin1StringView calculations{"calculations"};
inline constexpr QLatin1StringView value{"value"};
inline constexpr QLatin1StringView from{"from"};
inline constexpr QLatin1StringView to{"to"};
inline constexpr QLatin1StringView color{"color"};
inline constexpr QLatin1StringView recentColors{"recentColors"};
inline constexpr QLatin1StringView recents{"recents"};

// The machine.
inline constexpr QLatin1StringView sortBy{"sortBy"};
inline constexpr QLatin1StringView toggles{"toggles"};
inline constexpr QLatin1StringView wallpaperInterval{"wallpaperInterval"};
inline constexpr QLatin1StringView lastWallpaperChange{"lastWallpaperChange"};

// Connections to services.
inline constexpr QLatin1StringView connectionMode{"connectionMode"};
inline constexpr QLatin1StringView endpoint{"endpoint"};
inline constexpr QLatin1StringView field{"field"};
inline constexpr QLatin1StringView metricLabel{"metricLabel"};
inline constexpr QLatin1StringView prefix{"prefix"};
inline constexpr QLatin1StringView suffix{"suffix"};
inline constexpr QLatin1StringView dashboard{"dashboard"};  ///< The page of the service where its values are from.
inline constexpr QLatin1StringView codexExecutable{"codexExecutable"};
inline constexpr QLatin1StringView claudeSettings{"claudeSettings"};
inline constexpr QLatin1StringView claudeHookExecutable{"claudeHookExecutable"};
inline constexpr QLatin1StringView historyDirectory{"historyDirectory"};
inline constexpr QLatin1StringView control{"control"};  ///< Whether its panel may switch what it shows.

// What programs leave on this machine.
inline constexpr QLatin1StringView historySource{"historySource"};
inline constexpr QLatin1StringView announcesPermission{"announcesPermission"};  ///< Whether one that is waited for is.

// What of a service a widget shows.
inline constexpr QLatin1StringView site{"site"};
inline constexpr QLatin1StringView currency{"currency"};
inline constexpr QLatin1StringView coin{"coin"};
inline constexpr QLatin1StringView projectRef{"projectRef"};
inline constexpr QLatin1StringView username{"username"};
inline constexpr QLatin1StringView repository{"repository"};
inline constexpr QLatin1StringView symbols{"symbols"};
inline constexpr QLatin1StringView entity{"entity"};
inline constexpr QLatin1StringView server{"server"};
inline constexpr QLatin1StringView channel{"channel"};
inline constexpr QLatin1StringView shop{"shop"};
inline constexpr QLatin1StringView shopifyReportMode{"shopifyReportMode"};
inline constexpr QLatin1StringView periodDays{"periodDays"};
inline constexpr QLatin1StringView dropboxPath{"dropboxPath"};
inline constexpr QLatin1StringView region{"region"};

// What no option may hold: credentials have a place of their own.
inline constexpr QLatin1StringView token{"token"};
inline constexpr QLatin1StringView apiKey{"apiKey"};
inline constexpr QLatin1StringView password{"password"};
inline constexpr QLatin1StringView secret{"secret"};

}  // namespace tarnwick::option

/// Values of those options that are one word of a few.
namespace tarnwick::value {

// Of switches.
inline constexpr QLatin1StringView on{"true"};
inline constexpr QLatin1StringView off{"false"};

// Of `phase`.
inline constexpr QLatin1StringView work{"work"};
inline constexpr QLatin1StringView shortBreak{"shortBreak"};
inline constexpr QLatin1StringView longBreak{"longBreak"};
inline constexpr QLatin1StringView seated{"seated"};
inline constexpr QLatin1StringView standing{"standing"};

// Of `sort`. Without it the newest come first.
inline constexpr QLatin1StringView byName{"name"};
inline constexpr QLatin1StringView byKind{"kind"};
inline constexpr QLatin1StringView bySize{"size"};

// Of `sortBy`. Without it those come first that keep the processor busy.
inline constexpr QLatin1StringView byMemory{"RAM"};

// Of `connectionMode`.
inline constexpr QLatin1StringView native{"native"};
inline constexpr QLatin1StringView codexLocal{"codexLocal"};
inline constexpr QLatin1StringView geminiHistory{"geminiHistory"};
inline constexpr QLatin1StringView claudeActivity{"claudeActivity"};
inline constexpr QLatin1StringView geminiCLI{"geminiCLI"};
inline constexpr QLatin1StringView openCode{"openCode"};
inline constexpr QLatin1StringView hermes{"hermes"};
inline constexpr QLatin1StringView perplexitySession{"perplexitySession"};

// Of `weatherLocation`. Without it the option `city` says where.
inline constexpr QLatin1StringView current{"current"};

}  // namespace tarnwick::value
