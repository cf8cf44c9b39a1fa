#pragma once

#include <QPushButton>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// What all of our buttons share: a label that is also the name for screen readers, activation by Space and Return, and
/// a focus line that shows only when the keyboard brought the focus.
class PaintedButton : public QPushButton {
  Q_OBJECT
 public:
  explicit PaintedButton(const QString& label, QWidget* parent = nullptr);

  const QString& label() const { return label_; }
  void setLabel(const QString& label);

 protected:
  /// The ground of the state that the button is in.
  QColor ground() const;
  const ControlLook& look() const { return lookOf(*this); }
  bool showsFocus() const { return hasFocus() && byKeyboard_; }
  /// Ready to paint: smooth, and faint while the button is disabled.
  void prepare(QPainter& painter) const;

  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  QString label_;
  bool byKeyboard_ = false;
};

/// A button with a word and perhaps a symbol before it. A checkable one that is checked stands out in the accent.
class Button final : public PaintedButton {
  Q_OBJECT
 public:
  enum class Role {
    Plain,
    Primary,  ///< Filled with the accent; at most one in a panel.
    Danger,   ///< Filled with red: what it does loses something.
    Quiet,    ///< A text without a background until the pointer is on it.
  };
  explicit Button(const QString& label, Role role = Role::Plain, QWidget* parent = nullptr);

  void setRole(Role role);
  /// Before the word; an empty name takes it away.
  void setSymbol(const QString& symbol);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int wordWidth() const;

  Role role_;
  QString symbol_;
};

/// A square button with a symbol; its label is shown in the tip and read by screen readers.
class IconButton final : public PaintedButton {
  Q_OBJECT
 public:
  IconButton(const QString& symbol, const QString& label, QWidget* parent = nullptr);

  void setSymbol(const QString& symbol);
  /// Whether it has a ground at rest. It has unless set otherwise.
  void setGround(bool ground);
  void setTone(Tone tone);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
  bool hasGround_ = true;
  Tone tone_ = Tone::Primary;
};

}  // namespace tarnwick
