#include <array>

#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Contacts), .comesLater = true},
    RoomRow{.of = familyText(Family::Mail), .comesLater = true},
};

}  // namespace

extern const Room kPeopleRoom;
constinit const Room kPeopleRoom{.name = "people"_L1, .families = kFamilies};

}  // namespace tarnwick
