#pragma once

#include "app/DockDesk.h"

namespace tarnwick {

/// What panels can ask of the program, led to where each wish belongs. What this desktop has nothing for is left empty,
/// so the answer is to be made anew for each panel. All of it outlives the actions; `context` bounds answers that come
/// later.
PanelActions makePanelActions(const DockDeskParts& parts, DockCommands& commands, UndoableEdits& edits,
                              FolderQuestion& folders, QObject* context);

}  // namespace tarnwick
