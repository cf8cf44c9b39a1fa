#include "app/CommandLine.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"

namespace tarnwick {
namespace {

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

/// Switches whose next argument belongs to them and is no file to open.
constexpr auto kWithValue = std::to_array<const char*>({
    "--profile",
    "--restore-dock-directory",
    "--benchmark",
    "--benchmark-warmup",
    "--benchmark-out",
    "--benchmark-label",
    "--benchmark-layout",
});

/// The argument after a switch, or nothing when the switch is the last one or absent.
std::optional<QString> after(const QStringList& arguments, QLatin1StringView name) {
  const qsizetype at = arguments.indexOf(name);
  if (at < 0 || at + 1 >= arguments.size()) return std::nullopt;
  return arguments[at + 1];
}

std::optional<Order> orderIn(const QStringList& arguments) {
  for (const auto& [name, kind] : kOrders) {
    if (arguments.contains(QLatin1StringView(name))) return Order{kind, 0};
  }
  if (const auto number = after(arguments, "--profile"_L1)) {
    bool isNumber = false;
    const int profile = number->toInt(&isNumber);
    if (isNumber && profile >= 0) return Order{Order::Kind::Profile, profile};
  }
  return std::nullopt;
}

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
    return line;
  }
  if (const auto path = after(arguments, "--write-fixture-config"_L1)) {
    line.mode = Mode::WriteFixtureConfig;
    line.argument = u"--write-fixture-config"_s;
    line.path = *path;
    return line;
  }
  if (arguments.contains("--restore-dock"_L1)) {
    line.mode = Mode::RestoreDock;
    line.argument = u"--restore-dock"_s;
    line.directory = after(arguments, "--restore-dock-directory"_L1);
    return line;
  }
  if (measures(arguments)) {
    line.mode = Mode::Benchmark;
    line.argument = u"--benchmark"_s;
    return line;
  }

  line.order = orderIn(arguments);
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const bool isValue = i > 0 && std::ranges::any_of(kWithValue, [&](const char* name) {
                           return arguments[i - 1] == QLatin1StringView(name);
                         });
    if (!arguments[i].startsWith(u'-') && !isValue) line.files << arguments[i];
  }
  return line;
}

}  // namespace tarnwick
