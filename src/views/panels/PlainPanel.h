#pragma once

#include <functional>
#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// What a plain panel says.
struct PlainWords {
  QString sentence;
  QString button;           ///< The way to the widget's form.
  bool awaitsUser = false;  ///< Whether there is something that only the user can enter.
};

/// The panel of a widget that has nothing to show: a service that is not connected, a place that is not chosen, a
/// facility that is not there. It says so in a sentence and leads to the widget's form where that helps. Without
/// `words` it says that the widget is not available.
std::unique_ptr<TilePanel> makePlainPanel(
    const PanelContext& context,
    const std::function<PlainWords(const TilePanel& panel, const TileSources& sources)>& words);
std::unique_ptr<TilePanel> makePlainPanel(const PanelContext& context);

/// The panel of a widget that nothing in this version fills. It says so, and leads nowhere.
std::unique_ptr<TilePanel> makeLaterPanel(const PanelContext& context);

}  // namespace tarnwick
