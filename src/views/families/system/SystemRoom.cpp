#include "views/families/system/SystemRoom.h"

#include <array>

#include "system/ProcessMonitor.h"
#include "system/SystemTemperature.h"
#include "views/families/system/GaugeTiles.h"
#include "views/families/system/MetricTiles.h"
#include "views/families/system/NetworkTiles.h"
#include "views/families/system/ProcessTiles.h"
#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kProcessOptions = {
    WidgetOption{.key = option::sortBy,
                 .shape = FieldShape::Choice,
                 .label = QT_TRANSLATE_NOOP("Library", "Sort by"),
                 .value = "CPU,RAM",
                 .words = QT_TRANSLATE_NOOP("Library", "CPU,Memory")},
};

void readProcesses(ReadingFacts& readings, const ReadingServices& services) {
  readings.processes = services.processes.rows();
  readings.processMessage = services.processes.message();
}
void readTemperature(ReadingFacts& readings, const ReadingServices& services) {
  readings.celsius = services.temperature.celsius();
  readings.hasNoSensor = services.temperature.hasAnswered() && !readings.celsius;
  readings.celsiusHistory = services.temperature.history();
}

void sampleMetrics(TileSources& sources, const TileSources& samples) {
  if (sources.metrics) return;
  sources.metrics = samples.metrics;
  sources.cpuHistory = samples.cpuHistory;
  sources.memoryHistory = samples.memoryHistory;
  sources.networkHistory = samples.networkHistory;
  sources.downloadHistory = samples.downloadHistory;
  sources.uploadHistory = samples.uploadHistory;
}
void sampleProcesses(TileSources& sources, const TileSources& samples) {
  if (!sources.readings.processes.isEmpty()) return;
  sources.readings.processes = samples.readings.processes;
  sources.readings.processMessage.clear();
}
void sampleTemperature(TileSources& sources, const TileSources& samples) {
  if (sources.readings.celsius) return;
  sources.readings.celsius = samples.readings.celsius;
  sources.readings.celsiusHistory = samples.readings.celsiusHistory;
}

/// A tile of which this computer has nothing to read says so.
template <auto Make>
TileContent warmth(const TileRequest& request) {
  if (!request.sources.readings.hasNoSensor || request.sources.readings.celsius) return Make(request);
  GenericContent content = makeGeneric(request);
  content.word = TileWords::tr("No sensor");
  content.sentence = TileWords::tr("This computer has no temperature sensor for its processor.");
  return content;
}

constexpr auto kPurple = always<Accent::Purple, WidgetDefinition>;
constexpr auto kTeal = always<Accent::Teal, WidgetDefinition>;

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Metric),
            .panel = makeProcessorPanel,
            .accent = always<Accent::Green>,
            .sample = sampleMetrics},
    RoomRow{.of = familyText(Family::Processes),
            .content = contentOf<makeProcesses>,
            .panel = makeProcessesPanel,
            .accent = always<Accent::Green>,
            .options = kProcessOptions,
            .read = readProcesses,
            .sample = sampleProcesses},
    RoomRow{.of = familyText(Family::Temperature),
            .panel = makeTemperaturePanel,
            .accent = always<Accent::Orange>,
            .read = readTemperature,
            .sample = sampleTemperature},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::cpu, .content = contentOf<makeCpuGauge>},
    RoomRow{.of = kind::ram, .content = contentOf<makeMemoryGauge>, .panel = makeMemoryPanel, .accent = kPurple},
    RoomRow{.of = kind::storage,
            .content = contentOf<makeStorageGauge>,
            .panel = makeStoragePanel,
            .accent = always<Accent::Blue>},
    RoomRow{.of = kind::battery, .content = contentOf<makeBattery>, .panel = makeBatteryPanel},
    RoomRow{.of = kind::cpuChart, .content = contentOf<makeCpuChart>},
    RoomRow{.of = kind::ramChart, .content = contentOf<makeMemoryChart>, .panel = makeMemoryPanel, .accent = kPurple},
    RoomRow{.of = kind::systemChart, .content = contentOf<makeSystemChart>, .panel = makeSystemPanel},
    RoomRow{.of = kind::network, .content = contentOf<makeNetwork>, .panel = makeNetworkPanel, .accent = kTeal},
    RoomRow{
        .of = kind::networkDownload, .content = contentOf<makeDownload>, .panel = makeDownloadPanel, .accent = kTeal},
    RoomRow{.of = kind::networkUpload, .content = contentOf<makeUpload>, .panel = makeUploadPanel, .accent = kTeal},
    RoomRow{
        .of = kind::networkChart, .content = contentOf<makeNetworkChart>, .panel = makeNetworkPanel, .accent = kTeal},
    RoomRow{.of = kind::temperature, .content = warmth<makeTemperature>},
    RoomRow{.of = kind::temperatureChart, .content = warmth<makeTemperatureChart>},
};

}  // namespace

extern const Room kSystemRoom;
constinit const Room kSystemRoom{.name = "system"_L1,
                                 .families = kFamilies,
                                 .kinds = kKinds,
                                 .picture = pictureMachine,
                                 .fillReadings = fillReadingsWithMachine};

}  // namespace tarnwick
