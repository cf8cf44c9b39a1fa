#pragma once

#include <memory>

#include "views/panels/Room.h"
#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The processes that use most of the machine; one is ended after asking.
std::unique_ptr<TilePanel> makeProcessesPanel(const PanelContext& context);
/// How warm the processor is, and was.
std::unique_ptr<TilePanel> makeTemperaturePanel(const PanelContext& context);
/// One reading of the machine, or a pair: the figure of now, its history, and what belongs to it.
std::unique_ptr<TilePanel> makeProcessorPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeMemoryPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeStoragePanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeBatteryPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeSystemPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeNetworkPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeDownloadPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeUploadPanel(const PanelContext& context);

/// The machine in the pictures of the program: its readings and its processes, and what only panels ask of it.
void pictureMachine(TileSources& sources);
void fillReadingsWithMachine(const PicturedParts& parts);

}  // namespace tarnwick
