#pragma once

/// The measures of the command bar, in device-independent pixels.
namespace tarnwick::theme {

inline constexpr int kBarWidth = 640;
inline constexpr int kBarFieldHeight = 58;
inline constexpr double kBarCorner = 18;
inline constexpr double kBarShadowScale = 2;  ///< Of the dock's: offset 16 and a spread of 48.
inline constexpr double kBarSymbol = 22;
inline constexpr double kBarSymbolLeft = 20;
inline constexpr int kBarTextLeft = 56;
inline constexpr double kBarCaretWidth = 2;
inline constexpr double kBarCaretHeight = 26;
inline constexpr double kBarRing = 18;  ///< The diameter of the mark of a search that goes on.
inline constexpr double kBarRingStroke = 2;
inline constexpr double kBarRingTurn = 0.9;  ///< Seconds for one turn.

inline constexpr int kBarListPadding = 8;
inline constexpr int kBarRowHeight = 44;
inline constexpr double kBarRowCorner = 10;
inline constexpr double kBarIcon = 28;
inline constexpr double kBarIconCorner = 8;
inline constexpr double kBarIconSymbol = 16;
inline constexpr double kBarIconLeft = 12;
inline constexpr double kBarRowTextLeft = 52;
inline constexpr double kBarRowTextRight = 12;
inline constexpr double kBarHintGap = 16;  ///< Least space between a row's words and its hint.
inline constexpr int kBarDivider = 9;      ///< The line between the two lists, with the space around it.

inline constexpr double kKeyCapHeight = 18;
inline constexpr double kKeyCapCorner = 5;
inline constexpr double kKeyCapPadding = 6;
inline constexpr double kKeyCapLeast = 22;
inline constexpr double kKeyCapGap = 3;       ///< Between the keys of one combination.
inline constexpr double kKeyWordGap = 6;      ///< Between a key and its word.
inline constexpr double kKeyCapShare = 0.12;  ///< Of the text's colour.

}  // namespace tarnwick::theme
