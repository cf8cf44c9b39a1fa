#pragma once

#include <QMargins>
#include <QRegion>
#include <QString>
#include <QWidget>

#include "views/theme/Glass.h"

namespace tarnwick {

/// The quiet bubble above the dock that says something until it is dismissed; it may offer one thing to do about it. It
/// fills a window that is as large as bubbleSize() grown by margins().
class MessageBubble : public QWidget {
  Q_OBJECT
 public:
  explicit MessageBubble(QWidget* parent = nullptr);

  void setMessage(const QString& message);
  const QString& message() const { return message_; }
  /// The symbol before the message, and its colour.
  void setSign(const QString& symbol, Accent accent);
  /// The word on the button behind the message; empty for no button.
  void setAction(const QString& word);
  const QString& action() const { return action_; }
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
  void actionRequested();
  /// The pointer came over it, or left.
  void pointed(bool isOver);

 protected:
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  enum class Button { None, Action, Cross };

  QRect bubbleRect() const;
  QRectF rectOf(Button button) const;
  Button buttonAt(QPointF point) const;
  double actionWidth() const;
  void setButtons(Button hovered, Button pressed);
  void paintButton(QPainter& painter, Button button) const;
  /// What Return means: the action where there is one.
  Button first() const { return action_.isEmpty() ? Button::Cross : Button::Action; }

  QString message_;
  QString symbol_;
  Accent accent_ = Accent::Orange;
  QString action_;
  Palette palette_;
  Glass glass_;
  Button hovered_ = Button::None;
  Button pressed_ = Button::None;
};

}  // namespace tarnwick
