#pragma once

#include <memory>

#include "views/panels/Room.h"

namespace tarnwick {

/// The applications that run in the pictures of the program, and their windows.
void pictureRunning(TileSources& sources);
void fillStoreWithRunning(AppStore& store, const QDateTime& now);
std::shared_ptr<void> fillReadingsWithWindows(const PicturedParts& parts);

}  // namespace tarnwick
