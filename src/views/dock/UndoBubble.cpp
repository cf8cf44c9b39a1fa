#include "views/dock/UndoBubble.h"

#include "views/dock/DockWords.h"

namespace tarnwick {

UndoBubble::UndoBubble(Scheduler& scheduler, const QString& message, QWidget* parent)
    : MessageBubble(parent), scheduler_(scheduler) {
  setSign(QStringLiteral("arrow.uturn.backward"), Accent::Blue);
  setMessage(message);
  setAction(DockWords::tr("Undo"));
  live();
}

void UndoBubble::live() {
  end_ = scheduler_.after(kLife, [this] { Q_EMIT dismissed(); });
}

void UndoBubble::enterEvent(QEnterEvent* event) {
  end_.reset();
  MessageBubble::enterEvent(event);
}

void UndoBubble::leaveEvent(QEvent* event) {
  live();
  MessageBubble::leaveEvent(event);
}

}  // namespace tarnwick
