#pragma once

#include <QListView>
#include <QStringList>
#include <functional>

#include "views/controls/ListAccessible.h"

namespace tarnwick {

/// Emoji in rows of eight, as high as all of them, of which only those that are seen are painted. Tab reaches one of
/// them and the arrow keys the others; a click, Space or Return takes one.
class EmojiGrid final : public QListView, public ItemActions {
 public:
  static constexpr int kColumns = 8;
  static constexpr int kCell = 36;

  /// `name` is for screen readers.
  explicit EmojiGrid(const QString& name, QWidget* parent = nullptr);

  std::function<void(const QString& emoji)> chosen;
  /// An arrow led out of it, at the top or at the bottom.
  std::function<void()> leftUp;
  std::function<void()> leftDown;

  void setEmoji(const QStringList& emoji);
  bool isEmpty() const { return model()->rowCount() == 0; }
  /// Gives its first the keyboard.
  void enter();

  void pressItem(const QModelIndex& index) override;

 protected:
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  class Model;
  class Painter;

  void reach(int row);
  void moveBy(int step);

  Model* model_;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
