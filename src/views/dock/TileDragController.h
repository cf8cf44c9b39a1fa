#pragma once

#include <QHash>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUuid>
#include <functional>
#include <optional>
#include <utility>

#include "motion/SpringSet.h"
#include "views/dock/DockRow.h"
#include "views/dock/EdgeScroll.h"
#include "views/dock/RowLayout.h"

namespace tarnwick {

/// A tile that is taken out of the row by the pointer and put back elsewhere: where it is seen, where it would go, how
/// the others make space, and its way down when it is let go. It changes no row: whoever owns it does what drop() says
/// and gives the new row back. The row, its layout and the scrolling are borrowed.
class TileDragController final : public QObject {
  Q_OBJECT
 public:
  /// `layoutOf` tells how another row would be laid out in the same place.
  TileDragController(const DockRow& row, const RowLayout& layout, Animator& animator, EdgeScroll& edges,
                     std::function<RowLayout(const DockRow& row)> layoutOf);

  /// Device pixels per unit.
  void setRatio(double ratio);
  void setReduced(bool reduced);

  void begin(qsizetype item, QPointF at);
  void moveTo(QPointF pointer);
  /// Lets go: from and to, among the displayed widgets; none where that changes nothing. What the row then makes of it
  /// is passed to carryOn() or settle().
  std::optional<std::pair<qsizetype, qsizetype>> drop();
  /// Where items are seen.
  QHash<QString, double> lefts() const;
  /// The same while something travels; empty while nothing does.
  QHash<QString, double> visibleLefts() const { return isBusy() ? lefts() : QHash<QString, double>(); }
  /// After the row has changed under a tile's way: everything goes on from where it was seen.
  void carryOn(const QHash<QString, double>& lefts);
  /// Sends every tile to its place.
  void settle() { shifts_.settle(); }

  bool isActive() const { return drag_.has_value(); }
  /// Whether a tile is held, on its way down, or making space.
  bool isBusy() const { return isActive() || isLanding() || shifts_.isMoving(); }
  bool isLanding() const { return !landing_.isEmpty(); }
  QPointF pointer() const { return drag_->pointer; }
  /// Whether the pointer holds the tile so far from the glass that it has no place in the row.
  bool isAway() const { return isActive() && drag_->away; }
  /// How far beyond the glass the pointer holds a tile, which is seen as far from the row; null where it does not.
  QPointF beyond() const;
  /// The place of the tile that is held, among the displayed widgets.
  qsizetype widget() const { return drag_->from; }

  /// Null for none.
  QUuid heldWidget() const { return drag_ ? QUuid(drag_->key) : QUuid(); }

  /// Whether an item is held, or on its way down.
  bool isLifted(qsizetype item) const;
  qsizetype liftedItem() const;  ///< -1 for none.
  /// How far the lifted tile is above the row: 1 at most.
  double lift() const;
  bool holds(qsizetype item) const { return isActive() && isLifted(item); }
  /// How far an item is seen from its place.
  double shiftOf(qsizetype item) const;
  /// The place that is kept for the tile that is held.
  QRectF gap() const;

 Q_SIGNALS:
  /// Tiles are seen elsewhere.
  void moved();
  /// The tile that was let go is down.
  void landed();

 private:
  struct Drag {
    QString key;
    qsizetype from = 0;  ///< Among the displayed widgets.
    qsizetype to = 0;
    double grab = 0;  ///< From the tile's left edge to the pointer.
    QPointF pointer;
    bool away = false;  ///< So far from the dock that it has no place in the row.
    RowLayout wanted;   ///< The row as it would be.
  };

  QString keyOf(qsizetype item) const { return itemKey(row_, layout_.items[item]); }
  double draggedLeft(qsizetype item) const;
  void findPlace();
  void openGap();

  const DockRow& row_;
  const RowLayout& layout_;
  EdgeScroll& edges_;
  std::function<RowLayout(const DockRow&)> layoutOf_;
  std::optional<Drag> drag_;
  QString landing_;   ///< The tile that was let go and is not down yet.
  SpringSet shifts_;  ///< By item: how far it is from its place.
  SpringSet springs_;
};

}  // namespace tarnwick
