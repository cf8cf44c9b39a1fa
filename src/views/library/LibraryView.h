#pragma once

#include <QDrag>
#include <QListView>
#include <QPointer>
#include <QTimer>
#include <optional>

#include "views/controls/ListAccessible.h"
#include "views/library/CardLayout.h"
#include "views/library/PreviewTiles.h"
#include "widgets/LibraryShelves.h"

class QLineEdit;

namespace tarnwick {

class AppStore;
class Button;

/// The shelves of the library with their cards, which scroll. A card is added by a double click, by Return, by the
/// button that shows on the one under the pointer or on the chosen one, and by dragging it out. Only cards that are
/// seen are painted, and follow the beat.
class LibraryView final : public QListView, public ItemActions {
  Q_OBJECT
 public:
  /// `store` and what the sources ask outlive the view. The button is beside the view in `parent`, where screen
  /// readers find it.
  LibraryView(AppStore& store, const PreviewSources& sources, QWidget* parent);
  ~LibraryView() override;

  /// The chosen item stays so if it is still there.
  void setShelves(const QList<LibraryShelf>& shelves);
  const QList<LibraryShelf>& shelves() const;
  /// The profile whose widgets count as placed.
  void setTarget(const QUuid& profile);
  void setApplications(const QStringList& paths) { tiles_.setApplications(paths); }
  /// Lets a field that keeps the keyboard choose and add items.
  void followField(QLineEdit& field);
  /// Chooses an item by its place among all; none for one that is not there.
  void choose(int row);
  /// The widget that was dragged out last; null for none.
  const QUuid& carried() const { return carried_; }

  /// Where a card says of its picture that its widget comes later or that it shows a sample; empty where it does not.
  QRect markRect(int row) const;

  QRect visualRect(const QModelIndex& index) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  QModelIndex indexAt(const QPoint& point) const override;
  void doItemsLayout() override;
  void pressItem(const QModelIndex& index) override { activate(index.row()); }

 Q_SIGNALS:
  /// A widget is to be added, or something to be chosen first.
  void itemActivated(const LibraryItem& item);

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  int horizontalOffset() const override { return 0; }
  int verticalOffset() const override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) override;
  QRegion visualRegionForSelection(const QItemSelection& selection) const override;
  void updateGeometries() override;
  void scrollContentsBy(int dx, int dy) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  bool viewportEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Model;

  static constexpr int kMark = 12;     ///< Of a card that is placed.
  static constexpr int kMarkGap = 6;   ///< Between the mark and its words.
  static constexpr int kNameGap = 10;  ///< Behind the name.

  static QString buttonWord(const LibraryItem& item);
  const LibraryItem& itemAt(int row) const;
  const LibraryItem* itemOf(const QModelIndex& index) const;
  bool isPlaced(int row) const;
  /// What is to be known of the picture of a row: that its widget comes later, or that it shows a sample. Else empty.
  QString markOf(int row) const;
  /// The card that shows the button: the one under the pointer, else the chosen one.
  int activeRow() const;
  QRect cardRect(int row) const;
  QRect buttonRect(int row) const;
  void setHovered(int row);
  void placeButton();
  void activate(int row);
  std::pair<int, int> seen() const;
  /// Whether there is something to look at.
  bool isSeen() const { return isVisible() && !window()->isMinimized(); }
  void refreshTiles();
  /// Tells the tiles which cards are looked at.
  void showTiles();
  void updateCards(const QSet<QUuid>& widgets);
  void takePlaced();
  void updateCard(int row);
  void takeLook();

  void paintShelves(QPainter& painter, const QRect& part) const;
  void paintCard(QPainter& painter, int row);
  void paintMark(QPainter& painter, int row) const;
  void paintName(QPainter& painter, const QRect& card, int row) const;
  void paintTileOf(QPainter& painter, const QRect& card, const LibraryItem& item);
  void paintThumb(QPainter& painter) const;

  AppStore& store_;
  PreviewTiles tiles_;
  Model* model_;
  Button* add_;
  CardLayout layout_;
  QList<int> words_;              ///< The widths of the names.
  QHash<QString, int> measured_;  ///< Widths of names, by the name.
  QList<bool> placed_;            ///< Of each item.
  QUuid target_;
  QLineEdit* field_ = nullptr;
  QUuid carried_;
  QPointer<QDrag> drag_;  ///< While it is on its way, no pointer is over the cards.
  int hovered_ = -1;
  int layoutWidth_ = -1;
  QTimer scrolled_;
};

}  // namespace tarnwick
