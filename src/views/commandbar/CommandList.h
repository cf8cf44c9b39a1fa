#pragma once

#include <QListView>
#include <functional>

#include "commandbar/CommandBarRows.h"
#include "views/controls/ListAccessible.h"

namespace tarnwick {

/// The rows of the command bar. The field keeps the keyboard; one row is chosen, and a click on any one opens it. It is
/// as high as its rows and scrolls where the screen has no space for that.
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
  /// Of all rows, with the space around them; 0 without any.
  int wholeHeight() const;
  /// Draws the pictures anew.
  void refreshPictures() { viewport()->update(); }

  void pressItem(const QModelIndex& index) override;
  QStringList itemActions(const QModelIndex& index) const override;
  void runItemAction(const QModelIndex& index, qsizetype action) override;

 Q_SIGNALS:
  void opened(int row);
  void revealRequested(int row);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  class Model;
  class Painter;

  Model* model_;
  Picture picture_;
  int pressed_ = -1;
};

}  // namespace tarnwick
