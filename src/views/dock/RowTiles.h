#pragma once

#include <QHash>
#include <QUuid>
#include <QWidget>
#include <functional>

#include "views/dock/DockRow.h"
#include "views/dock/RowLayout.h"
#include "views/theme/Palette.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileSources.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

/// What is in a dock and where: the row, its layout and colours, and what each tile shows. All parts of a dock's view
/// read it; the view alone changes it. An item is counted along the layout; -1, as any that is not there, is none.
class RowTiles final {
 public:
  /// `surface` is what the row is painted on; borrowed.
  explicit RowTiles(const QWidget& surface);
  RowTiles(const RowTiles&) = delete;
  RowTiles& operator=(const RowTiles&) = delete;

  const QWidget& surface() const { return surface_; }
  const DockRow& row() const { return row_; }
  const RowLayout& layout() const { return layout_; }
  const Palette& palette() const { return palette_; }
  /// Device pixels per unit.
  double ratio() const { return surface_.devicePixelRatioF(); }

  /// Another row, whose tiles are empty until they are made anew.
  void take(const DockRow& row);
  /// Whether a row differs from this one in nothing but what its tiles show.
  bool looksLike(const DockRow& row) const;
  void lay(const RowLayout& layout) { layout_ = layout; }

  struct Refreshed {
    QList<qsizetype> items;  ///< Those that look different now.
    bool saysOther = false;  ///< Whether a tile's words are others.
  };
  /// Makes tiles anew: those of widgets that `which` accepts, or all where it is empty.
  Refreshed refresh(const TileSources& sources, const std::function<bool(const DockWidget& widget)>& which = {});
  /// The same for all of them, from what they were made of last.
  Refreshed refresh() { return refresh(sources_); }
  /// Takes the same row but for what its tiles show (see looksLike), and makes the tiles of edited widgets anew.
  Refreshed takeWidgets(const DockRow& row);

  qsizetype count() const { return layout_.items.size(); }
  bool isItem(qsizetype item) const { return item >= 0 && item < count(); }
  /// Empty for none.
  QRectF place(qsizetype item) const { return layout_.items.value(item).rect; }
  /// What is seen of it; empty where that is nothing.
  QRectF seenPlace(qsizetype item) const { return isItem(item) ? layout_.seen(layout_.items[item]) : QRectF(); }
  /// Null for what is no widget's tile.
  const DockWidget* widgetOf(qsizetype item) const;
  /// Null for what is no running application.
  const DockApp* appOf(qsizetype item) const;
  /// The running application behind an item, a launcher's too; 0 for none.
  quint64 applicationOf(qsizetype item) const;
  /// Null where there is none.
  const TileContent* contentOf(qsizetype item) const;
  TileText textOf(qsizetype item) const;
  /// Whether not all that a tile shows could be read.
  bool hasFailed(qsizetype item) const;
  /// The same for as long as the widget or the application is in the row; empty for none.
  QString keyOf(qsizetype item) const { return isItem(item) ? itemKey(row_, layout_.items[item]) : QString(); }
  qsizetype itemWithKey(const QString& key) const { return tarnwick::itemWithKey(row_, layout_, key); }
  /// Whether an item starts or shows an application.
  bool isApplication(qsizetype item) const;
  bool isLaunching(qsizetype item) const;
  /// Whether what it shows is being fetched.
  bool isLoading(qsizetype item) const;
  /// Not what is no more than a gap.
  bool answersPointer(qsizetype item) const;
  /// A point over an item in the units of its tile.
  TileClick clickAt(qsizetype item, QPointF point) const;

  bool isEmpty() const { return row_.widgets.isEmpty() && layout_.items.isEmpty(); }
  /// Whether there is a place that asks for widgets: the whole of an empty dock, or one beside the applications.
  bool invites() const { return row_.widgets.isEmpty(); }
  /// The widget whose tile lies at a point; null for none.
  QUuid widgetAt(QPointF point) const;
  /// The place of a widget's tile; empty for none.
  QRectF placeOf(const QUuid& widget) const;
  /// The apps of the row, from its beginning: launchers and running applications.
  QList<DockAppItem> apps() const;
  /// The places of the running applications, whether as tiles of their own or behind a launcher's.
  QHash<quint64, QRectF> applicationPlaces() const;
  /// What screen readers know the items by.
  QStringList names() const;
  /// All that the tiles say.
  QString description() const;

 private:
  struct Tile {
    TileContent content;
    TileText text;
  };

  const QWidget& surface_;
  DockRow row_;
  RowLayout layout_;
  Palette palette_;
  TileSources sources_;
  QHash<QUuid, Tile> tiles_;
};

}  // namespace tarnwick
