// The profiles: their tabs, the drag that switches them, and the row that slides to the next one.

#include <algorithm>
#include <cmath>

#include "views/dock/DockView.h"
#include "views/dock/SpringNames.h"
#include "views/theme/Theme.h"

namespace tarnwick {

// --- Tabs -----------------------------------------------------------------------------------------------------------

double DockView::tabsShare() const {
  return std::clamp(springs_.value(kTabsSpring) / (theme::kTabRowHeight * row_.scale), 0.0, 1.0);
}

void DockView::showTabs(bool shown) {
  shown = shown && row_.keepsRoomForTabs();
  if (shown == tabsWanted_) return;
  tabsWanted_ = shown;
  const double grown = shown ? theme::kTabRowHeight * row_.scale : 0;
  // Where the window is cut to the glass, its shape does not follow every frame.
  if (isVisible() && row_.composited && !row_.reduceMotion) {
    springs_.animate(kTabsSpring, grown);
  } else {
    springs_.jump(kTabsSpring, grown);
  }
  relayout();
}

void DockView::hoverTabs(bool inside) {
  const bool coming = inside && row_.offersTabs();
  if (coming == tabsComing_ || !scheduler_) return;
  tabsComing_ = coming;
  tabsWork_.reset();
  if (coming == tabsWanted_) return;
  tabsWork_ = scheduler_->after(theme::kTabsDelay, [this] {
    showTabs(tabsComing_);
    rehover();
  });
}

// --- Switching by a drag --------------------------------------------------------------------------------------------

void DockView::swipeBy(double distance) {
  if (row_.reduceMotion) return;
  springs_.jump(kSlideSpring, std::round(distance * theme::kSwipeFollows));
  update();
}

void DockView::endSwipe(double distance, double velocity) {
  const qsizetype count = row_.tabs.size();
  if (count > 1 && swipeSwitches(distance, velocity)) {
    // Like a strip under the hand: a drag to the left brings what lies right.
    const bool forward = distance < 0;
    swipedForward_ = forward;
    Q_EMIT tabActivated((row_.activeTab + (forward ? 1 : count - 1)) % count);
    swipedForward_.reset();
  }
  if (!slide_) springs_.animate(kSlideSpring, 0);
}

// --- The slide ------------------------------------------------------------------------------------------------------

void DockView::beginSlide(bool forward) {
  RowSlide slide;
  slide.old = pictureOfRow();
  slide.oldStart = springs_.value(kSlideSpring);
  slide.from = slide.oldStart + (forward ? 1 : -1) * theme::kSlideTravel * row_.scale;
  springs_.jump(kSlideSpring, slide.from);
  springs_.animate(kSlideSpring, 0);
  slide_ = std::move(slide);
}

double DockView::slideOf(qsizetype item) const {
  // Running applications belong to no profile.
  if (!widgetOf(item) || (row_.reduceMotion && slide_)) return 0;
  return springs_.value(kSlideSpring);
}

}  // namespace tarnwick
