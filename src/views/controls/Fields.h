#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

#include "views/controls/ControlLook.h"

namespace tarnwick {

class IconButton;

/// One line that the user writes. `label` is read by screen readers; it is shown as the placeholder where the field
/// has no label beside it.
class TextField : public QLineEdit {
  Q_OBJECT
 public:
  explicit TextField(const QString& label, QWidget* parent = nullptr);

  /// A symbol before the text; an empty name takes it away.
  void setSymbol(const QString& symbol);
  /// Whether what is written is wrong, which the line around the field says.
  void setFaulty(bool faulty);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  /// Space kept free at the end of the text.
  void setSpaceAtEnd(int space);

 private:
  void takeLook();
  void setSpaceAround();

  QString symbol_;
  int spaceAtEnd_ = 0;
  bool faulty_ = false;
};

/// A field to search with: a glass before it, a button that empties it behind.
class SearchField final : public TextField {
  Q_OBJECT
 public:
  explicit SearchField(const QString& label, QWidget* parent = nullptr);

  /// What is written stays, and is no longer what was changed last: taking back is for the owner of the field.
  void forgetTyping();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  IconButton* clear_;
};

/// Several lines that the user writes.
class TextArea : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit TextArea(const QString& label, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void takeLook();
};

}  // namespace tarnwick
