#pragma once

#include "store/Services.h"
#include "views/panels/PanelContext.h"

namespace tarnwick {

class Commands;
class Readings;

/// What panels can ask of the program. What this desktop has nothing for is left empty, so the
/// answer is to be made anew for each panel. All of it outlives the actions.
PanelActions makePanelActions(const Services& services, Commands& commands, Readings& readings);

}  // namespace tarnwick
