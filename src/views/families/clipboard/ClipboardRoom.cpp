#include <array>

#include "views/panels/Room.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kFamilies = {
    RoomRow{.word = "clipboard"_L1, .comesLater = true},
};

}  // namespace

extern const Room kClipboardRoom;
constinit const Room kClipboardRoom{.name = "clipboard"_L1, .families = kFamilies};

}  // namespace tarnwick
