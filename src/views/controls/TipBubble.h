#pragma once

#include <QImage>
#include <QList>
#include <QMargins>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include "views/theme/Glass.h"

namespace tarnwick {

/// The small pane of glass that a tip is written on. Long texts wrap. It lets clicks through.
class TipBubble final : public QWidget {
  Q_OBJECT
 public:
  explicit TipBubble(QWidget* parent = nullptr);

  void setText(const QString& text);
  const QString& text() const { return text_; }
  /// Small pictures above the text, side by side. `standIn` stands in the place of a null one.
  void setPictures(const QList<QImage>& pictures, const QPixmap& standIn = {});
  const QList<QImage>& pictures() const { return pictures_; }
  /// The dock's look; the tip follows it.
  void setLook(DockStyle style, Backdrop backdrop);

  /// The space for the shadow around it.
  QMargins margins() const;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void cut();
  QSizeF picturesSize() const;
  void paintPictures(QPainter& painter, const QRectF& row) const;

  QString text_;
  QList<QImage> pictures_;
  QPixmap standIn_;
  Palette palette_;
  Glass glass_;
  bool isCut_ = false;  ///< Where nothing composites, the window has the shape of the pane.
};

}  // namespace tarnwick
