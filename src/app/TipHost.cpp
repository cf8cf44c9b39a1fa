#include "app/TipHost.h"

#include <algorithm>
#include <cstdlib>

#include "apps/AppIcons.h"
#include "dock/DockController.h"
#include "store/AppStore.h"
#include "views/controls/TipBubble.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/WindowFade.h"
#include "windows/WindowService.h"

namespace tarnwick {
namespace {

constexpr int kTipGap = 8;   ///< Between the glass and the tip.
constexpr int kReach = 160;  ///< How far a tip reaches beyond its tile.
constexpr qsizetype kMostPictures = 4;
constexpr int kIconSize = 40;   ///< Of the app, in place of a picture that is not there.
constexpr int kSameDock = 240;  ///< What is further from a tile belongs to another dock.

}  // namespace

TipHost::TipHost(const AppStore& store, const Services& services, WindowService& windows)
    : store_(store), services_(services), windows_(windows) {
  connect(&windows_, &WindowService::previewChanged, this, [this](quint64 window) {
    if (pictured_.contains(window)) showPictures();
  });
}

TipHost::~TipHost() = default;

void TipHost::show(const QString& display, const std::optional<DockTip>& tip) {
  if (!tip && popup_ && display_ == display)
    fadeOut();
  else if (!tip)
    return;
  else if (popup_ && display_ == display)
    follow(*tip);
  else
    open(display, *tip);
}

void TipHost::hide(const QString& display) {
  if (display_ == display) close();
}

void TipHost::close() {
  popup_.reset();
  if (std::exchange(application_, 0) == 0) return;
  pictured_.clear();
  windows_.stopPreviews();
}

void TipHost::fadeOut() {
  if (fade_)
    fade_->out([this] { close(); });
  else
    close();
}

void TipHost::open(const QString& display, const DockTip& tip) {
  close();
  Panel* owner = controller_ ? controller_->panel(display) : nullptr;
  if (!owner || !owner->isShown()) return;
  auto bubble = std::make_unique<TipBubble>();
  bubble_ = bubble.get();
  bubble_->setLook(shownStyle(store_.config()), services_.panels.isComposited() ? Backdrop::Plain : Backdrop::Opaque);
  bubble_->setText(tip.text);
  PopupStyle style;
  style.margins = bubble_->margins();
  style.gap = kTipGap;
  style.takesKeys = style.takesClicks = style.closesOutside = false;
  display_ = display;
  fade_ = services_.panels.isComposited()
              ? new WindowFade(*bubble_, WindowFade::clockOf(services_.clocks, services_.motion, display))
              : nullptr;
  popup_ = owner->popup(std::move(bubble), besideOf(tip), style);
  const auto lost = [this] { close(); };
  connect(owner, &Panel::closed, popup_.get(), lost);
  connect(owner, &QObject::destroyed, popup_.get(), lost);
  // The window system may take it away. By the time that this arrives there may be another one.
  const auto closed = [this, popup = popup_.get()] {
    if (popup_.get() == popup) close();
  };
  connect(popup_.get(), &Popup::closed, this, closed, Qt::QueuedConnection);
  if (fade_) fade_->in();
  beside_ = besideOf(tip);
  setPictures(tip);
}

void TipHost::setPictures(const DockTip& tip) {
  if (application_ == tip.application) return;
  const bool wanted =
      tip.application != 0 && store_.config().desktopOptions().windowPreviews && services_.windows.pictures();
  const auto& apps = store_.runningApps();
  const auto app = std::ranges::find(apps, tip.application, &RunningApp::identity);
  if (!wanted || app == apps.end()) {
    if (std::exchange(application_, 0) != 0) windows_.stopPreviews();
    pictured_.clear();
    bubble_->setPictures({});
    return;
  }
  application_ = tip.application;
  pictured_ = app->windowsIn(store_.windowScope(display_)).mid(0, kMostPictures);
  showPictures();
  windows_.loadPreviews(pictured_);
}

void TipHost::showPictures() {
  // One that has not come yet keeps its place.
  QList<QImage> pictures;
  for (const quint64 window : std::as_const(pictured_)) pictures.append(windows_.preview(window));
  const auto& apps = store_.runningApps();
  const auto app = std::ranges::find(apps, application_, &RunningApp::identity);
  bubble_->setPictures(pictures, app == apps.end()
                                     ? QPixmap()
                                     : services_.icons.pixmap(app->iconName, kIconSize, bubble_->devicePixelRatio()));
  popup_->moveBeside(beside_);
}

/// The tile, and with it the bubble that is over it.
QRect TipHost::besideOf(const DockTip& tip) const {
  const QRect tile = tip.beside.translated(controller_->contentOrigin(display_).toPoint());
  QRect beside = tile;
  const auto frames = besideDocks_ ? besideDocks_() : QList<QRect>();
  for (const QRect& frame : frames) {
    const bool isOverIt = frame.left() <= tile.right() + kReach && frame.right() >= tile.left() - kReach &&
                          std::abs(frame.center().y() - tile.center().y()) < kSameDock;
    if (!isOverIt) continue;
    beside.setTop(std::min(beside.top(), frame.top()));
    beside.setBottom(std::max(beside.bottom(), frame.bottom()));
  }
  return controller_->mapFromContent(display_, tip.beside)
      .adjusted(0, beside.top() - tile.top(), 0, beside.bottom() - tile.bottom());
}

void TipHost::follow(const DockTip& tip) {
  if (fade_) fade_->in();  // It may have been on its way out.
  bubble_->setText(tip.text);
  beside_ = besideOf(tip);
  setPictures(tip);
  popup_->moveBeside(beside_);
}

}  // namespace tarnwick
