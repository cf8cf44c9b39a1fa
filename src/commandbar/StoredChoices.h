#pragma once

#include "commandbar/CommandBarModel.h"
#include "config/DeskOptions.h"

namespace tarnwick {

/// What the settings say about the command bar.
CommandBarChoices storedChoices(const DeskOptions& desk);

}  // namespace tarnwick
