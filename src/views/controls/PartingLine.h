#pragma once

#include <QPainter>
#include <QWidget>

#include "views/controls/ControlLook.h"
#include "views/theme/Glass.h"

namespace tarnwick {

/// Parts what is above it from what is below, over its whole width.
class PartingLine final : public QWidget {
 public:
  /// `space` is kept free on either side of it.
  explicit PartingLine(int space = 0, QWidget* parent = nullptr) : QWidget(parent) { setFixedHeight(space * 2 + 1); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(QRectF(0, height() / 2, width(), hairline(painter)), lookOf(*this).palette.hairline);
  }
};

}  // namespace tarnwick
