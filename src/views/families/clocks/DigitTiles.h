#pragma once

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"
#include "widgets/ClockWords.h"

namespace tarnwick {

class TileCanvas;

/// How the figures of a clock are drawn.
enum class DigitFace { Plain, Seconds, Flip, Pixel, Overlap, Ring };

/// A clock that is its figures and nothing else.
struct DigitsContent {
  DigitFace face = DigitFace::Plain;
  ClockTime time;
  QString seconds;  ///< For the face that shows them, else empty.
  int hour = 0;
  int minute = 0;
  QString place;  ///< Of a clock that is set to another zone, or its label.
  QString label;  ///< The user's own word for it.

  bool operator==(const DigitsContent&) const = default;
};
DigitsContent makeTimeOnly(const TileRequest& request);
DigitsContent makeTimeSeconds(const TileRequest& request);
DigitsContent makeFlipClock(const TileRequest& request);
DigitsContent makePixelClock(const TileRequest& request);
DigitsContent makeOverlapClock(const TileRequest& request);
DigitsContent makeRingClock(const TileRequest& request);
TileText describe(const DigitsContent& content, const QString& name);
void paint(TileCanvas& canvas, const DigitsContent& content);

}  // namespace tarnwick
