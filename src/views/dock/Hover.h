#pragma once

#include <QPointF>
#include <functional>
#include <optional>

#include "views/dock/Magnifier.h"
#include "views/dock/RowTiles.h"

namespace tarnwick {

/// Where the pointer is over a dock, which item answers it, and how the tiles swell there. The row is borrowed.
class Hover final {
 public:
  /// `changed` is called for an item that the pointer came to or left, `swelled` for one that is drawn larger or
  /// smaller now.
  Hover(const RowTiles& tiles, Animator& animator, std::function<void(qsizetype item)> changed,
        std::function<void(qsizetype item)> swelled);

  /// None where it is elsewhere. While it is not `free`, as when it drags a tile, nothing answers it.
  void move(std::optional<QPointF> pointer, bool isFree);
  const std::optional<QPointF>& pointer() const { return pointer_; }
  /// Whether it is over the glass.
  bool isInside() const { return pointer_ && tiles_.layout().glass.contains(*pointer_); }
  /// The item that answers it; -1 for none.
  qsizetype item() const { return item_; }

  /// There is another row.
  void takeRow() { item_ = -1; }
  /// The row is laid out differently.
  void update();
  /// How many times larger an item is drawn than it is.
  double magnificationOf(qsizetype item) const { return magnifier_.of(item); }

 private:
  const RowTiles& tiles_;
  std::function<void(qsizetype)> changed_;
  Magnifier magnifier_;
  std::optional<QPointF> pointer_;
  qsizetype item_ = -1;
};

}  // namespace tarnwick
