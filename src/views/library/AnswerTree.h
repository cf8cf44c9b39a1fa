#pragma once

#include <QJsonValue>
#include <QPersistentModelIndex>
#include <QTreeView>

namespace tarnwick {

class AnswerModel;

/// The answer of a service, of which one field is chosen: by a click, or by Return on the row that the keyboard is on.
/// What a tile cannot show opens and closes instead. As high as its rows, up to a number of them.
class AnswerTree final : public QTreeView {
  Q_OBJECT
 public:
  /// `label` is for screen readers.
  explicit AnswerTree(const QString& label);
  ~AnswerTree() override;

  /// With as much of it opened as is seen at once.
  void setAnswer(const QJsonValue& answer);
  bool isEmpty() const;
  /// Marks the field of a path; none for a path that leads nowhere.
  void choose(const QString& path);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, 0}; }

 Q_SIGNALS:
  void chosen(const QString& path);

 protected:
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  class Painter;

  void take(const QModelIndex& index);
  void openSome();
  int shownRows() const;
  void fitHeight();

  AnswerModel* model_;
  QPersistentModelIndex chosen_;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
