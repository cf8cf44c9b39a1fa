#pragma once

#include "dock/rules/DockMeasures.h"

/// The measures of everything that is painted, in device-independent pixels at scale 1. Colours are in Palette.h,
/// type in Typography.h, symbols in Symbols.h; a painter holds none of them.
namespace tarnwick::theme {

// The dock.
inline constexpr double kDockHeight = DockMeasures::kHeight;
inline constexpr double kDockHeightWithTabs = DockMeasures::kHeightWithTabs;
inline constexpr double kDockLeastWidth = DockMeasures::kLeastWidth;
inline constexpr double kDockCorner = 24;
inline constexpr double kInset = 10;
inline constexpr double kTileHeight = DockMeasures::kTileHeight;
inline constexpr double kTileCorner = 14;
inline constexpr double kSeparatorZone = DockMeasures::kSeparatorZone;
inline constexpr double kSeparatorHeight = 36;
inline constexpr double kInvitationPadding = 12;  ///< Beside the words that ask for widgets.
inline constexpr double kAppSlot = DockMeasures::kAppSlot;
inline constexpr double kAppIcon = 44;
inline constexpr double kAppIconLeft = 4;
inline constexpr double kAppIconTop = 8;
inline constexpr double kAppNumber = 26;  ///< The side of the plate with the number of its key.
inline constexpr double kAppDotRadius = 2;
inline constexpr double kAppDotTop = 59;

// Profile tabs.
inline constexpr double kTabTop = 8;
inline constexpr double kTabHeight = 20;
inline constexpr double kTabPadding = 10;
inline constexpr double kTabMostWidth = 160;  ///< For which the glass makes space; a longer name is cut.
inline constexpr double kTabGap = 4;
inline constexpr double kTabLeastWidth = 40;
inline constexpr double kTabRowHeight = kDockHeightWithTabs - kDockHeight;

// Shadows: how far one lies below what casts it, and how far it spreads.
inline constexpr double kShadowOffset = 8;
inline constexpr double kShadowBlur = 24;

// What a tile holds.
inline constexpr double kTextLeft = 12;
inline constexpr double kTextRight = 12;
inline constexpr double kSymbolSize = 20;
inline constexpr double kTextAfterSymbol = 44;
inline constexpr double kTextAfterSymbolNarrow = 42;  ///< In tiles up to kNarrowSymbolTile wide.
inline constexpr double kNarrowSymbolTile = 140;
inline constexpr double kPictureInset = 10;
inline constexpr double kTileMiddle = kTileHeight / 2;

// Baselines, from the top of a tile.
inline constexpr double kHeadlineBaseline = 32;
inline constexpr double kCaptionBaseline = 49;
inline constexpr double kTitleBaseline = 29;
inline constexpr double kTitleCaptionBaseline = 45;
inline constexpr double kDisplayBaseline = 42;
inline constexpr double kUnderPictureBaseline = 55.5;

// States.
inline constexpr double kHoverScale = 1.08;
inline constexpr double kLeastTileGap = 2;  ///< Between the grounds of two tiles, however large they are drawn.
inline constexpr double kPressedScale = 0.97;
inline constexpr double kDraggedLift = 12;
inline constexpr double kFocusWidth = 2;
inline constexpr double kDisabledOpacity = 0.38;
inline constexpr double kDisabledContrastOpacity = 0.75;

// Motion, in seconds.
inline constexpr double kFadeSeconds = 0.12;
inline constexpr double kRestSeconds = 0.09;  ///< After the last frame of a motion everything is drawn as it stands.
inline constexpr double kPulseSeconds = 0.4;  ///< One beat of an application that starts.
inline constexpr double kPulseOpacity = 0.5;
inline constexpr int kMostPulses = 25;
inline constexpr double kLoadingSeconds = 1.8;  ///< There and back, of the mark of a fetch.
inline constexpr int kMostLoadings = 12;        ///< As long as the longest fetch.
inline constexpr double kTabsDelay = 0.15;      ///< Of hover.
inline constexpr double kSlideTravel = 160;     ///< How far the rows of two profiles move past each other.
inline constexpr double kSwipeFollows = 0.5;    ///< How much of a sideways drag the row goes along.

// The ends of a row that goes on beyond its glass.
inline constexpr double kEndFade = 24;
inline constexpr double kScrollArrow = 5;  ///< Half its height.
inline constexpr double kScrollArrowStroke = 1.8;
inline constexpr double kScrollPlateWidth = 20;  ///< The ground of an arrow, which tiles fade out under.
inline constexpr double kScrollPlateHeight = 36;
inline constexpr double kEdgeZone = 28;     ///< Where holding something scrolls.
inline constexpr double kEdgeScroll = 480;  ///< Units a second.

// Things that are held over the row.
inline constexpr double kSpringLoad = 0.8;  ///< Seconds until the folder or the application below opens.
inline constexpr double kInsertionWidth = 3;
inline constexpr double kInsertionHeight = 52;
inline constexpr double kDragAway = 60;  ///< Beyond the glass, at every scale, letting go of a tile removes it.

// A bubble above the dock.
inline constexpr double kBubbleCorner = 14;
inline constexpr double kBubblePadding = 12;
inline constexpr double kBubbleTextWidth = 320;
inline constexpr double kButtonSize = 28;
inline constexpr double kTipCorner = 8;
inline constexpr double kTipPaddingX = 10;
inline constexpr double kTipPaddingY = 6;
inline constexpr double kTipShadowScale = 0.5;
inline constexpr double kButtonCorner = 8;

/// Below this scale a tile drops its last row.
inline constexpr double kCompactScale = 0.75;
/// Below this one the caption goes too.
inline constexpr double kBareScale = 0.65;
inline constexpr double kLeastTextSize = 9;

}  // namespace tarnwick::theme
