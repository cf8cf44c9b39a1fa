#pragma once

#include <QString>

/// The kinds of widgets, as DockWidget::kind holds them and the settings store them: a constant for each of the
/// catalog, under its own name. Code that asks for a kind names it by these, so that a misspelt one does not compile.
namespace tarnwick::kind {

#define KIND(word, ...) inline constexpr QLatin1StringView word{#word};
#include "widgets/catalog/Catalog.inc"

}  // namespace tarnwick::kind
