#pragma once

#include <QMargins>
#include <QPixmap>
#include <QRect>
#include <QWidget>

namespace tarnwick {

/// A tile that is held away from its dock, as it is seen.
struct CarriedPicture {
  QPixmap picture;   ///< The tile and the shadow around it.
  QMargins margins;  ///< The shadow's space within the picture.
  QRect place;       ///< Of the tile, in the dock's coordinates.
  double corner = 0;
};

/// The content of the window that shows such a tile. It lets clicks through.
class CarriedTile final : public QWidget {
  Q_OBJECT
 public:
  /// `isCut`: nothing composites, and the window has the tile's shape.
  CarriedTile(const CarriedPicture& tile, bool isCut);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap picture_;
};

}  // namespace tarnwick
