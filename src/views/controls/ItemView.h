#pragma once

#include <QListView>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <memory>

#include "views/controls/ControlLook.h"
#include "views/controls/ListAccessible.h"
#include "views/controls/PaneMenu.h"

class QLineEdit;
class QMimeData;

namespace tarnwick {

/// One thing in an ItemView.
struct ViewItem {
  QString id;  ///< What it is known by; unique in its view.
  QString title;
  QString caption{};
  QString tip{};           ///< Plain text, of one line or several; the title where empty.
  QString value{};         ///< At the end of a row.
  QUrl drag{};             ///< What is dragged out; empty for nothing.
  QString dragText{};      ///< The same as a text, in place of the address or where there is none.
  bool dragsCopy = false;  ///< Only a copy of it may be taken.
  QString action{};        ///< What the view's action is called for this one; as for all where empty.
  QString mark{};          ///< A symbol at the end of its row that makes it stand out.

  bool operator==(const ViewItem&) const = default;
};

/// Many things of one sort, as rows, as icons or as pictures, which scroll. One click or Return opens one; an action on
/// each shows at its side under the pointer and is reached by its key. Named for screen readers item by item.
class ItemView final : public QListView, public ItemActions {
  Q_OBJECT
 public:
  enum class Shape { Rows, Icons, Pictures };
  /// Draws what stands for an item into a box.
  using Picture = std::function<void(QPainter& painter, const QRectF& box, const ViewItem& item)>;

  /// `label` names the whole.
  ItemView(const QString& label, Shape shape, QWidget* parent = nullptr);
  ~ItemView() override;

  void setPicture(Picture picture);
  /// Pictures that let the panel's glass through take some of it along when they are dragged out, with such corners.
  void setDragGround(double corner) { dragGround_ = corner; }
  void setItemAction(const QString& symbol, const QString& label, const QKeySequence& key);
  /// What a right click, the menu key and screen readers offer for an item.
  using Menu = std::function<QList<PaneMenuEntry>(const QString& id)>;
  void setItemMenu(Menu menu) { menu_ = std::move(menu); }
  /// Rows get a button for it at their end, beside the action. `label` is its tip.
  void setMenuButton(const QString& label) { menuLabel_ = label; }
  /// Where titles lose letters: at their end, but for files, which end with what they are.
  void setElide(Elide elide) { elide_ = elide; }
  /// How many rows of cells are seen at most.
  void setMostRows(int rows);
  /// How many pictures stand beside each other, and how tall one is with its title.
  void setPictureCell(int columns, int height);
  /// The item that was chosen stays so, if it is still there.
  void setItems(const QList<ViewItem>& items);
  const QList<ViewItem>& items() const;
  /// Draws the pictures anew.
  void refreshPictures() { viewport()->update(); }
  void choose(int index);
  /// Lets a field that keeps the keyboard choose and open items, and ask for their menu.
  void followField(QLineEdit& field);

  /// What a drag of an item carries for other programs; null where it cannot be dragged.
  static std::unique_ptr<QMimeData> carried(const ViewItem& item);

  Shape shape() const { return shape_; }
  QSize cell() const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, 0}; }

  void pressItem(const QModelIndex& index) override;
  QStringList itemActions(const QModelIndex& index) const override;
  void runItemAction(const QModelIndex& index, qsizetype action) override;

 Q_SIGNALS:
  void opened(const QString& id);
  void actionRequested(const QString& id);
  void middleClicked(const QString& id);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  bool viewportEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Model;
  class Painter;

  int columns() const;
  void fitHeight();
  /// What a click at the side of an item does.
  enum class Side { None, Action, Menu };

  bool showsAction(const QModelIndex& index) const;
  bool hasMenuButton() const { return !menuLabel_.isEmpty() && shape_ == Shape::Rows; }
  QString actionLabelOf(const QModelIndex& index) const;
  QRect actionRect(const QModelIndex& index) const;
  QRect menuRect(const QModelIndex& index) const;
  Side sideAt(const QPoint& place) const;
  void openMenu(const QModelIndex& index, const QPoint& at);
  bool isKept(QKeyEvent& event);
  void openCurrent();
  QString idAt(const QModelIndex& index) const;
  QList<PaneMenuEntry> menuOf(const QModelIndex& index) const;

  Shape shape_;
  Model* model_;
  Picture picture_;
  double dragGround_ = -1;  ///< Its corner; below 0 for none.
  Menu menu_;
  QString actionSymbol_;
  QString actionLabel_;
  QKeySequence actionKey_;
  QString menuLabel_;
  Elide elide_ = Elide::End;
  int mostRows_ = 6;
  int pictureColumns_ = 3;
  int pictureCell_ = 92;
  bool cellHasNoCaption_ = false;
  QLineEdit* field_ = nullptr;
  Side pressed_ = Side::None;
  bool byKeyboard_ = false;  ///< After a click opened the panel its first item needs no line around it.
  QTimer scrolled_;
};

}  // namespace tarnwick
