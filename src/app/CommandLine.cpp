#include "app/CommandLine.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"

namespace tarnwick {
namespace {

struct CommandLineWords {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

using namespace Qt::StringLiterals;

constexpr auto kModesBeforeFixture = std::to_array<std::pair<const char*, Mode>>({
    {"--claude-hook", Mode::ClaudeHook},
    {"--network-diagnose", Mode::NetworkDiagnose},
    {"--diagnose", Mode::Diagnose},
    {"--snapshot", Mode::Snapshot},
    {"--command-bar-latency", Mode::CommandBarLatency},
});

constexpr auto kOrders = std::to_array<std::pair<const char*, Order::Kind>>({
    {"--toggle", Order::Kind::Toggle},
    {"--command-bar", Order::Kind::CommandBar},
    {"--focus", Order::Kind::Focus},
});

struct NumberedOrder {
  QLatin1StringView name;
  Order::Kind kind;
  int first;
};
constexpr NumberedOrder kNumbered[] = {{"--profile"_L1, Order::Kind::Profile, 0}, {"--app"_L1, Order::Kind::App, 1}};

/// Switches whose next argument belongs to them and is no file to open.
constexpr auto kWithValue = std::to_array<QLatin1StringView>({
    "--profile"_L1,
    "--app"_L1,
    "--restore-dock-directory"_L1,
    "--benchmark"_L1,
    "--benchmark-warmup"_L1,
    "--benchmark-out"_L1,
    "--benchmark-label"_L1,
    "--benchmark-layout"_L1,
});

/// Those of the toolkit, which takes them with one dash or two.
constexpr auto kToolkitWithValue = std::to_array<QLatin1StringView>({
    "display"_L1,
    "fontengine"_L1,
    "geometry"_L1,
    "icon"_L1,
    "name"_L1,
    "platform"_L1,
    "platformpluginpath"_L1,
    "platformtheme"_L1,
    "plugin"_L1,
    "qwindowgeometry"_L1,
    "qwindowicon"_L1,
    "qwindowtitle"_L1,
    "session"_L1,
    "style"_L1,
    "stylesheet"_L1,
    "title"_L1,
});

/// Those that stand alone, or whose missing value leaves them without meaning.
constexpr auto kAlone =
    std::to_array<QLatin1StringView>({"--reverse"_L1, "--widgetcount"_L1, "--write-fixture-config"_L1});

bool isIn(const auto& names, QStringView argument) {
  return std::ranges::any_of(names, [argument](QLatin1StringView name) { return argument == name; });
}

template <std::size_t N>
bool stands(QStringView name, const std::array<QLatin1StringView, N>& list) {
  return std::ranges::any_of(list, [&](QLatin1StringView entry) { return name == entry; });
}

bool takesValue(QStringView argument) {
  if (!argument.startsWith(u'-')) return false;
  return stands(argument, kWithValue) ||
         stands(argument.sliced(argument.startsWith("--"_L1) ? 2 : 1), kToolkitWithValue);
}

/// A switch with one dash is the toolkit's or the session's business.
bool isKnown(QStringView argument) {
  const bool order =
      std::ranges::any_of(kOrders, [&](const auto& o) { return argument == QLatin1StringView(o.first); });
  return !argument.startsWith("--"_L1) || order || stands(argument, kAlone) || takesValue(argument.split(u'=').first());
}

/// The argument after a switch, or nothing when the switch is the last one or absent.
std::optional<QString> after(const QStringList& arguments, QLatin1StringView name) {
  const qsizetype at = arguments.indexOf(name);
  if (at < 0 || at + 1 >= arguments.size()) return std::nullopt;
  return arguments[at + 1];
}

std::optional<int> iterationsAfter(const QStringList& arguments, QLatin1StringView name) {
  bool isNumber = false;
  const int count = after(arguments, name).value_or(QString()).toInt(&isNumber);
  return isNumber ? std::optional(std::max(0, count)) : std::nullopt;
}

std::optional<Order> orderIn(const QStringList& arguments) {
  for (const auto& [name, kind] : kOrders) {
    if (arguments.contains(QLatin1StringView(name))) return Order{kind, 0};
  }
  for (const auto& [name, kind, first] : kNumbered) {
    const auto text = after(arguments, name);
    if (!text) continue;
    bool isNumber = false;
    const int number = text->toInt(&isNumber);
    if (isNumber && number >= first) return Order{kind, number};
  }
  return std::nullopt;
}

QString unknown(const QString& argument) {
  return CommandLineWords::tr("Unknown option “%1”. See tarnwick --help.").arg(argument);
}

QString profileWithoutNumber() {
  return CommandLineWords::tr("“--profile” needs the number of a profile. The first one is 0.");
}

QString appWithoutNumber() { return CommandLineWords::tr("“--app” needs the number of an app. The first one is 1."); }

bool measures(const QStringList& arguments) {
  const auto seconds = after(arguments, "--benchmark"_L1);
  return seconds && Text::number(Text::trimmed(*seconds)).value_or(0) > 0;
}

}  // namespace

CommandLine CommandLine::parse(const QStringList& arguments) {
  CommandLine line;
  for (const auto& [name, mode] : kModesBeforeFixture) {
    if (!arguments.contains(QLatin1StringView(name))) continue;
    line.mode = mode;
    line.argument = QLatin1StringView(name);
    if (mode == Mode::CommandBarLatency) line.iterations = iterationsAfter(arguments, QLatin1StringView(name));
    return line;
  }
  if (const auto path = after(arguments, "--write-fixture-config"_L1)) {
    line.mode = Mode::WriteFixtureConfig;
    line.argument = u"--write-fixture-config"_s;
    line.path = *path;
    return line;
  }
  for (const auto& [name, mode] :
       {std::pair{"--restore-dock"_L1, Mode::RestoreDock}, std::pair{"--restore-windows"_L1, Mode::RestoreWindows}}) {
    if (!arguments.contains(name)) continue;
    line.mode = mode;
    line.argument = name;
    line.directory = after(arguments, "--restore-dock-directory"_L1);
    return line;
  }
  if (measures(arguments)) {
    line.mode = Mode::Benchmark;
    line.argument = u"--benchmark"_s;
    return line;
  }

  for (const auto& [name, mode] : {std::pair{"--help"_L1, Mode::Help}, std::pair{"--version"_L1, Mode::Version}}) {
    if (!arguments.contains(name)) continue;
    line.mode = mode;
    line.argument = name;
    return line;
  }

  line.order = orderIn(arguments);
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    if (i > 0 && takesValue(arguments[i - 1])) continue;
    if (!arguments[i].startsWith(u'-')) line.files << arguments[i];
    if (!isKnown(arguments[i])) line.remarks << unknown(arguments[i]);
  }
  if (arguments.contains("--profile"_L1) && !line.order) line.remarks << profileWithoutNumber();
  if (arguments.contains("--app"_L1) && !line.order) line.remarks << appWithoutNumber();
  return line;
}

QString CommandLine::help() {
  return CommandLineWords::tr(
      "Usage: tarnwick [OPTION] [FILE…]\n"
      "\n"
      "Starts the dock. If it is already running, the option or the files are passed to it.\n"
      "\n"
      "  --toggle         hide or show the dock\n"
      "  --focus          move the keyboard focus to the dock\n"
      "  --profile N      switch to a profile (0 is the first)\n"
      "  --app N          open an app of the dock (1 is the first)\n"
      "  --command-bar    open the command bar, or close it\n"
      "\n"
      "  --restore-dock   restore the system dock and exit\n"
      "  --snapshot       save pictures of every widget and exit (--output FOLDER)\n"
      "  --version        show the version and exit\n"
      "  --help           show this help and exit\n");
}

}  // namespace tarnwick
