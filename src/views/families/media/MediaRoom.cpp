#include <array>

#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Family.h"
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
    RoomRow{.of = familyText(Family::Audio), .accent = always<Accent::Pink>, .comesLater = true},
    RoomRow{.of = familyText(Family::AppVolume), .accent = always<Accent::Pink>, .comesLater = true},
    RoomRow{.of = familyText(Family::Music), .accent = always<Accent::Pink>, .comesLater = true},
    RoomRow{.of = familyText(Family::Voice), .accent = always<Accent::Red>, .comesLater = true},
    RoomRow{.of = familyText(Family::Sounds), .accent = always<Accent::Teal>, .comesLater = true},
    RoomRow{.of = familyText(Family::Photos), .comesLater = true},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::microphoneMute, .accent = always<Accent::Red>},
    RoomRow{.of = kind::nowPlayingMini, .content = music},
};

}  // namespace

extern const Room kMediaRoom;
constinit const Room kMediaRoom{.name = "media"_L1, .families = kFamilies, .kinds = kKinds};

}  // namespace tarnwick
