#pragma once

#include "views/panels/Room.h"

namespace tarnwick {

/// What was copied, in the pictures of the program.
void pictureClipboard(TileSources& sources);
void fillStoreWithClipboard(AppStore& store, const QDateTime& now);
void fillReadingsWithClipboard(const PicturedParts& parts);

}  // namespace tarnwick
