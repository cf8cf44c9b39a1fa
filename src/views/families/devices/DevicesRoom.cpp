#include <array>

#include "views/panels/PanelWords.h"
#include "views/panels/PlainPanel.h"
#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A tile without space for its whole name is called by what it does.
TileContent batteries(const TileRequest& request) {
  GenericContent content = makeGeneric(request);
  if (request.widget.title.isEmpty()) content.name = TileWords::tr("Batteries");
  return content;
}

/// It takes what is dropped on it, where there is a program to send it with.
TileContent nearbyShare(const TileRequest& request) {
  GenericContent content = makeGeneric(request);
  content.word = request.sources.readings.sendsNearby ? TileWords::tr("Drop files") : TileWords::tr("No sender");
  return content;
}

PlainWords nearbyShareWords(const TilePanel&, const TileSources& sources) {
  if (!sources.readings.sendsNearby)
    return {
        PanelWords::tr(
            "Files cannot be sent to nearby devices. Install bluetooth-sendto or blueman-sendto and restart Tarnwick."),
        {}};
  return {PanelWords::tr("Drop files on this widget to send them to a nearby device over Bluetooth."), {}};
}

void readNearby(ReadingFacts& readings, const ReadingServices& services) {
  readings.sendsNearby = services.sendsNearby;
}
void pictureNearby(TileSources& sources) { sources.readings.sendsNearby = true; }

std::unique_ptr<TilePanel> makeNearbySharePanel(const PanelContext& context) {
  return makePlainPanel(context, nearbyShareWords);
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::AccessoryBattery),
            .content = batteries,
            .accent = always<Accent::Green>,
            .comesLater = true},
    RoomRow{
        .of = familyText(Family::Airdrop), .content = nearbyShare, .panel = makeNearbySharePanel, .read = readNearby},
};

}  // namespace

extern const Room kDevicesRoom;
constinit const Room kDevicesRoom{.name = "devices"_L1, .families = kFamilies, .picture = pictureNearby};

}  // namespace tarnwick
