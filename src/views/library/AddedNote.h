#pragma once

#include <QTimer>
#include <QWidget>

namespace tarnwick {

class Button;
class TextLabel;

/// Says for a moment, at the foot of its parent, that something was added, with buttons to set it up and to undo.
class AddedNote final : public QWidget {
  Q_OBJECT
 public:
  explicit AddedNote(QWidget* parent);

  /// `editable`: whether there is a form for what was added.
  void say(const QString& sentence, bool editable);
  /// Hidden with the keyboard, it gives that to its parent.
  void setVisible(bool visible) override;

 Q_SIGNALS:
  void editRequested();
  void undoRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void place();
  bool hasKeyboard() const;

  TextLabel* text_;
  Button* edit_;
  Button* undo_;
  QTimer stays_;
};

}  // namespace tarnwick
