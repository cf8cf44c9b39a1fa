#pragma once

#include <QPainter>
#include <QSet>
#include <QUuid>
#include <functional>

#include "motion/Fade.h"
#include "motion/Pulse.h"
#include "views/dock/AppIconCache.h"
#include "views/dock/DropController.h"
#include "views/dock/Hover.h"
#include "views/dock/KeyboardFocus.h"
#include "views/dock/PressController.h"
#include "views/dock/ProfileTabs.h"
#include "views/dock/RowTiles.h"
#include "views/dock/TileDragController.h"
#include "views/tiles/TilePictures.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// What is done with a dock at the moment, as far as its tiles show it; borrowed.
struct DockState {
  const RowTiles& tiles;
  const Hover& hover;
  const PressController& press;
  const KeyboardFocus& focus;
  const TileDragController& drag;
  const DropController& drop;
  const ProfileTabs& tabs;
  const QUuid& panelOpen;    ///< The widget whose panel is open; null for none.
  const QSet<int>& numbers;  ///< The apps that show their number, counted from 0.

  /// The item that is drawn with the ring of the keyboard; -1 for none.
  qsizetype focusedItem() const { return tiles.surface().hasFocus() && !drag.isActive() ? focus.item() : -1; }
};

/// Paints the items of a row as they are seen at the moment, with pictures of them for the length of a motion.
class ItemPainter final {
 public:
  /// `stale` is called for each item that is to be painted anew.
  ItemPainter(const DockState& state, const AppIconCache& icons, Animator& animator,
              std::function<void(qsizetype item)> stale);

  void paint(QPainter& painter, qsizetype item);
  /// Where an item is seen.
  QRectF placeOf(qsizetype item) const;
  /// The tile that is held, as it is seen: with its shadow around it.
  QPixmap pictureOfHeld() const;
  /// Where that tile itself lies, and the space that its shadow takes.
  QRectF heldPlace() const;
  QMargins heldMargins() const;
  /// All that it takes up there.
  QRectF boundsOf(qsizetype item) const;
  /// All that an item takes up at a place however large it is drawn.
  QRectF mostBoundsAt(const QRectF& place) const;

  /// From now on items are drawn with their pictures, until a moment after the last such call.
  void noteMotion() { rest_.restart(); }
  /// An item looks different.
  void forget(qsizetype item) { pictures_.forget(item); }
  /// All of them do.
  void forgetAll() { pictures_.clear(); }
  /// Applications that start pulse, for as long as the row has any.
  void followLaunches();
  /// So do the marks of what is fetched go to and fro, while the row is seen.
  void followLoading();

 private:
  TileStyle styleOf(qsizetype item) const;
  TileState stateOf(qsizetype item) const;
  void paintGround(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style) const;
  void paintItself(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style) const;
  void comeToRest();

  DockState state_;
  const AppIconCache& icons_;
  std::function<void(qsizetype)> stale_;
  TilePictures pictures_;  ///< What items are drawn with until rest_ has run off.
  Fade rest_;              ///< From each frame in which something moves.
  Pulse launches_;
  Pulse loading_;
  QSet<QString> launching_;  ///< The items that it shows, by their keys.
};

}  // namespace tarnwick
