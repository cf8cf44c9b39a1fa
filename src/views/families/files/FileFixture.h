#pragma once

#include <memory>

#include "views/panels/Room.h"

namespace tarnwick {

/// The files in the pictures of the program. None of them is on any disk.
void pictureFiles(TileSources& sources);
void fillStoreWithFiles(AppStore& store, const QDateTime& now);
std::shared_ptr<void> fillReadingsWithFiles(const PicturedParts& parts);

}  // namespace tarnwick
