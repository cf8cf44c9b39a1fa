#include "app/MessageLine.h"

#include "app/BubblePlace.h"
#include "dock/DockController.h"
#include "store/AppStore.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {
namespace {

/// By then the dock stands where a change of the layout or of the displays puts it.
constexpr double kOnceTheDockStands = 0.06;

}  // namespace

MessageLine::MessageLine(AppStore& store, DockController& dock, Screens& screens, Panels& panels)
    : store_(store), dock_(dock), screens_(screens), panels_(panels) {
  connect(&store_, &AppStore::errorChanged, this, &MessageLine::update);
  connect(&store_, &AppStore::layoutChanged, this, &MessageLine::arrangeSoon);
  connect(&screens_, &Screens::changed, this, &MessageLine::arrangeSoon);
  connect(&panels_, &Panels::compositingChanged, this, &MessageLine::arrangeSoon);
}

MessageLine::~MessageLine() = default;

void MessageLine::update() {
  if (store_.error() == text_) return;
  text_ = store_.error();
  panel_.reset();
  // A message of a layout pass comes before the dock stands.
  if (!dock_.displays().isEmpty()) arrange();
  arrangeSoon();
}

int MessageLine::height() const { return panel_ ? bubble_->bubbleSize().height() : 0; }

void MessageLine::arrangeSoon() {
  arranging_.reset();
  if (!text_.isEmpty()) arranging_ = store_.scheduler().after(kOnceTheDockStands, [this] { arrange(); });
}

void MessageLine::arrange() {
  arranging_.reset();
  if (text_.isEmpty() || screens_.all().isEmpty()) {
    panel_.reset();
    return;
  }
  if (!panel_) make();
  bubble_->setLook(dockStyleNamed(store_.config().style), backdropOf(panels_));
  if (const PanelPlacement wanted = bubblePlacement(*bubble_, dock_, screens_); wanted != placement_) {
    placement_ = wanted;
    panel_->place(wanted);
  }
  panel_->setOutline(bubble_->outlineRegion());
  panel_->setInputRegion(bubble_->outlineRegion());
  panel_->setShown(true);
}

void MessageLine::make() {
  auto bubble = std::make_unique<MessageBubble>();
  bubble->setMessage(text_);
  // The click that dismisses comes from inside the bubble, so the bubble must outlive the click.
  connect(
      bubble.get(), &MessageBubble::dismissed, this, [this] { store_.clearError(); }, Qt::QueuedConnection);
  bubble_ = bubble.get();
  placement_.reset();
  panel_ = panels_.make(std::move(bubble));
  // The display went, or the window was taken in some other way: where there is a display the message comes again.
  connect(
      panel_.get(), &Panel::closed, this,
      [this] {
        panel_.reset();
        arrangeSoon();
      },
      Qt::QueuedConnection);
}

}  // namespace tarnwick
