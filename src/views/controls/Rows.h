#pragma once

#include <QCheckBox>
#include <QPixmap>
#include <optional>

#include "views/controls/Buttons.h"

class QHBoxLayout;

namespace tarnwick {

/// A row of a list: a symbol or picture, a title, a caption below it, a word at the end, and perhaps controls behind
/// that. A row that can be clicked answers the pointer and the keyboard. Rows draw a hairline between each other.
class ListRow final : public PaintedButton {
  Q_OBJECT
 public:
  explicit ListRow(const QString& title, QWidget* parent = nullptr);

  void setTitle(const QString& title);
  /// With a caption the row is taller.
  void setCaption(const QString& caption);
  void setSymbol(const QString& symbol, Tone tone = Tone::Primary);
  /// As the legend of a line in a chart: this accent in place of the tone, which stays in looks without colours.
  void setSymbolAccent(Accent accent);
  void setPicture(const QPixmap& picture);
  void setValue(const QString& value, Tone tone = Tone::Primary);
  /// A share from 0 to 1 as a short bar before the value; none below 0.
  void setBar(double share);
  /// Adds a control at the end of the row, which takes it.
  void addControl(QWidget* control);
  /// Whether the row itself can be clicked; it cannot unless set otherwise.
  void setClickable(bool clickable);
  /// Whether a line parts it from the row above.
  void setParted(bool parted);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void describe();
  int controlsWidth() const;

  QString caption_;
  QString symbol_;
  Tone symbolTone_ = Tone::Primary;
  std::optional<Accent> symbolAccent_;
  QPixmap picture_;
  QString value_;
  Tone valueTone_ = Tone::Primary;
  double bar_ = -1;
  bool clickable_ = false;
  bool parted_ = false;
  QHBoxLayout* controls_;
};

/// A line that is ticked off.
class CheckRow final : public QCheckBox {
  Q_OBJECT
 public:
  explicit CheckRow(const QString& text, QWidget* parent = nullptr);

  /// Whether the text of a ticked row is struck through, as for things done. It is unless set otherwise.
  void setStrikes(bool strikes);
  /// A short text in the secondary color at the end.
  void setValue(const QString& value);
  void setParted(bool parted);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
  void focusInEvent(QFocusEvent* event) override;

 private:
  QString label_;
  QString value_;
  bool strikes_ = true;
  bool parted_ = false;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
