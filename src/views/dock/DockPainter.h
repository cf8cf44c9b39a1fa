#pragma once

#include <QPainter>
#include <QPixmap>
#include <QRegion>
#include <functional>

#include "views/dock/DockShape.h"
#include "views/dock/GlassPicture.h"
#include "views/dock/ItemPainter.h"
#include "views/theme/Glass.h"

namespace tarnwick {

/// Paints a dock: the glass with the user's picture, tabs, the row with what slides and fades in it, and the marks of
/// where something goes. All but the pictures is borrowed.
class DockPainter final {
 public:
  /// `stale` is called when the whole dock is to be painted anew.
  DockPainter(const DockState& state, const DockShape& shape, ItemPainter& items, std::function<void()> stale);

  /// What of it lies in the region.
  void paint(QPainter& painter, const QRegion& damaged);
  /// The tiles of the profile as they are, without glass and applications.
  QPixmap pictureOfRow();

 private:
  void paintPart(QPainter& painter, const QRect& part);
  void paintPicture(QPainter& painter);
  void paintScrolled(QPainter& painter, const QRect& part);
  void paintFaded(QPainter& painter, const QRectF& side, bool towardsLeft);
  void paintArrow(QPainter& painter, const QRectF& arrow, bool pointsLeft) const;
  /// Those that stay, or those that scroll.
  void paintItems(QPainter& painter, const QRect& part, bool staying);
  void paintMarks(QPainter& painter, bool staying) const;
  void paintNumbers(QPainter& painter) const;
  void clipSlide(QPainter& painter) const;
  void paintSlide(QPainter& painter) const;
  void paintInvitation(QPainter& painter) const;
  void paintTabs(QPainter& painter) const;
  void paintInsertion(QPainter& painter, qsizetype index) const;

  // Short for what all of that is about.
  const DockRow& row() const { return state_.tiles.row(); }
  const RowLayout& layout() const { return state_.tiles.layout(); }
  const Palette& palette() const { return state_.tiles.palette(); }
  bool isWidget(qsizetype item) const { return state_.tiles.widgetOf(item) != nullptr; }
  double tileCorner() const;
  double dockCorner() const;

  DockState state_;
  const DockShape& shape_;
  ItemPainter& items_;
  Glass glass_;
  GlassPicture picture_;
};

}  // namespace tarnwick
