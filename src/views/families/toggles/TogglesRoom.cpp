#include "views/families/toggles/TogglesRoom.h"

#include <array>

#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kOptions = {
    WidgetOption{.key = option::toggles,
                 .shape = FieldShape::Toggles,
                 .label = QT_TRANSLATE_NOOP("Library", "Switches"),
                 .help = QT_TRANSLATE_NOOP("Library", "The widget shows four of them.")},
};

void flip(const PartClick& click) {
  const auto toggle = static_cast<Toggle>(click.part);
  click.toggles.set(toggle, !click.toggles.state(toggle).on);
}

void picture(TileSources& sources) {
  const auto absent = Capability::no(u"This computer has no Bluetooth adapter."_s);
  sources.toggles = {{Toggle::WiFi, {true, {}}},     {Toggle::Bluetooth, {false, absent}},
                     {Toggle::DarkMode, {true, {}}}, {Toggle::DoNotDisturb, {false, {}}},
                     {Toggle::Mute, {false, {}}},    {Toggle::KeepAwake, {false, {}}}};
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Toggles),
            .content = makeToggles,
            .panel = makeTogglesPanel,
            .options = kOptions,
            .act = flip},
};

}  // namespace

extern const Room kTogglesRoom;
constinit const Room kTogglesRoom{.name = "toggles"_L1, .families = kFamilies, .picture = picture};

}  // namespace tarnwick
