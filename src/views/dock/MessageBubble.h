#pragma once

#include <QMargins>
#include <QRegion>
#include <QString>
#include <QWidget>

#include "views/theme/Glass.h"

namespace tarnwick {

/// The quiet bubble above the dock that says what went wrong until it is dismissed. It fills a window that is as large
/// as bubbleSize() grown by margins().
class MessageBubble : public QWidget {
  Q_OBJECT
 public:
  explicit MessageBubble(QWidget* parent = nullptr);

  void setMessage(const QString& message);
  const QString& message() const { return message_; }
  /// The dock's look; the bubble follows it.
  void setLook(DockStyle style, Backdrop backdrop);

  /// The size of the bubble itself: as wide as its text, up to a width at which the text wraps.
  QSize bubbleSize() const;
  QMargins margins() const;
  /// In the window's coordinates: what is visible, which is also what takes clicks.
  QRegion outlineRegion() const;

  QSize sizeHint() const override { return bubbleSize().grownBy(margins()); }

 Q_SIGNALS:
  void dismissed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRect bubbleRect() const;
  QRectF buttonRect() const;
  void setButton(bool hovered, bool pressed);

  QString message_;
  Palette palette_;
  Glass glass_;
  bool hovered_ = false;
  bool pressed_ = false;
};

}  // namespace tarnwick
