#pragma once

#include "base/Scheduler.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {

/// The bubble that offers to take back what was just done. It lives for eight seconds of nobody pointing at it, and
/// then says dismissed() like one that the user dismissed; actionRequested() asks to undo.
class UndoBubble : public MessageBubble {
  Q_OBJECT
 public:
  static constexpr double kLife = 8;  ///< Seconds.

  /// The scheduler is borrowed.
  UndoBubble(Scheduler& scheduler, const QString& message, QWidget* parent = nullptr);

 protected:
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void live();

  Scheduler& scheduler_;
  JobHandle end_;
};

}  // namespace tarnwick
