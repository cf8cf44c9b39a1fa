#include "app/MessageLine.h"

#include "dock/DockController.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {

MessageLine::MessageLine(DockBubbleParts parts, Commands& commands) : parts_(parts), commands_(commands) {
  connect(&parts_.store, &AppStore::errorChanged, this, &MessageLine::update);
}

MessageLine::~MessageLine() = default;

void MessageLine::update() {
  if (parts_.store.error() == text_) return;
  text_ = parts_.store.error();
  bubble_.reset();
  if (!text_.isEmpty()) {
    bubble_ = std::make_unique<DockBubble>(parts_, [this] { return make(); });
    // A message of a layout pass comes before the dock is placed.
    if (!parts_.dock.displays().isEmpty()) bubble_->arrange();
    bubble_->arrangeSoon();
  }
  Q_EMIT changed();
}

std::unique_ptr<MessageBubble> MessageLine::make() {
  auto bubble = std::make_unique<MessageBubble>();
  bubble->setMessage(text_);
  if (parts_.store.isAnnouncement()) bubble->setSign(QStringLiteral("bell"), Accent::Blue);
  if (parts_.store.keptSettings()) {
    bubble->setAction(tr("Open Without Them…"));
    connect(
        bubble.get(), &MessageBubble::actionRequested, this, [this] { commands_.openKeptSettings(); },
        Qt::QueuedConnection);
  }
  connect(bubble.get(), &MessageBubble::pointed, this, &MessageLine::pointed);
  // One that goes under the pointer does not tell that this left it.
  connect(bubble.get(), &QObject::destroyed, this, [this] { Q_EMIT pointed(false); });
  // The click that dismisses comes from inside the bubble, so the bubble must outlive the click.
  connect(
      bubble.get(), &MessageBubble::dismissed, this, [this] { parts_.store.clearError(); }, Qt::QueuedConnection);
  return bubble;
}

}  // namespace tarnwick
