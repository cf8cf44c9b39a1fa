#include "app/DockBubble.h"

#include <algorithm>

#include "app/BubblePlace.h"
#include "app/PanelHost.h"
#include "desktop/Screens.h"
#include "dock/DockController.h"
#include "store/AppStore.h"
#include "store/Services.h"
#include "views/dock/MessageBubble.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/WindowFade.h"

namespace tarnwick {

DockBubble::DockBubble(DockBubbleParts parts, Maker make) : parts_(parts), maker_(std::move(make)) {
  connect(&parts_.store, &AppStore::layoutChanged, this, &DockBubble::arrangeSoon);
  connect(&parts_.services.screens, &Screens::changed, this, &DockBubble::arrangeSoon);
  connect(&parts_.services.panels, &Panels::compositingChanged, this, &DockBubble::arrangeSoon);
  connect(&parts_.dock, &DockController::placed, this, &DockBubble::arrangeSoon);
  connect(&parts_.dock, &DockController::goesAway, this, &DockBubble::arrangeSoon);
  connect(&parts_.dock, &DockController::coveredChanged, this, &DockBubble::arrangeSoon);
  connect(&parts_.host, &PanelHost::outlineChanged, this, &DockBubble::moveAside);
}

DockBubble::~DockBubble() { fadeOut(); }

/// The window outlasts this for as long as it fades. The dock, whose displays it stands on, outlasts it.
void DockBubble::fadeOut() {
  if (!panel_ || !fade_ || !fade_->moves()) return;
  panel_->setInputRegion({});
  Panel* panel = panel_.release();
  panel->setParent(&parts_.dock);
  connect(panel, &Panel::closed, panel, &QObject::deleteLater);
  fade_->out([panel] { panel->deleteLater(); });
}

int DockBubble::height() const { return panel_ ? bubble_->bubbleSize().height() : 0; }

QRect DockBubble::frame() const {
  if (!panel_ || !placement_) return {};
  const QList<Screen> screens = parts_.services.screens.all();
  const auto screen = std::ranges::find(screens, placement_->screen, &Screen::id);
  return screen == screens.end() ? QRect() : placement_->rectangle.translated(screen->frame.topLeft().toPoint());
}

void DockBubble::arrangeSoon() {
  arranging_ = parts_.store.scheduler().after(DockController::kOnceTheyStand, [this] { arrange(); });
}

void DockBubble::arrange() {
  arranging_.reset();
  if (parts_.services.screens.all().isEmpty()) {
    panel_.reset();
    return;
  }
  if (!panel_) make();
  bubble_->setLook(shownStyle(parts_.store.config()), backdropOf(parts_.services.panels));
  const auto openPanel = [this](const QString& display) { return parts_.host.outline(display); };
  const PanelPlacement wanted =
      bubblePlacement(*bubble_, {parts_.dock, parts_.services.screens, raised_ ? raised_() : 0, display_, openPanel});
  if (wanted != placement_) {
    placement_ = wanted;
    panel_->place(wanted);
  }
  panel_->setAboveFullscreen(!parts_.dock.isCovered(wanted.screen));
  panel_->setOutline(bubble_->outlineRegion());
  panel_->setInputRegion(bubble_->outlineRegion());
  panel_->setShown(true);
}

/// A click on the bubble closes the panel, and must not find the bubble gone elsewhere before it is over.
void DockBubble::moveAside() {
  if (!panel_ || bubble_->underMouse()) return;
  arrange();
}

void DockBubble::make() {
  std::unique_ptr<MessageBubble> bubble = maker_();
  bubble_ = bubble.get();
  const Services& services = parts_.services;
  fade_ = services.panels.isComposited()
              ? new WindowFade(*bubble_, WindowFade::clockOf(services.clocks, services.motion, display_))
              : nullptr;
  if (fade_) fade_->in();
  placement_.reset();
  panel_ = parts_.services.panels.make(std::move(bubble));
  // The display went, or the window was taken in some other way: where there is a display the bubble comes again.
  connect(
      panel_.get(), &Panel::closed, this,
      [this] {
        panel_.reset();
        arrangeSoon();
      },
      Qt::QueuedConnection);
}

}  // namespace tarnwick
