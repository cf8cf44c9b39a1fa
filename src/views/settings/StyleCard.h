#pragma once

#include <QRadioButton>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// One of the styles of the dock to choose from: a piece of a dock as it would be painted, and its name. Cards with the
/// same parent are one group, in which the arrow keys choose.
class StyleCard final : public QRadioButton {
  Q_OBJECT
 public:
  StyleCard(const QString& style, const QString& name, QWidget* parent = nullptr);

  const QString& style() const { return style_; }
  /// How the piece of the dock is painted beside its style.
  void setDock(bool tiles, bool monochrome);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
  void focusInEvent(QFocusEvent* event) override;

 private:
  void paintPicture(QPainter& painter, const QRectF& box) const;

  QString style_;
  bool tiles_ = true;
  bool monochrome_ = false;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
