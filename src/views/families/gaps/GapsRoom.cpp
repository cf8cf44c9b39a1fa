#include "views/families/gaps/GapsRoom.h"

#include <array>

#include "views/panels/PanelWords.h"
#include "views/panels/PlainPanel.h"
#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

PlainWords separatorWords(const TilePanel&, const TileSources&) {
  return {PanelWords::tr("A line between groups of widgets."), PanelWords::tr("Edit Widget…")};
}
PlainWords spaceWords(const TilePanel&, const TileSources&) {
  return {PanelWords::tr("An empty space between groups of widgets."), PanelWords::tr("Edit Widget…")};
}
std::unique_ptr<TilePanel> makeSeparatorPanel(const PanelContext& context) {
  return makePlainPanel(context, separatorWords);
}
std::unique_ptr<TilePanel> makeSpacePanel(const PanelContext& context) { return makePlainPanel(context, spaceWords); }

constexpr std::array kFamilies = {
    RoomRow{
        .of = familyText(Family::Separator), .content = makeSeparator, .panel = makeSeparatorPanel, .hasForm = false},
    RoomRow{.of = familyText(Family::Space), .content = makeSpace, .panel = makeSpacePanel, .hasForm = false},
};

}  // namespace

extern const Room kGapsRoom;
constinit const Room kGapsRoom{.name = "gaps"_L1, .families = kFamilies};

}  // namespace tarnwick
