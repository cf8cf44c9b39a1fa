#include "views/families/windows/WindowsRoom.h"

#include <array>

#include "views/families/windows/RunningTiles.h"
#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"
#include "windows/WindowService.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// One that shows no window yet has only its name to show.
TileContent pinnedWindow(const TileRequest& request) {
  if (!request.widget.options.value(option::windowTitle).isEmpty()) return makePinnedWindow(request);
  GenericContent content = makeGeneric(request);
  content.word = TileWords::tr("Choose window");
  content.opensEditor = true;
  return content;
}

void bringForward(const PartClick& click) {
  const auto& running = click.store.runningApps();
  if (click.part >= 0 && click.part < running.size())
    click.commands.activateApplication(running[click.part].identity, click.display);
}

void readPinned(ReadingFacts& readings, const QList<DockWidget>& widgets, const ReadingServices& services) {
  for (const DockWidget& widget : widgets) {
    const auto window = services.windowService.pinned(widget);
    const QImage picture = window ? services.windowService.preview(window->id) : QImage();
    if (!picture.isNull()) readings.pinnedWindows.insert(widget.id, {QString::number(picture.cacheKey()), picture});
  }
}

QMap<QString, QString> picturedWindow(const QDateTime&) {
  return {{option::windowTitle, u"Inbox"_s}, {option::appName, u"Mail"_s}};
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Windows)},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::openWindows,
            .content = contentOf<makeRunningApps>,
            .panel = makeRunningAppsPanel,
            .act = bringForward},
    RoomRow{.of = kind::topApps, .content = contentOf<makeSwitcher>, .panel = makeRunningAppsPanel},
    RoomRow{.of = kind::appSwitcher, .content = contentOf<makeSwitcher>, .panel = makeRunningAppsPanel},
    RoomRow{.of = kind::pinnedWindow,
            .content = pinnedWindow,
            .panel = makePinnedWindowPanel,
            .readEach = readPinned,
            .pictured = picturedWindow},
};

}  // namespace

extern const Room kWindowsRoom;
constinit const Room kWindowsRoom{.name = "windows"_L1,
                                  .families = kFamilies,
                                  .kinds = kKinds,
                                  .picture = pictureRunning,
                                  .fillStore = fillStoreWithRunning,
                                  .fillReadings = fillReadingsWithWindows};

}  // namespace tarnwick
