#include <array>

#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TileWords.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A tile without space for its whole name is called by what it does.
TileContent music(const TileRequest& request) {
  GenericContent content = makeGeneric(request);
  if (request.widget.title.isEmpty()) content.name = TileWords::tr("Music");
  return content;
}

constexpr std::array kFamilies = {
    RoomRow{.word = "audio"_L1, .accent = always<Accent::Pink>, .comesLater = true},
    RoomRow{.word = "appVolume"_L1, .accent = always<Accent::Pink>, .comesLater = true},
    RoomRow{.word = "music"_L1,
            .accent = always<Accent::Pink>,
            .cadence = always<TickCadence::Second>,
            .comesLater = true},
    RoomRow{.word = "voice"_L1, .accent = always<Accent::Red>, .comesLater = true},
    RoomRow{.word = "sounds"_L1, .accent = always<Accent::Teal>, .comesLater = true},
    RoomRow{.word = "photos"_L1, .comesLater = true},
};
constexpr std::array kKinds = {
    RoomRow{.word = kind::microphoneMute, .accent = always<Accent::Red>},
    RoomRow{.word = kind::nowPlayingMini, .content = music},
};

}  // namespace

extern const Room kMediaRoom;
constinit const Room kMediaRoom{.name = "media"_L1, .families = kFamilies, .kinds = kKinds};

}  // namespace tarnwick
