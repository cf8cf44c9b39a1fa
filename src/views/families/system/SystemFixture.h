#pragma once

#include <memory>

#include "views/panels/Room.h"

namespace tarnwick {

/// The machine in the pictures of the program: its readings and its processes, and what only panels ask of it.
void pictureMachine(TileSources& sources);
std::shared_ptr<void> fillReadingsWithMachine(const PicturedParts& parts);

}  // namespace tarnwick
