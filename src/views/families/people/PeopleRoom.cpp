#include <array>

#include "views/panels/Room.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kFamilies = {
    RoomRow{.word = "contacts"_L1, .comesLater = true},
    RoomRow{.word = "mail"_L1, .comesLater = true},
};

}  // namespace

extern const Room kPeopleRoom;
constinit const Room kPeopleRoom{.name = "people"_L1, .families = kFamilies};

}  // namespace tarnwick
