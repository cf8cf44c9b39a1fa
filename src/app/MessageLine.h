#pragma once

#include <QObject>
#include <memory>

#include "app/DockBubble.h"

namespace tarnwick {

class Commands;

/// Shows the store's message in a bubble above the dock until the user dismisses it or it is withdrawn.
class MessageLine : public QObject {
  Q_OBJECT
 public:
  /// `commands` does what a message offers. All outlive this.
  MessageLine(DockBubbleParts parts, Commands& commands);
  ~MessageLine() override;

  /// Makes the bubble say what the store says now.
  void update();
  /// Of the bubble; 0 while none is shown.
  int height() const { return bubble_ ? bubble_->height() : 0; }
  /// Where it is, in desktop coordinates; empty while none is shown.
  QRect frame() const { return bubble_ ? bubble_->frame() : QRect(); }

 Q_SIGNALS:
  /// height() changed.
  void changed();
  /// The pointer came over the bubble, or left.
  void pointed(bool isOver);

 private:
  std::unique_ptr<MessageBubble> make();

  DockBubbleParts parts_;
  Commands& commands_;
  std::unique_ptr<DockBubble> bubble_;
  QString text_;
};

}  // namespace tarnwick
