#include "views/families/clipboard/ClipboardRoom.h"

#include <array>

#include "clipboard/ClipboardHistory.h"
#include "clipboard/ports/Pasteboard.h"
#include "views/families/clipboard/ClipboardTiles.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

void readCopied(ReadingFacts& readings, const ReadingServices& services) {
  ClipboardHistory& history = services.clipboard;
  if (!history.isLoaded()) history.load();
  const Capability can = services.pasteboard.capability();
  readings.clipboardProblem = can ? history.problem() : can.reason;
  readings.copied = history.items().isEmpty() ? std::nullopt : std::optional(history.items().first());
  readings.copiedIsFolder = readings.copied && history.isFolder(*readings.copied);
}

QString clipboardProblem(const TileSources& sources) { return sources.readings.clipboardProblem; }

void sampleCopied(TileSources& sources, const TileSources& samples) {
  if (sources.keepsClipboard && sources.readings.copied) return;
  sources.keepsClipboard = samples.keepsClipboard;
  sources.readings.copied = samples.readings.copied;
  if (sources.readings.copied) sources.readings.copied->added = {};  // A sample has no age.
  sources.readings.copiedIsFolder = samples.readings.copiedIsFolder;
  sources.readings.clipboardProblem.clear();
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Clipboard),
            .content = makeClipboard,
            .panel = makeClipboardPanel,
            .problem = clipboardProblem,
            .read = readCopied,
            .sample = sampleCopied,
            .states = clipboardPanelStates},
};

}  // namespace

extern const Room kClipboardRoom;
constinit const Room kClipboardRoom{.name = "clipboard"_L1,
                                    .families = kFamilies,
                                    .picture = pictureClipboard,
                                    .fillStore = fillStoreWithClipboard,
                                    .fillReadings = fillReadingsWithClipboard};

}  // namespace tarnwick
