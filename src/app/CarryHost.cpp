#include "app/CarryHost.h"

#include "dock/DockController.h"

namespace tarnwick {

void CarryHost::show(const QString& display, const std::optional<CarriedPicture>& tile) {
  Panel* owner = tile && controller_ ? controller_->panel(display) : nullptr;
  if (!owner || !owner->isShown()) return close();
  const QRect place = controller_->mapFromContent(display, tile->place);
  if (popup_) return popup_->moveBeside(place);
  PopupStyle style;
  style.margins = tile->margins;
  // Not beside the place but over it, on whichever side a popup would be.
  style.gap = -place.height();
  style.takesKeys = style.takesClicks = style.closesOutside = false;
  popup_ = owner->popup(std::make_unique<CarriedTile>(*tile, !panels_.isComposited()), place, style);
  connect(owner, &Panel::closed, popup_.get(), [this] { close(); });
  connect(owner, &QObject::destroyed, popup_.get(), [this] { close(); });
}

}  // namespace tarnwick
