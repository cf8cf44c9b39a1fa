#include "views/tiles/TileContent.h"

#include <QCoreApplication>
#include <QLatin1StringView>
#include <algorithm>
#include <array>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct ContentRow {
  QLatin1StringView kind;
  TileContent (*make)(const TileRequest&);
};

template <auto Make>
TileContent made(const TileRequest& request) {
  return Make(request);
}

/// A launcher that was given no application yet has only its name to show.
TileContent launcher(const TileRequest& request) {
  if (!request.widget.options.value(QStringLiteral("path")).isEmpty()) return makeLauncher(request);
  GenericContent content = makeGeneric(request);
  content.word = QCoreApplication::translate("Tiles", "Choose app");
  content.opensEditor = true;
  return content;
}

/// Which widgets have a painter of their own.
constexpr std::array kContentRows = {
    ContentRow{"applications"_L1, made<makeApplications>},
    ContentRow{"digitalClock"_L1, made<makeTimeDate>},
    ContentRow{"analogClassicLight"_L1, made<makeAnalogClock>},
    ContentRow{"weatherCurrent"_L1, made<makeCurrentWeather>},
    ContentRow{"cpu"_L1, made<makeCpuGauge>},
    ContentRow{"ram"_L1, made<makeMemoryGauge>},
    ContentRow{"storage"_L1, made<makeStorageGauge>},
    ContentRow{"systemQuickToggles"_L1, made<makeToggles>},
    ContentRow{"appLauncher"_L1, launcher},
    ContentRow{"appFolder"_L1, made<makeAppFolder>},
    ContentRow{"folderLauncher"_L1, made<makeFolder>},
    ContentRow{"downloads"_L1, made<makeDownloads>},
    ContentRow{"trash"_L1, made<makeTrash>},
    ContentRow{"fileShelf"_L1, made<makeShelf>},
    ContentRow{"dockSeparator"_L1, made<makeSeparator>},
    ContentRow{"dockSpace"_L1, made<makeSpace>},
};

struct AccentRow {
  QLatin1StringView word;  ///< A kind or a family.
  Accent accent;
};

/// Kinds first, since one may differ from its family. What is not listed is blue.
constexpr std::array kAccents = {
    AccentRow{"ram"_L1, Accent::Purple},
    AccentRow{"ramChart"_L1, Accent::Purple},
    AccentRow{"network"_L1, Accent::Teal},
    AccentRow{"networkDownload"_L1, Accent::Teal},
    AccentRow{"networkUpload"_L1, Accent::Teal},
    AccentRow{"networkChart"_L1, Accent::Teal},
    AccentRow{"storage"_L1, Accent::Blue},
    AccentRow{"pomodoro"_L1, Accent::Red},
    AccentRow{"posture"_L1, Accent::Teal},
    AccentRow{"microphoneMute"_L1, Accent::Red},
    AccentRow{"metric"_L1, Accent::Green},
    AccentRow{"processes"_L1, Accent::Green},
    AccentRow{"accessoryBattery"_L1, Accent::Green},
    AccentRow{"temperature"_L1, Accent::Orange},
    AccentRow{"clock"_L1, Accent::Orange},
    AccentRow{"timer"_L1, Accent::Orange},
    AccentRow{"calendar"_L1, Accent::Red},
    AccentRow{"progress"_L1, Accent::Red},
    AccentRow{"reminders"_L1, Accent::Orange},
    AccentRow{"todos"_L1, Accent::Green},
    AccentRow{"habit"_L1, Accent::Green},
    AccentRow{"notes"_L1, Accent::Yellow},
    AccentRow{"nativeNotes"_L1, Accent::Yellow},
    AccentRow{"audio"_L1, Accent::Pink},
    AccentRow{"appVolume"_L1, Accent::Pink},
    AccentRow{"music"_L1, Accent::Pink},
    AccentRow{"voice"_L1, Accent::Red},
    AccentRow{"sounds"_L1, Accent::Teal},
};

/// The same accent for every tile of one service.
Accent serviceAccent(const WidgetDefinition& definition) {
  static constexpr std::array accents = {Accent::Purple, Accent::Teal,  Accent::Orange, Accent::Blue,
                                         Accent::Red,    Accent::Green, Accent::Pink};
  const QString service = definition.asset.isEmpty() ? definition.name.section(u' ', 0, 0) : definition.asset;
  std::size_t sum = 0;
  for (const QChar letter : service) sum += letter.unicode();
  return accents[sum % accents.size()];
}

template <class... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};

}  // namespace

TileContent makeTileContent(const DockWidget& widget, const WidgetDefinition& definition, const TileSources& sources) {
  const TileRequest request{widget, definition, sources};
  const auto row = std::ranges::find(kContentRows, widget.kind, &ContentRow::kind);
  return row == kContentRows.end() ? TileContent(makeGeneric(request)) : row->make(request);
}

TileText tileText(const TileContent& content, const QString& name) {
  return std::visit([&name](const auto& value) { return describe(value, name); }, content);
}

Accent tileAccent(const WidgetDefinition& definition) {
  if (isConnectedFamily(definition.family)) return serviceAccent(definition);
  for (const QString& word : {definition.id, definition.family})
    if (const auto row = std::ranges::find(kAccents, word, &AccentRow::word); row != kAccents.end()) return row->accent;
  return Accent::Blue;
}

bool isSolid(const TileContent& content) {
  return !std::holds_alternative<SeparatorContent>(content) && !std::holds_alternative<SpaceContent>(content);
}

std::optional<int> tilePartAt(const TileContent& content, double width, QPointF point) {
  return std::visit(Overloaded{[&](const TogglesContent& toggles) { return partAt(toggles, width, point); },
                               [](const auto&) { return std::optional<int>(); }},
                    content);
}

}  // namespace tarnwick
