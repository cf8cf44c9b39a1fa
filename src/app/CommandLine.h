#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace tarnwick {

/// What one start of the executable is for.
enum class Mode {
  ClaudeHook,
  NetworkDiagnose,
  Diagnose,
  Snapshot,
  CommandBarLatency,
  WriteFixtureConfig,
  RestoreDock,
  RestoreWindows,
  Benchmark,
  Help,
  Version,
  Run,
};

/// What the user asks of a running dock from a terminal, or from a key that the desktop itself keeps.
struct Order {
  enum class Kind { Toggle, CommandBar, Focus, Profile, App };
  Kind kind = Kind::Toggle;
  int number = 0;  ///< With Profile: 0 is the first one. With App: 1 is.

  bool operator==(const Order&) const = default;
};

/// The command line, read. Pure.
struct CommandLine {
  Mode mode = Mode::Run;
  QString argument;                  ///< The switch that decided, as it was typed.
  QString path;                      ///< WriteFixtureConfig: the file to write.
  std::optional<QString> directory;  ///< RestoreDock, RestoreWindows: another data directory than the default.
  std::optional<int> iterations;     ///< CommandBarLatency: how often each query is run; never below 0.
  std::optional<Order> order;        ///< Run: what to do once the dock runs.
  QStringList files;                 ///< Run: what was handed over to be opened.
  QStringList remarks;               ///< Run: a sentence about each unknown switch; the start goes on.

  bool operator==(const CommandLine&) const = default;

  /// `arguments` without the program's own name. The switches are looked for in a fixed order, each by an exact match
  /// anywhere in the list; the first that matches decides, whatever else is there. A measurement needs its number
  /// of seconds; without a positive one its switch decides nothing.
  static CommandLine parse(const QStringList& arguments);

  /// What --help prints.
  static QString help();
};

}  // namespace tarnwick
