#pragma once

/// What all menus have in common: those that are windows (MenuStyle) and those within a panel (PaneMenu). In
/// device-independent pixels.
namespace tarnwick::theme {

inline constexpr double kMenuCorner = 12;
inline constexpr double kMenuItemCorner = 7;
inline constexpr int kMenuMargin = 6;
inline constexpr int kMenuItemHeight = 28;
inline constexpr int kMenuSeparatorHeight = 9;
inline constexpr int kMenuTextInset = 12;
inline constexpr int kMenuLeastWidth = 150;
inline constexpr double kMenuHover = 0.10;  ///< How much of the text's colour lies over the ground.

}  // namespace tarnwick::theme
