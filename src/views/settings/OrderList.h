#pragma once

#include <QKeySequence>
#include <QListView>
#include <functional>

#include "views/controls/ControlLook.h"
#include "views/controls/ListAccessible.h"

namespace tarnwick {

/// One row of an OrderList.
struct OrderItem {
  QString id;  ///< Unique in its list.
  QString title;
  QString caption{};
  QString symbol{};
  QString value{};  ///< At the end.
  bool isFaint = false;
  QString note{};  ///< A second caption, where the list has these; whole in the tip.

  bool operator==(const OrderItem&) const = default;
};

/// What can be done to a row, by a small button in it or by a key.
struct OrderAction {
  QString id;
  QString symbol;
  QString label;
  QKeySequence key;
};

/// Things in an order that the user makes: rows are dragged, or moved by Alt and the arrow keys. Return or a double
/// click opens one. Its buttons show in the row that is under the pointer or has the keyboard; a single one is in every
/// row, faint at rest. Wants to be as high as
/// its rows, up to a number of them; where there are more, the edge behind which it goes on fades.
class OrderList final : public QListView, public ItemActions {
  Q_OBJECT
 public:
  explicit OrderList(const QString& label, QWidget* parent = nullptr);
  ~OrderList() override;

  void setActions(const QList<OrderAction>& actions);
  /// Draws what stands before an item in place of a symbol.
  using Picture = std::function<void(QPainter& painter, const QRectF& box, const OrderItem& item)>;
  void setPicture(Picture picture) { picture_ = std::move(picture); }
  /// Whether rows have space for a note.
  void setNotes(bool notes) { hasNotes_ = notes; }
  /// The row that was chosen stays so if it is still there, else the one that took its place is.
  void setItems(const QList<OrderItem>& items);
  const QList<OrderItem>& items() const;
  QString chosen() const;
  void choose(const QString& id);
  /// Lets titles be written anew, by F2 or rename().
  void setRenamable(bool renamable);
  void rename(const QString& id);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, 0}; }

  void pressItem(const QModelIndex& index) override;
  /// The buttons of a row, and where it can be moved to.
  QStringList itemActions(const QModelIndex& index) const override;
  void runItemAction(const QModelIndex& index, qsizetype action) override;

 Q_SIGNALS:
  void chosenChanged(const QString& id);
  void opened(const QString& id);
  void actionRequested(const QString& id, const QString& action);
  /// The row should move to index `to` of the list without it.
  void moved(const QString& id, int to);
  void renamed(const QString& id, const QString& title);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  class Model;
  class Painter;

  QString idAt(const QModelIndex& index) const;
  bool hasActions(const QModelIndex& index) const;
  bool showsActions(const QModelIndex& index) const;
  int rowHeight() const;
  QString spoken(const OrderItem& item) const;
  QRect actionRect(const QModelIndex& index, qsizetype action) const;
  qsizetype actionAt(const QPoint& position) const;
  void moveCurrent(int places);

  Model* model_;
  QList<OrderAction> actions_;
  Picture picture_;
  bool hasNotes_ = false;
  qsizetype pressed_ = -1;  // The action that the button went down on.
  bool isQuiet_ = false;
};

}  // namespace tarnwick
