#pragma once

/// The measures of the program's windows, in device-independent pixels. They complement those of controls.
namespace tarnwick::theme {

inline constexpr int kSideWidth = 200;
inline constexpr int kSidePadding = 8;
inline constexpr int kSideRowInset = 10;
inline constexpr int kSideSymbol = 16;
inline constexpr int kSideSymbolGap = 10;
inline constexpr int kSideSymbolRow = kSideRowInset * 2 + kSideSymbol;  ///< A row without its words.
inline constexpr int kSideRowGap = 2;
inline constexpr int kSideGroupGap = 13;  ///< With the line in its middle.

inline constexpr int kBodyPadding = 24;
inline constexpr int kBodyTop = 20;
inline constexpr int kCardGap = 12;
inline constexpr double kCardCorner = 12;
inline constexpr int kCardPadding = 16;
inline constexpr int kCardRow = 44;
inline constexpr int kCardRowPadding = 6;  ///< Above and below the contents of a row.
inline constexpr int kCardEnds = 4;        ///< Above the first row and below the last.
inline constexpr int kCardHelpGap = 2;
inline constexpr int kWindowHeading = 28;

}  // namespace tarnwick::theme
