#include <array>

#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A tile without space for its whole name is called by what it does.
TileContent batteries(const TileRequest& request) {
  GenericContent content = makeGeneric(request);
  if (request.widget.title.isEmpty()) content.name = TileWords::tr("Batteries");
  return content;
}

constexpr std::array kFamilies = {
    RoomRow{.word = "accessoryBattery"_L1, .content = batteries, .accent = always<Accent::Green>},
    RoomRow{.word = "airdrop"_L1},
};

}  // namespace

extern const Room kDevicesRoom;
constinit const Room kDevicesRoom{.name = "devices"_L1, .families = kFamilies};

}  // namespace tarnwick
