#include <array>

#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Clipboard), .comesLater = true},
};

}  // namespace

extern const Room kClipboardRoom;
constinit const Room kClipboardRoom{.name = "clipboard"_L1, .families = kFamilies};

}  // namespace tarnwick
