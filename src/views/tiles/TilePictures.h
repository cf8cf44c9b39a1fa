#pragma once

#include <QImage>
#include <QList>
#include <QPainter>
#include <functional>

#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// Pictures of the tiles of a row, for the length of a motion: what moves or swells need not be painted anew for each
/// frame. At its own size a tile's picture is the tile to the pixel (over an opaque ground text is weighted by a hair
/// more); swollen it is a little soft, so when the motion ends the tiles should be painted themselves again. Palette,
/// scale and everything else that all tiles share must not change without clear().
class TilePictures {
 public:
  /// Paints a tile at its own size.
  using Paint = std::function<void(QPainter& painter, const TileStyle& style)>;

  /// Whether a tile in this style has pictures: not while it is different with every frame anyway.
  static bool hasPicture(const TileStyle& style);

  /// Draws the item of a row at its place, as large as its style says. `paint` is asked to if there is no picture of
  /// the item in this state yet.
  void draw(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style, const Paint& paint);

  /// The item looks different now.
  void forget(qsizetype item);
  void clear() { items_.clear(); }

 private:
  struct Picture {
    TileState state = TileState::Rest;
    bool focused = false;
    bool takesDrop = false;
    bool editing = false;
    QSizeF size;
    double ratio = 0;
    QImage image{};

    bool looksLike(const Picture& other) const;
  };
  /// In the row, and under the pointer; used last, first.
  using Item = QList<Picture>;

  static void drawSwollen(QPainter& painter, const QRectF& place, const Picture& picture, double factor);

  QList<Item> items_;
};

}  // namespace tarnwick
