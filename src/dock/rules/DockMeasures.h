#pragma once

namespace tarnwick {

/// The measures of a dock that its place on the screen and its painting share, in device-independent pixels at scale 1.
struct DockMeasures {
  static constexpr double kHeight = 84;
  static constexpr double kHeightWithTabs = 110;
  static constexpr double kLeastWidth = 110;
  static constexpr double kTileHeight = 64;
  static constexpr double kAppSlot = 52;  ///< Of one running application.
  static constexpr double kSeparatorZone = 12;
};

}  // namespace tarnwick
