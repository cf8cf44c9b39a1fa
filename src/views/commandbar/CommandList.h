#pragma once

#include <QListView>
#include <functional>
#include <limits>

#include "commandbar/CommandBarRows.h"
#include "views/controls/ListAccessible.h"

namespace tarnwick {

/// The rows of the command bar. The field keeps the keyboard; one row is chosen, and a click on any one opens it. It is
/// as high as its rows, twelve at most and no more than there is space for; beyond that it scrolls. No row is ever seen
/// in part.
class CommandList final : public QListView, public ItemActions {
  Q_OBJECT
 public:
  /// Draws what stands before a row into a square box.
  using Picture = std::function<void(QPainter& painter, const QRectF& box, const CommandItem& item)>;

  explicit CommandList(QWidget* parent = nullptr);
  ~CommandList() override;

  void setPicture(Picture picture) { picture_ = std::move(picture); }
  /// Rows that stay are not announced as new ones.
  void setRows(const QList<CommandRow>& rows);
  const QList<CommandRow>& rows() const;
  /// -1 for none.
  void choose(int row);
  /// What was done with the chosen row, in place of its hint until another one is chosen or something else is said.
  void say(const QString& note);
  const QString& note() const { return note_; }
  void setSpace(int height) { space_ = height; }
  /// Of the rows that it shows at a time, with the space around them; 0 without any.
  int wholeHeight() const;
  /// What fits in the end is not scrolled while the list grows.
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  /// Draws the pictures anew.
  void refreshPictures() { viewport()->update(); }

  void pressItem(const QModelIndex& index) override;
  QStringList itemActions(const QModelIndex& index) const override;
  void runItemAction(const QModelIndex& index, qsizetype action) override;

 Q_SIGNALS:
  void opened(int row);
  void revealRequested(int row);

 protected:
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  class Model;
  class Painter;

  int shownRows() const;
  int heightOf(int row) const;
  bool showsWhole(const QRect& row) const;
  int rowAt(const QPoint& place) const;

  Model* model_;
  Painter* painter_;
  Picture picture_;
  QString note_;
  QString noted_;  ///< The identity of the row that it is about.
  int space_ = std::numeric_limits<int>::max();
  int pressed_ = -1;
};

}  // namespace tarnwick
