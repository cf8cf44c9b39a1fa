#include "app/TipHost.h"

#include "dock/DockController.h"
#include "store/AppStore.h"
#include "views/dock/TipBubble.h"

namespace tarnwick {
namespace {

constexpr int kTipGap = 8;  ///< Between the glass and the tip.

}  // namespace

TipHost::TipHost(const AppStore& store, const Panels& panels) : store_(store), panels_(panels) {}

TipHost::~TipHost() = default;

void TipHost::show(const QString& display, const std::optional<DockTip>& tip) {
  if (!tip)
    hide(display);
  else if (popup_ && display_ == display)
    follow(*tip);
  else
    open(display, *tip);
}

void TipHost::hide(const QString& display) {
  if (display_ == display) popup_.reset();
}

void TipHost::open(const QString& display, const DockTip& tip) {
  popup_.reset();
  Panel* owner = controller_ ? controller_->panel(display) : nullptr;
  if (!owner || !owner->isShown()) return;
  auto bubble = std::make_unique<TipBubble>();
  bubble_ = bubble.get();
  bubble_->setLook(dockStyleNamed(store_.config().style), panels_.isComposited() ? Backdrop::Plain : Backdrop::Opaque);
  bubble_->setText(tip.text);
  PopupStyle style;
  style.margins = bubble_->margins();
  style.gap = kTipGap;
  style.takesKeys = style.takesClicks = style.closesOutside = false;
  display_ = display;
  popup_ = owner->popup(std::move(bubble), controller_->mapFromContent(display, tip.beside), style);
  const auto lost = [this] { popup_.reset(); };
  connect(owner, &Panel::closed, popup_.get(), lost);
  connect(owner, &QObject::destroyed, popup_.get(), lost);
  // The window system may take it away. By the time that this is heard there may be another one.
  const auto closed = [this, popup = popup_.get()] {
    if (popup_.get() == popup) popup_.reset();
  };
  connect(popup_.get(), &Popup::closed, this, closed, Qt::QueuedConnection);
}

void TipHost::follow(const DockTip& tip) {
  bubble_->setText(tip.text);
  popup_->moveBeside(controller_->mapFromContent(display_, tip.beside));
}

}  // namespace tarnwick
