#pragma once

#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QPointF>
#include <QString>
#include <QUuid>
#include <optional>

#include "views/dock/DropRules.h"
#include "views/dock/RowLayout.h"

namespace tarnwick {

inline constexpr double kWheelNotch = 120;  ///< What one step of a wheel counts.

/// How fast a pointer moves sideways, from what it did in the last tenth of a second.
class FlickMeter {
 public:
  void add(double x, quint64 milliseconds);
  /// Units a second; negative to the left. 0 while too little is known.
  double velocity(quint64 now) const;

 private:
  struct Sample {
    double x;
    quint64 at;
  };
  QList<Sample> samples_;
};

/// A button that is held down on the dock.
struct Press {
  enum class On { Item, Tab, Glass };
  enum class Turned { Nothing, Drag, Swipe, Move };  ///< What it became by moving.

  static constexpr double kSlop = 6;

  On on = On::Glass;
  qsizetype tab = -1;
  QString key;  ///< Of the item; the row may change before the button comes up.
  QPointF at;
  QPoint global;  ///< Where the pointer was last, on the screen.
  Turned turned = Turned::Nothing;
  FlickMeter flick;
};

/// Whether a sideways drag of `distance` units, let go at `velocity`, switches profiles.
bool swipeSwitches(double distance, double velocity);

/// A tile on its way to another place.
struct TileDrag {
  QString key;
  qsizetype from = 0;  ///< Among the displayed widgets.
  qsizetype to = 0;
  double grab = 0;  ///< From the tile's left edge to the pointer.
  QPointF pointer;
  bool away = false;  ///< So far from the dock that letting go changes nothing.
  RowLayout wanted;   ///< The row as it would be.
};

/// Something of another program that is held over the dock.
struct DropHover {
  QPointF pointer;
  bool widget = false;
  qsizetype item = -1;  ///< That would take it; -1 for none.
  DropRules::Taker taker = DropRules::Taker::None;
  qsizetype index = 0;    ///< Where it would be put in otherwise.
  qsizetype looked = -1;  ///< The folder's item that `folder` is known for.
  DropRules::Folder folder{};
};

/// The change of one profile's row to another's.
struct RowSlide {
  QPixmap old;
  double from = 0;      ///< Where the new row began; the old one moves as far.
  double oldStart = 0;  ///< Where the old row was by then.
};

}  // namespace tarnwick
