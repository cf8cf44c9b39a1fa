// The profiles: their tabs, the drag that switches them, and the row that slides to the next one.

#include <QCursor>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "views/dock/DockView.h"
#include "views/dock/SpringNames.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick {

namespace {

constexpr qsizetype kTabsUnderWheel = -2;  // In the place of an item.

}  // namespace

// --- Tabs -----------------------------------------------------------------------------------------------------------

double DockView::tabsShare() const {
  return std::clamp(springs_.value(kTabsSpring) / (theme::kTabRowHeight * row_.scale), 0.0, 1.0);
}

/// The room for a tab's name. The widths that were measured stand rounded to whole pixels.
double DockView::tabRoom(qsizetype tab) const {
  return (layout_.tabs[tab].width() + 1) / row_.scale - theme::kTabPadding * 2;
}

/// A name that stands there whole needs no tip.
QString DockView::tabTip(qsizetype tab) const {
  const TextLine line(row_.tabs[tab], TextStyle::TabLabel, row_.scale);
  return line.width() > tabRoom(tab) ? row_.tabs[tab] : QString();
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
  const bool coming = holdsTabs() ? tabsWanted_ : inside && row_.offersTabs();
  if (coming == tabsComing_ || !scheduler_) return;
  tabsComing_ = coming;
  tabsWork_.reset();
  if (coming == tabsWanted_) return;
  tabsWork_ = scheduler_->after(theme::kTabsDelay, [this] {
    showTabs(tabsComing_);
    rehover();
  });
}

/// What stands above the glass should not see it grow or shrink.
void DockView::holdTabs() { hoverTabs(pointer_ && layout_.glass.contains(*pointer_)); }

void DockView::setMenuOpen(bool open) {
  menuOpen_ = open;
  // While it was open the pointer was the menu's, and nobody tells where that left it.
  const QPointF pointer = mapFromGlobal(QCursor::pos());
  if (!open && !drag_) setPointer(layout_.glass.contains(pointer) ? std::optional(pointer) : std::nullopt);
  holdTabs();
}

/// The wheel over the tabs goes through the profiles, those that there is no room for included.
bool DockView::turnTabs(const QWheelEvent& event) {
  const auto shown = std::ranges::find_if_not(layout_.tabs, &QRectF::isEmpty);
  if (shown == layout_.tabs.end() || !layout_.glass.contains(event.position())) return false;
  if (event.position().y() < shown->top() || event.position().y() >= shown->bottom()) return false;
  const int sideways = layout_.mirrored ? -event.angleDelta().x() : event.angleDelta().x();
  const int turned = event.angleDelta().y() != 0 ? event.angleDelta().y() : sideways;
  if (wheelItem_ != kTabsUnderWheel || wheel_ * turned < 0) wheel_ = 0;
  wheelItem_ = kTabsUnderWheel;
  wheel_ += turned;
  if (std::abs(wheel_) < kWheelNotch) return true;
  const qsizetype tab = row_.activeTab + (wheel_ > 0 ? -1 : 1);
  wheel_ = 0;
  if (tab >= 0 && tab < row_.tabs.size()) Q_EMIT tabActivated(tab);
  return true;
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
    // Like a strip under the hand: a drag to the left brings what lies right, which is the one before for some.
    const bool forward = (distance < 0) != layout_.mirrored;
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
  slide.from = slide.oldStart + (forward != layout_.mirrored ? 1 : -1) * theme::kSlideTravel * row_.scale;
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
