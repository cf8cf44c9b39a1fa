#include "views/dock/Hover.h"

#include <utility>

namespace tarnwick {

Hover::Hover(const RowTiles& tiles, Animator& animator, std::function<void(qsizetype item)> changed,
             std::function<void(qsizetype item)> swelled)
    : tiles_(tiles),
      changed_(std::move(changed)),
      magnifier_(
          tiles.row(), tiles.layout(), animator, [&tiles](qsizetype item) { return tiles.answersPointer(item); },
          std::move(swelled)) {}

void Hover::move(std::optional<QPointF> pointer, bool isFree) {
  pointer_ = pointer;
  const bool answers = isInside() && isFree;
  const qsizetype under = answers ? tiles_.layout().itemAt(*pointer).value_or(-1) : -1;
  const qsizetype before = std::exchange(item_, tiles_.answersPointer(under) ? under : -1);
  if (before != item_) {
    changed_(before);
    changed_(item_);
  }
  magnifier_.point(answers ? std::optional(pointer->x()) : std::nullopt);
}

void Hover::update() {
  if (item_ >= tiles_.count()) item_ = -1;
  magnifier_.setRatio(tiles_.ratio());
  magnifier_.update();
}

}  // namespace tarnwick
