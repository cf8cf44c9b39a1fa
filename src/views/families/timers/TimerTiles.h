#pragma once

#include <QPointF>
#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// A ring that runs, its figure beside it. The ring is a switch.
struct TimerContent {
  enum class Glyph { Play, Pause, Seated, Walk };

  Glyph glyph = Glyph::Play;
  QString figure;
  QString word;      ///< Under the figure.
  double share = 0;  ///< Of the ring.
  int lit = 0;       ///< Of the marks, which take the word's place while there are any.
  int marks = 0;
  QString spoken;  ///< In words, without the seconds that would make a screen reader speak all the time.

  bool operator==(const TimerContent&) const = default;
};
TimerContent makeTimer(const TileRequest& request);
TileText describe(const TimerContent& content, const QString& name);
void paint(TileCanvas& canvas, const TimerContent& content);
/// 0 on the ring: a click there starts or pauses the timer.
std::optional<int> partAt(const TimerContent& content, const TileClick& click);

}  // namespace tarnwick
