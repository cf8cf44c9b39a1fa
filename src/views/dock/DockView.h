#pragma once

#include <QHash>
#include <QMargins>
#include <QRegion>
#include <QUuid>
#include <QVariantAnimation>
#include <QWidget>
#include <functional>
#include <optional>

#include "views/dock/DockRow.h"
#include "views/dock/RowLayout.h"
#include "views/theme/Glass.h"
#include "views/tiles/TilePainter.h"

namespace tarnwick {

/// The dock as a person sees it: a pane of glass with the tiles on it. It fills a window that is as large as the
/// panel's slot grown by margins(). It has no clock: whoever owns it calls refresh() when something that tiles show may
/// have changed, and only the tiles that look different then are painted again.
class DockView : public QWidget {
  Q_OBJECT
 public:
  /// Gives an application's icon, `size` units wide, for a screen with `ratio` device pixels per unit.
  using IconProvider = std::function<QPixmap(const DockApp& app, int size, double ratio)>;

  explicit DockView(QWidget* parent = nullptr);
  ~DockView() override;

  void setIconProvider(IconProvider provider);
  void setRow(const DockRow& row);
  const DockRow& row() const { return row_; }
  void refresh(const TileSources& sources);
  /// Marks the widget whose panel is open; a null identity marks none.
  void setPanelOpen(const QUuid& widget);

  // Shapes, in the view's own coordinates.
  QRectF glassRect() const { return layout_.glass; }
  /// What is visible, as whole pixels: the shape of the window where nothing composites.
  QRegion outlineRegion() const;
  /// What takes clicks; the margins let them through.
  QRegion inputRegion() const;
  /// Room around the slot that shadow and lifted tiles are painted on.
  QMargins margins() const;
  /// The width of a slot that the whole row fits in, in the units of the window.
  double idealRowWidth() const { return RowLayout::idealWidth(row_) * row_.scale; }
  /// The widget whose tile lies at a point; null for none.
  QUuid widgetAt(QPointF point) const;

  // The tiles in words, for screen readers.
  qsizetype itemCount() const { return layout_.items.size(); }
  QRectF itemRect(qsizetype item) const { return layout_.items.value(item).rect; }
  TileText itemText(qsizetype item) const;
  void activateItem(qsizetype item);
  qsizetype focusedItem() const { return hasFocus() ? focused_ : -1; }

  QSize sizeHint() const override;

 Q_SIGNALS:
  void tileActivated(const QUuid& widget);
  /// A click on a part of a tile that acts by itself; for quick toggles `part` is the `Toggle`.
  void tilePartActivated(const QUuid& widget, int part);
  void applicationActivated(quint64 application);
  void tabActivated(qsizetype tab);
  void addWidgetsRequested();
  /// Null for the dock itself. The position is on the screen.
  void contextMenuRequested(const QUuid& widget, const QPoint& position);
  void applicationMenuRequested(quint64 application, const QPoint& position);
  /// glassRect, outlineRegion, inputRegion or margins changed.
  void shapeChanged();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  struct Tile {
    TileContent content;
    TileText text;
  };

  void relayout();
  void updateItem(qsizetype item);
  void updateRow();
  const DockWidget* widgetOf(qsizetype item) const;
  bool answersPointer(qsizetype item) const;
  TileStyle styleOf(qsizetype item) const;
  double magnificationOf(qsizetype item) const;
  void setPointer(std::optional<QPointF> pointer);
  void swell(bool wanted);
  void setFocused(qsizetype item);
  void moveFocus(int direction);
  void openMenu(qsizetype item, const QPoint& position);
  void release(QPointF point);
  void describe();

  void paintPart(QPainter& painter, const QRect& part);
  void paintTabs(QPainter& painter);
  void paintEmpty(QPainter& painter);
  void paintItem(QPainter& painter, qsizetype item);
  void paintApp(QPainter& painter, qsizetype item);
  QPixmap iconOf(const DockApp& app, int size, double ratio);

  DockRow row_;
  Palette palette_;
  TileSources sources_;
  RowLayout layout_;
  QHash<QUuid, Tile> tiles_;
  Glass glass_;
  IconProvider icons_;
  QHash<QString, QPixmap> iconCache_;
  QVariantAnimation swell_;  ///< From 0, nobody points here, to 1.
  bool swollen_ = false;

  double scroll_ = 0;
  double pointerX_ = 0;
  qsizetype hovered_ = -1;
  qsizetype pressed_ = -1;
  qsizetype focused_ = -1;
  QUuid panelOpen_;
};

}  // namespace tarnwick
