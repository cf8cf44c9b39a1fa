#pragma once

#include <QRadioButton>

#include "config/DockConfiguration.h"
#include "config/DockLayout.h"
#include "views/controls/ControlLook.h"

namespace tarnwick {

class LayoutPicture;

/// One of the layouts to choose from: its picture, its name and, where there is space, what it does. A radio button to
/// the keyboard and to screen readers: cards with the same parent are one group, in which the arrow keys choose. The
/// picture moves while the pointer is on the card and when it is chosen; that of a dock that is fixed shows it at its
/// edge.
class LayoutCard final : public QRadioButton {
  Q_OBJECT
 public:
  enum class Size {
    Tiny,   ///< The picture alone; the name is in the tip.
    Small,  ///< Picture and name.
    Large,  ///< On a card of its own, with the description.
  };
  LayoutCard(DockLayout layout, Size size, QWidget* parent = nullptr);

  /// What all small cards are wide, so that each name can be read; `kSmallWidth` where they are short enough.
  static int smallWidth();
  static constexpr int kSmallWidth = 142;

  DockLayout layout() const { return layout_; }
  /// Takes from the settings whether it is chosen, without chosen(), and the edge that is.
  void follow(const DockConfiguration& config);
  void setReduceMotion(bool reduce);
  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The user chose this layout.
  void chosen(DockLayout layout);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRectF ground() const;
  void setChosen(bool chosen);
  void move();
  void paintLarge(QPainter& painter, const ControlLook& look) const;
  void paintSmall(QPainter& painter, const ControlLook& look) const;

  DockLayout layout_;
  Size size_;
  LayoutPicture* picture_;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
