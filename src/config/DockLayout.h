#pragma once

#include <QString>
#include <array>

#include "base/RawValues.h"

namespace tarnwick {

/// How the dock sits at its display and what becomes of the system's own dock meanwhile.
enum class DockLayout { Swap, RevealBottom, Fixed, RevealTop, Replace, ReplaceAutoHide, Floating };

template <>
struct RawValues<DockLayout> {
  static constexpr std::array<RawValue<DockLayout>, 7> table{{
      {DockLayout::Swap, "swap"},
      {DockLayout::RevealBottom, "revealBottom"},
      {DockLayout::Fixed, "fixed"},
      {DockLayout::RevealTop, "revealTop"},
      {DockLayout::Replace, "replace"},
      {DockLayout::ReplaceAutoHide, "replaceAutoHide"},
      {DockLayout::Floating, "floating"},
  }};
};

/// Every layout, in the order in which menus offer them.
inline constexpr std::array<DockLayout, 7> kDockLayouts{
    DockLayout::Swap,    DockLayout::RevealBottom,    DockLayout::Fixed,   DockLayout::RevealTop,
    DockLayout::Replace, DockLayout::ReplaceAutoHide, DockLayout::Floating};

/// The name of a layout in menus.
QString label(DockLayout layout);
/// One or two sentences that say what a layout does.
QString description(DockLayout layout);

}  // namespace tarnwick
