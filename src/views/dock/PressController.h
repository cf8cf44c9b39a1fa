#pragma once

#include <QObject>
#include <QPoint>
#include <QPointF>
#include <functional>
#include <optional>
#include <utility>

#include "base/Scheduler.h"
#include "views/dock/Gestures.h"
#include "views/dock/RowTiles.h"

class QMouseEvent;

namespace tarnwick {

/// A button that is held down on the dock, and what becomes of it: a click, a tile that is dragged, a swipe to another
/// profile, a dock that is moved, or the choice of an application's windows after a while. It does none of that, but
/// says so. The row and what a press is timed with are borrowed.
class PressController final : public QObject {
  Q_OBJECT
 public:
  PressController(const RowTiles& tiles, Scheduler& scheduler) : tiles_(tiles), scheduler_(scheduler) {}

  /// Asked when a drag would switch profiles: true while that must not be.
  void setSwitchGuard(std::function<bool()> isBusy) { isBusy_ = std::move(isBusy); }

  /// The left button went down over the glass, and over an item that answers the pointer or none (-1).
  void begin(const QMouseEvent& event, qsizetype hovered);
  /// Whether the move belongs to a gesture, so that the pointer is nowhere else.
  bool move(const QMouseEvent& event);
  /// The left button came up.
  void end(const QMouseEvent& event);
  /// The button will not come up here any more.
  void abandon();
  /// The button means nothing any more, and nothing is said of it.
  void forget();
  /// The middle button: the item that was clicked with it, none where it came up elsewhere.
  void beginMiddle(QPointF point);
  std::optional<qsizetype> endMiddle(QPointF point);

  bool isActive() const { return press_.has_value(); }
  /// Whether an item is drawn as pressed, as long as the pointer is over it.
  bool isOn(qsizetype item) const { return pressed_ == item; }
  /// There is another row.
  void takeRow();
  /// The row is laid out differently.
  void clamp();
  /// The row may have changed under a button that is down.
  void follow();

 Q_SIGNALS:
  /// An item is to be painted anew.
  void changed(qsizetype item);
  /// Where the pointer is when no gesture has it any more.
  void pointed(QPointF point);
  void clicked(QPointF point);
  /// On an arrow at an end of a row that scrolls; see RowLayout::arrowAt.
  void arrowClicked(int direction);
  /// The button is held down on an application.
  void held(qsizetype item);
  void dragBegun(qsizetype item, QPointF at);
  void dragged(QPointF point);
  void dropped();
  /// Sideways, by so many units since the button went down; let go at so many a second.
  void swiped(double distance);
  void swipeEnded(double distance, double velocity);
  /// The dock is moved, by how much since the last signal, on the screen.
  void moved(const QPoint& delta);
  void moveEnded();
  /// The button is up, or its press has come to its end otherwise.
  void released();

 private:
  struct Arrow {
    QRectF place;
    quint64 time = 0;  ///< Of what was done with it last.
  };

  bool takeArrow(Press& press, const QMouseEvent& event);
  void endOnArrow(const Press& press, const QMouseEvent& event);
  void holdSoon();
  static bool isBeyondSlop(const Press& press, QPointF point);
  Press::Gesture gestureOf(const Press& press, QPointF point) const;
  bool isOver(const Press& press, QPointF point) const;

  const RowTiles& tiles_;
  Scheduler& scheduler_;
  std::function<bool()> isBusy_;
  std::optional<Press> press_;
  std::optional<Arrow> arrow_;  ///< That was pressed last. It may be gone.
  JobHandle hold_;              ///< Looks whether the button is still down where it was.
  qsizetype pressed_ = -1;
  qsizetype middle_ = -1;
};

}  // namespace tarnwick
