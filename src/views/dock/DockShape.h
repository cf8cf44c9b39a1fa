#pragma once

#include <QMargins>
#include <QRectF>
#include <QRegion>
#include <QSize>

#include "views/dock/DropController.h"
#include "views/dock/ProfileTabs.h"
#include "views/dock/RowTiles.h"
#include "views/dock/TileDragController.h"

namespace tarnwick {

/// The shape of a dock: its glass, what is seen of it as whole pixels, what takes clicks, and the space around it. The
/// row, the tabs and what is held are borrowed.
class DockShape final {
 public:
  DockShape(const RowTiles& tiles, const ProfileTabs& tabs, const TileDragController& drag, const DropController& drop)
      : tiles_(tiles), tabs_(tabs), drag_(drag), drop_(drop) {}

  /// The glass; while the tabs make it grow or shrink, as large as it is at most.
  QRectF fullGlass() const;
  /// What is visible, as whole pixels: the shape of the window where nothing composites.
  QRegion outline() const;
  /// What takes clicks; the margins let them through.
  QRegion inputRegion() const;
  /// Space around the slot that shadow and lifted tiles are painted on.
  QMargins margins() const;
  /// What the whole row takes, margins included.
  QSize sizeHint() const;
  /// The stretch of the glass with a place of the row on it.
  QRect beside(const QRectF& place) const;
  /// The place that asks for widgets.
  QRectF invitation() const;
  /// All that tiles reach, lifted ones included.
  QRectF rowBand() const;

  /// After the row was laid out: whether the shape is another since this was asked last. `isRearranged` says that items
  /// are elsewhere.
  bool takeLayout(bool isRearranged);
  /// Whether a dock without glass has the shape of a glass now and had not when this was asked last, or the other way.
  bool takeWhole();

 private:
  bool hasGlass() const { return tiles_.palette().glass.bodyTop.isValid(); }
  bool isWhole() const { return hasGlass() || drag_.isActive() || drag_.isLanding() || drop_.isActive(); }
  double corner() const;

  const RowTiles& tiles_;
  const ProfileTabs& tabs_;
  const TileDragController& drag_;
  const DropController& drop_;
  QRectF glass_;  ///< As it was asked for last.
  bool wasWhole_ = true;
};

}  // namespace tarnwick
