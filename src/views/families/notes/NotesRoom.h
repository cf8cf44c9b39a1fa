#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// A note that is written into, saved as it is typed.
std::unique_ptr<TilePanel> makeNotePanel(const PanelContext& context);
/// All notes that hold something, each of which can be written into.
std::unique_ptr<TilePanel> makeNotesPanel(const PanelContext& context);
/// Things to do: a field that adds one, a row for each.
std::unique_ptr<TilePanel> makeTodosPanel(const PanelContext& context);

}  // namespace tarnwick
