#pragma once

#include <QList>
#include <QPointF>
#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

struct ToggleMark {
  Toggle toggle = Toggle::WiFi;
  bool on = false;
  bool available = true;
  QString reason;  ///< Why it is not available.

  bool operator==(const ToggleMark&) const = default;
};

/// The desktop's switches, a disc each.
struct TogglesContent {
  QList<ToggleMark> marks;

  bool operator==(const TogglesContent&) const = default;
};
TogglesContent makeToggles(const TileRequest& request);
TileText describe(const TogglesContent& content, const QString& name);
void paint(TileCanvas& canvas, const TogglesContent& content);
/// The switch under a point of a tile of `width`, unless this desktop hasn't got it.
std::optional<int> partAt(const TogglesContent& content, const TileClick& click);
/// The same with those that it hasn't got, which say why.
std::optional<TilePart> namedPart(const TogglesContent& content, const TileClick& point);

}  // namespace tarnwick
