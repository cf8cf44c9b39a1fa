#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// A field for an expression, its result or what is wrong with it, and keys.
std::unique_ptr<TilePanel> makeCalculatorPanel(const PanelContext& context);
/// A color: taken from the screen, typed or mixed, and written the ways that people need it.
std::unique_ptr<TilePanel> makeColorPanel(const PanelContext& context);

/// Makes a color the one of a widget and the first of those that it had. A color that is none changes nothing.
void takeColor(AppStore& store, const QUuid& widget, const QString& hex);

/// A value and its unit, and what that is in another unit of the same group.
std::unique_ptr<TilePanel> makeConverterPanel(const PanelContext& context);
/// Emoji that are searched by words and copied with a click, those that were copied last on top.
std::unique_ptr<TilePanel> makeEmojiPanel(const PanelContext& context);

}  // namespace tarnwick
