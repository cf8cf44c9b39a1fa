#pragma once

/// The measures of controls and panels, in device-independent pixels. They complement those of Theme.h.
namespace tarnwick::theme {

inline constexpr int kControlHeight = 28;
inline constexpr int kButtonPadding = 12;
inline constexpr int kButtonSymbol = 14;
inline constexpr int kButtonSymbolGap = 6;
inline constexpr int kIconButtonSymbol = 16;
inline constexpr double kPrimaryHover = 0.08;  ///< The share of white in a primary button under the pointer.
inline constexpr double kChosenShare = 0.26;   ///< The share of the accent in the ground of a chosen button.

inline constexpr int kFieldHeight = 32;
inline constexpr int kFieldPadding = 10;
inline constexpr double kFieldFocus = 1.5;

inline constexpr int kSwitchWidth = 34;
inline constexpr int kSwitchHeight = 20;
inline constexpr int kSwitchKnob = 16;
inline constexpr int kSliderTrack = 4;
inline constexpr int kSliderKnob = 14;
inline constexpr int kSliderValueWidth = 40;
inline constexpr int kSegmentPadding = 2;
inline constexpr int kSegmentCorner = 6;
inline constexpr int kStepperValueWidth = 44;

inline constexpr int kRowHeight = 36;
/// Where in a row of two lines the middles of its title and its caption are.
inline constexpr double kTitleShare = 0.34;
inline constexpr double kCaptionShare = 0.69;
inline constexpr int kTallRowHeight = 44;
inline constexpr int kRowCorner = 8;
inline constexpr int kRowOverhang = 8;  ///< How far the ground of a row under the pointer reaches beyond its text.
inline constexpr int kRowGap = 10;
inline constexpr int kRowPicture = 24;
inline constexpr int kSectionAbove = 16;
inline constexpr int kSectionBelow = 4;
inline constexpr int kBarHeight = 4;
inline constexpr int kScrollThumb = 4;
inline constexpr int kScrollThumbLeast = 24;
inline constexpr int kScrollStaysMilliseconds = 900;

inline constexpr double kPanelFigure = 40;
inline constexpr double kPanelFigureUnit = 22;
inline constexpr int kPanelFigureHeight = 48;

inline constexpr int kPanelWidth = 320;
inline constexpr int kPanelWidthWide = 360;
inline constexpr int kPanelWidthEditor = 420;
inline constexpr int kPanelPadding = 16;
inline constexpr double kPanelCorner = 18;
inline constexpr int kPanelGap = 10;  ///< Between a panel and its tile's dock.
inline constexpr int kPanelHeader = 28;
inline constexpr int kPanelHeaderBelow = 12;
/// A panel's shadow is larger than the dock's: offset 12 or so and a spread of 32.
inline constexpr double kPanelShadowScale = 4.0 / 3;

}  // namespace tarnwick::theme
