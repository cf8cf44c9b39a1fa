#pragma once

#include <memory>

#include "views/panels/Room.h"

namespace tarnwick {

/// The applications in the pictures of the program. None of them is installed anywhere.
void pictureApplications(TileSources& sources);
std::shared_ptr<void> fillReadingsWithApplications(const PicturedParts& parts);

}  // namespace tarnwick
