#pragma once

#include <QPointF>
#include <optional>

#include "views/dock/DockShape.h"
#include "views/dock/ProfileTabs.h"
#include "views/dock/RowTiles.h"
#include "views/dock/TipController.h"

namespace tarnwick {

/// What a dock has to say of what is pointed at: names, and what a tile has no space for. All is borrowed.
class PointedTips final {
 public:
  PointedTips(const RowTiles& tiles, const ProfileTabs& tabs, const DockShape& shape)
      : tiles_(tiles), tabs_(tabs), shape_(shape) {}

  /// None where nothing is to be said.
  std::optional<DockTip> at(QPointF point) const;
  /// `point` is where the pointer is, for tiles of several parts.
  std::optional<DockTip> of(qsizetype item, std::optional<QPointF> point = {}) const;

 private:
  const RowTiles& tiles_;
  const ProfileTabs& tabs_;
  const DockShape& shape_;
};

}  // namespace tarnwick
